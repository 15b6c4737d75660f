#include "tds_server/column_types.h"

#include <QHash>
#include <algorithm>

namespace qbx::tds {
namespace {

constexpr std::size_t kMostRowsRead = 200;

/// The declared types of the columns of a table, by name in lower case.
using TableTypes = QHash<QString, QString>;

TableTypes TypesOfTable(Session& session, const QString& table) {
  TableTypes types;
  const auto rows = session.Execute(QStringLiteral("SELECT name, type FROM pragma_table_info(N'%1')")
                                        .arg(QString(table).replace(u'\'', QStringLiteral("''"))));
  while (rows && rows->Next())
    types.insert(rows->At(0).ToValue().ToText().toLower(), rows->At(1).ToValue().ToText());
  return types;
}

WireType TypeByKind(const Column& column) {
  if (column.type == ValueType::kText && column.size > 0 && column.size <= 4000)
    return {TypeId::kNVarChar, column.size * 2};
  if (column.type == ValueType::kDecimal)
    return {TypeId::kDecimalN, 17, column.precision > 0 ? column.precision : 19, column.scale};
  return TypeOfValue(column.type);
}

/// The type that holds all values of an expression.
WireType TypeOfValues(const std::vector<HeldRow>& rows, std::size_t column) {
  ValueType type = ValueType::kNull;
  for (const HeldRow& row : rows) {
    const ValueType next = row[column].Type();
    if (next == ValueType::kNull || next == type) continue;
    const bool numbers = (type == ValueType::kInt && next == ValueType::kDouble) ||
                         (type == ValueType::kDouble && next == ValueType::kInt);
    type = type == ValueType::kNull ? next : numbers ? ValueType::kDouble : ValueType::kText;
  }
  return TypeOfValue(type);
}

bool IsExpression(const Column& column) {
  return column.type == ValueType::kText && column.size == 0;
}

void ReadFirstRows(RowSource& rows, ResultStart& start) {
  const std::size_t width = rows.Columns().size();
  while (start.rows.size() < kMostRowsRead) {
    start.isAll = !rows.Next();
    if (start.isAll) return;
    HeldRow row;
    for (std::size_t i = 0; i < width; ++i)
      row.push_back(rows.At(static_cast<int>(i)).ToValue());
    start.rows.push_back(std::move(row));
  }
}

}  // namespace

ResultStart StartResult(Session& session, RowSource& rows) {
  const std::vector<Column> columns = rows.Columns();
  ResultStart start;
  if (std::ranges::any_of(columns, IsExpression)) ReadFirstRows(rows, start);
  QHash<QString, TableTypes> tables;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    const Column& column = columns[i];
    WireColumn& wire = start.columns.emplace_back(WireColumn{column.name, TypeByKind(column)});
    if (!column.baseTable.isEmpty()) {
      if (!tables.contains(column.baseTable)) tables[column.baseTable] = TypesOfTable(session, column.baseTable);
      if (TypeFromWords(tables[column.baseTable].value(column.name.toLower()), wire.type)) continue;
    }
    if (IsExpression(column)) wire.type = TypeOfValues(start.rows, i);
  }
  return start;
}

}  // namespace qbx::tds
