// Where a SQL Server listens: the name that a person wrote, taken apart.

#pragma once

#include <QString>

namespace qbx {

inline constexpr int kDefaultServerPort = 1433;

/// A server's name taken apart.
struct ServerAddress {
  QString host;
  QString instance;  ///< empty: the default instance, or a port was written
  int port = 0;      ///< 0: to be found out from the instance

  /// Reads "HOST", "HOST\INSTANCE", "HOST,1500" and "HOST:1500", with "tcp:" in front or not. A port makes the instance
  /// needless; of two instances, the first holds. "." and "(local)" are this computer, an IPv6 address takes its port
  /// behind a comma only. The host has no character that would mean something in a connection string or in a file of
  /// settings.
  /// \throws DatabaseError  for what cannot be a server's name
  [[nodiscard]] static ServerAddress Parse(const QString& server);

  friend bool operator==(const ServerAddress&, const ServerAddress&) = default;
};

}  // namespace qbx
