// The way to every SQL Server: an ODBC driver, as it is set up.

#pragma once

#include <QTemporaryDir>
#include <memory>
#include <optional>

#include "database/connection.h"
#include "database/odbc/connection_string.h"
#include "database/odbc/instance_port.h"
#include "database/odbc/odbc_link.h"

namespace qbx {

/// Makes the sessions of one program.
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

  /// Holds for connections that are made afterwards. On the thread that the program began with: FreeTDS takes its file
  /// of settings from the environment.
  void SetUp(const OdbcSettings& settings);
  [[nodiscard]] const OdbcSettings& Settings() const { return settings_; }

  /// \throws DatabaseError  kNoDriver where the driver is not installed; kUnusableSetting, before anything is sent,
  ///                        where the driver cannot be told what is set
  [[nodiscard]] std::unique_ptr<Session> Connect(const ConnectionTarget& target, const Login& login,
                                                 int loginTimeoutSeconds);
  /// `Connect` as a Connection takes it; the driver must outlive it and its sessions.
  [[nodiscard]] SessionFactory Factory();

  /// Exchanges with servers so far, without those of connecting.
  [[nodiscard]] qint64 RoundTripCount() const { return roundTrips_; }

 private:
  void WriteFreeTdsFile(const QString& text) const;

  OdbcSettings settings_;
  std::unique_ptr<QTemporaryDir> folder_;  // that no other user can look into
  RoundTrips roundTrips_ = 0;
};

}  // namespace qbx
