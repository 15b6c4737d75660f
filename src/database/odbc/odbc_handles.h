// The handles of the ODBC driver manager, with owners.

#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QString>
#include <utility>
#include <vector>

#include "database/odbc/native_errors.h"

namespace qbx {

/// What the parts of a session throw among themselves: the records of a call that failed.
struct OdbcFailure {
  std::vector<NativeError> records;
};

/// One handle of the driver manager, freed with its owner.
class OdbcHandle {
 public:
  /// \throws DatabaseError  when the driver manager has none to give
  OdbcHandle(SQLSMALLINT type, SQLHANDLE parent);
  OdbcHandle(OdbcHandle&& other) noexcept : type_(other.type_), handle_(std::exchange(other.handle_, nullptr)) {}
  OdbcHandle& operator=(OdbcHandle&&) = delete;
  ~OdbcHandle();

  [[nodiscard]] SQLHANDLE Get() const { return handle_; }
  /// All records of the last call; any other call on the handle wipes them.
  [[nodiscard]] std::vector<NativeError> Records() const;

 private:
  SQLSMALLINT type_;
  SQLHANDLE handle_ = nullptr;
};

/// A text as the driver manager takes it, ended by a zero.
[[nodiscard]] std::vector<SQLWCHAR> OdbcText(const QString& text);

}  // namespace qbx
