// The values that go to the server beside the text of a statement.

#pragma once

#include <deque>
#include <vector>

#include "database/odbc/odbc_handles.h"
#include "database/value.h"

namespace qbx {

/// The values for the "?" of a statement, in their order. The driver reads them from here while the statement runs.
class OdbcParameters {
 public:
  /// \param declared  the type that the server wants; kNull: not known. A NULL is sent as this type. A value of another
  ///                  type is converted here, because servers convert in different ways.
  void Add(const Value& value, ValueType declared = ValueType::kNull);
  [[nodiscard]] bool IsEmpty() const { return items_.empty(); }

  /// \throws OdbcFailure
  void BindTo(const OdbcHandle& statement);

 private:
  struct Item {
    SQLSMALLINT cType = SQL_C_WCHAR;
    SQLSMALLINT sqlType = SQL_WVARCHAR;
    SQLULEN size = 1;
    SQLSMALLINT scale = 0;
    SQLLEN length = SQL_NULL_DATA;
    union {
      qint64 integer = 0;
      double real;
      SQL_TIMESTAMP_STRUCT moment;
    };
    std::vector<SQLWCHAR> text = {};
  };

  static void PutType(Item& item, ValueType type);
  static void PutValue(Item& item, const Value& value);
  static void PutText(Item& item, const QString& text);
  static void PutMoment(Item& item, const QDateTime& when);
  static void PutDecimal(Item& item, const Value& value);

  std::deque<Item> items_;
};

}  // namespace qbx
