// The address of a SQL Server: reads the name that a person wrote.

#pragma once

#include <QString>

namespace qbx {

inline constexpr int kDefaultServerPort = 1433;

/// The parts of a server's name.
struct ServerAddress {
  QString host;
  QString instance;  ///< empty: the default instance, or the name has a port
  int port = 0;      ///< 0: not known yet, the instance has it

  /// Reads "HOST", "HOST\INSTANCE", "HOST,1500" and "HOST:1500", with or without "tcp:" in front. With a port, the
  /// instance is ignored. Of two instances, the first counts. A backslash at the end, or two in a row, are refused. "."
  /// and "(local)" are this computer. The port of an IPv6 address must follow a comma. The host has no character with a
  /// meaning in a connection string or in a file of settings.
  /// \throws DatabaseError (kUnusableSetting)  when the text cannot be a server's name
  [[nodiscard]] static ServerAddress Parse(const QString& server);

  friend bool operator==(const ServerAddress&, const ServerAddress&) = default;
};

}  // namespace qbx
