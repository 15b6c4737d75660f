#include "database/odbc/odbc_handles.h"

#include <algorithm>
#include <array>

namespace qbx {

OdbcHandle::OdbcHandle(SQLSMALLINT type, SQLHANDLE parent) : type_(type) {
  if (SQL_SUCCEEDED(::SQLAllocHandle(type, parent, &handle_))) return;
  handle_ = nullptr;
  const QString text = QStringLiteral("The ODBC driver manager has no handle to give.");
  throw DatabaseError(kStatementFailed, text, {{0, QString(), text}});
}

OdbcHandle::~OdbcHandle() {
  if (handle_ != nullptr) ::SQLFreeHandle(type_, handle_);
}

std::vector<NativeError> OdbcHandle::Records() const {
  std::vector<NativeError> records;
  std::array<SQLWCHAR, 6> state = {};
  std::array<SQLWCHAR, 4096> text = {};
  SQLINTEGER number = 0;
  SQLSMALLINT length = 0;
  for (SQLSMALLINT at = 1; SQL_SUCCEEDED(::SQLGetDiagRecW(type_, handle_, at, state.data(), &number, text.data(),
                                                          static_cast<SQLSMALLINT>(text.size()), &length));
       ++at) {
    const auto size = std::min<qsizetype>(length, static_cast<qsizetype>(text.size()) - 1);
    records.push_back({number, QString::fromUtf16(reinterpret_cast<const char16_t*>(state.data()), 5),
                       QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data()), size)});
  }
  return records;
}

std::vector<SQLWCHAR> OdbcText(const QString& text) {
  std::vector<SQLWCHAR> units(text.utf16(), text.utf16() + text.size());
  units.push_back(0);
  return units;
}

}  // namespace qbx
