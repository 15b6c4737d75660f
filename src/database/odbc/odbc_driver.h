// The ODBC driver of the program, and its settings.

#pragma once

#include <QTemporaryDir>
#include <memory>

#include "database/connection.h"
#include "database/odbc/connection_string.h"
#include "database/odbc/instance_port.h"
#include "database/odbc/odbc_link.h"

namespace qbx {

/// Makes all sessions of the program with SQL Servers.
///
///   OdbcDriver driver;
///   driver.SetUp({.encrypt = true});
///   Connection connection(driver.Factory());
class OdbcDriver {
 public:
  OdbcDriver() = default;
  OdbcDriver(const OdbcDriver&) = delete;
  OdbcDriver& operator=(const OdbcDriver&) = delete;
  ~OdbcDriver();

  /// Sets up later connections. Only the main thread may call it, because it changes an environment variable: FreeTDS
  /// takes the name of its file of settings from there.
  void SetUp(const OdbcSettings& settings);
  [[nodiscard]] const OdbcSettings& Settings() const { return settings_; }

  /// \throws DatabaseError  kNoDriver when the driver is not installed; kUnusableSetting when the settings or the names
  ///                        cannot be used, and nothing was sent to the server
  [[nodiscard]] std::unique_ptr<Session> Connect(const ConnectionTarget& target, const Login& login,
                                                 int loginTimeoutSeconds);
  /// `Connect` as a function for a Connection. The driver must outlive the Connection and its sessions.
  [[nodiscard]] SessionFactory Factory();

  /// The number of exchanges with servers so far. Connecting does not count.
  [[nodiscard]] qint64 RoundTripCount() const { return roundTrips_; }

 private:
  void CheckAuthorities() const;
  void WriteFreeTdsFile(const QString& text) const;

  OdbcSettings settings_;
  std::unique_ptr<QTemporaryDir> folder_;  // no other user can read it
  RoundTrips roundTrips_ = 0;
};

}  // namespace qbx
