#include "database/sql_literal.h"

#include "util/text.h"

namespace qbx {

QString SqlLiteral(const Value& value) {
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

}  // namespace qbx
