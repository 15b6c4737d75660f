// The statements by which a grid inserts and deletes rows.

#include "grids/grid_statements.h"

#include <QStringList>

#include "util/text.h"

namespace qbx {
namespace {

QString KeyText(const Value& value) {
  switch (value.Type()) {
    case ValueType::kNull:
      return QStringLiteral("NULL");
    case ValueType::kBool:
      return QString::number(value.ToInt());
    case ValueType::kInt:
    case ValueType::kDouble:
    case ValueType::kDecimal:
      return value.ToText();
    case ValueType::kDateTime:
      return SqlQuoted(value.ToDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")));
    case ValueType::kText:
      return SqlQuoted(value.ToText());
  }
  return {};
}

}  // namespace

QString DeleteRowStatement(const QString& storedProc, const std::vector<Value>& key) {
  QStringList values;
  for (const Value& value : key)
    values += KeyText(value);
  return QLatin1String("proc_delp_") + storedProc + QLatin1String(" ( ") + values.join(QLatin1String(", ")) +
         QLatin1String(" )");
}

QString InsertRowStatement(const QString& storedProc, qint64 headerId, qint64 recordId, const QString& extraParams) {
  const QString extra = extraParams.isEmpty() ? QString() : QLatin1String(", ") + extraParams;
  return QStringLiteral("proc_addp_%1_InsertRow ( %2, %3").arg(storedProc).arg(headerId).arg(recordId) + extra +
         QLatin1Char(')');
}

}  // namespace qbx
