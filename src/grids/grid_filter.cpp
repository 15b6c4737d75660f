#include "grids/grid_filter.h"

#include <QRegularExpression>
#include <algorithm>
#include <vector>

namespace qbx {
namespace {

enum class Operator { kEqual, kUnequal, kLess, kLessOrEqual, kGreater, kGreaterOrEqual, kLike };

struct Clause {
  int column = -1;
  Operator comparison = Operator::kEqual;
  Value value;
};

// The condition holds when one group holds; a group holds when all its clauses do.
using Groups = std::vector<std::vector<Clause>>;

Operator OperatorOf(const QString& text) {
  if (text == QLatin1String("=")) return Operator::kEqual;
  if (text == QLatin1String("<>")) return Operator::kUnequal;
  if (text == QLatin1String("<")) return Operator::kLess;
  if (text == QLatin1String("<=")) return Operator::kLessOrEqual;
  if (text == QLatin1String(">")) return Operator::kGreater;
  if (text == QLatin1String(">=")) return Operator::kGreaterOrEqual;
  return Operator::kLike;
}

Value ValueOf(const QString& literal) {
  if (literal.startsWith(u'\''))
    return Value(literal.mid(1).chopped(1).replace(QLatin1String("''"), QLatin1String("'")));
  if (literal.startsWith(u'#'))
    return Value(QDateTime::fromString(literal.mid(1).chopped(1), QStringLiteral("d/M/yyyy")));
  if (literal.compare(QLatin1String("NULL"), Qt::CaseInsensitive) == 0) return Value::Null();
  return literal.contains(u'.') ? Value(literal.toDouble()) : Value(literal.toLongLong());
}

std::optional<Groups> Parse(const QString& condition, const Recordset& rows) {
  static const QRegularExpression kClause(
      QStringLiteral(
          R"(\s*(?:\[([^\]]+)\]|([\w-]+))\s*(<>|<=|>=|=|<|>|LIKE\b)\s*('(?:[^']|'')*'|#[^#]*#|-?\d+(?:\.\d+)?|NULL\b)\s*(?:(AND|OR)\b|$))"),
      QRegularExpression::CaseInsensitiveOption);
  Groups groups(1);
  qsizetype at = 0;
  bool more = true;
  while (more) {
    const QRegularExpressionMatch match =
        kClause.match(condition, at, QRegularExpression::NormalMatch, QRegularExpression::AnchorAtOffsetMatchOption);
    if (!match.hasMatch()) return std::nullopt;
    const int column = rows.ColumnIndex(match.captured(1).isEmpty() ? match.captured(2) : match.captured(1));
    if (column < 0) return std::nullopt;
    groups.back().push_back({column, OperatorOf(match.captured(3)), ValueOf(match.captured(4))});
    const QString link = match.captured(5);
    more = !link.isEmpty();
    if (link.compare(QLatin1String("OR"), Qt::CaseInsensitive) == 0) groups.emplace_back();
    at = match.capturedEnd();
  }
  return groups;
}

bool IsLike(const QString& text, QString pattern) {
  const auto isWild = [](QChar c) { return c == u'%' || c == u'*'; };
  const bool openStart = !pattern.isEmpty() && isWild(pattern.front());
  if (openStart) pattern.remove(0, 1);
  const bool openEnd = !pattern.isEmpty() && isWild(pattern.back());
  if (openEnd) pattern.chop(1);
  if (openStart && openEnd) return text.contains(pattern, Qt::CaseInsensitive);
  if (openStart) return text.endsWith(pattern, Qt::CaseInsensitive);
  if (openEnd) return text.startsWith(pattern, Qt::CaseInsensitive);
  return text.compare(pattern, Qt::CaseInsensitive) == 0;
}

int Compare(const Value& left, const Value& right) {
  if (left.Type() == ValueType::kText || right.Type() == ValueType::kText)
    return left.ToText().compare(right.ToText(), Qt::CaseInsensitive);
  if (left.Type() == ValueType::kDateTime && right.Type() == ValueType::kDateTime)
    return left.ToDateTime() == right.ToDateTime() ? 0 : left.ToDateTime() < right.ToDateTime() ? -1 : 1;
  const double a = left.ToDouble();
  const double b = right.ToDouble();
  return a == b ? 0 : a < b ? -1 : 1;
}

bool Holds(const Clause& clause, const Value& value) {
  if (value.IsNull() || clause.value.IsNull()) {
    const bool both = value.IsNull() && clause.value.IsNull();
    return clause.comparison == Operator::kEqual
               ? both
               : clause.comparison == Operator::kUnequal && clause.value.IsNull() && !both;
  }
  if (clause.comparison == Operator::kLike) return IsLike(value.ToText(), clause.value.ToText());
  const int order = Compare(value, clause.value);
  switch (clause.comparison) {
    case Operator::kEqual:
      return order == 0;
    case Operator::kUnequal:
      return order != 0;
    case Operator::kLess:
      return order < 0;
    case Operator::kLessOrEqual:
      return order <= 0;
    case Operator::kGreater:
      return order > 0;
    default:
      return order >= 0;
  }
}

}  // namespace

std::optional<GridFilter> ParseGridFilter(const QString& condition, const Recordset& rows) {
  std::optional<Groups> groups = Parse(condition, rows);
  if (!groups) return std::nullopt;
  GridFilter filter;
  for (const std::vector<Clause>& group : *groups) {
    for (const Clause& clause : group)
      filter.columns.push_back(clause.column);
  }
  filter.test = [groups = std::move(*groups)](const StoredRow& row) {
    return std::any_of(groups.begin(), groups.end(), [&row](const std::vector<Clause>& group) {
      return std::all_of(group.begin(), group.end(),
                         [&row](const Clause& clause) { return Holds(clause, row.At(clause.column).ToValue()); });
    });
  };
  return filter;
}

}  // namespace qbx
