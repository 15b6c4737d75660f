// The handles of the ODBC driver manager, as objects that free them.

#pragma once

#include <sql.h>
#include <sqlext.h>

#include <QString>
#include <bit>
#include <utility>
#include <vector>

#include "database/odbc/native_errors.h"

namespace qbx {

/// The records of a failed call. The parts of a session throw it; it never leaves the session.
struct OdbcFailure {
  std::vector<NativeError> records;
};

/// Owns one handle of the driver manager.
class OdbcHandle {
 public:
  /// \throws DatabaseError  when the driver manager has no handle left
  OdbcHandle(SQLSMALLINT type, SQLHANDLE parent);
  OdbcHandle(OdbcHandle&& other) noexcept : type_(other.type_), handle_(std::exchange(other.handle_, nullptr)) {}
  OdbcHandle& operator=(OdbcHandle&&) = delete;
  ~OdbcHandle();

  [[nodiscard]] SQLHANDLE Get() const { return handle_; }
  /// All records of the last call on the handle. The next call deletes them.
  [[nodiscard]] std::vector<NativeError> Records() const;

 private:
  SQLSMALLINT type_;
  SQLHANDLE handle_ = nullptr;
};

/// A number as the value of an attribute.
[[nodiscard]] inline SQLPOINTER OdbcNumber(std::size_t number) {
  return std::bit_cast<SQLPOINTER>(number);
}

/// A text as the driver manager wants it, with a zero at its end.
[[nodiscard]] std::vector<SQLWCHAR> OdbcText(const QString& text);

}  // namespace qbx
