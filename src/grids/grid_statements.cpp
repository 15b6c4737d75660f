#include "grids/grid_statements.h"

#include <QStringList>

#include "database/sql_literal.h"

namespace qbx {

QString DeleteRowStatement(const QString& storedProc, const std::vector<Value>& key) {
  QStringList values;
  for (const Value& value : key)
    values += SqlLiteral(value);
  return QLatin1String("proc_delp_") + storedProc + QLatin1String(" ( ") + values.join(QLatin1String(", ")) +
         QLatin1String(" )");
}

QString InsertRowStatement(const QString& storedProc, qint64 headerId, qint64 recordId, const QString& extraParams) {
  const QString extra = extraParams.isEmpty() ? QString() : QLatin1String(", ") + extraParams;
  return QStringLiteral("proc_addp_%1_InsertRow ( %2, %3").arg(storedProc).arg(headerId).arg(recordId) + extra +
         QLatin1Char(')');
}

}  // namespace qbx
