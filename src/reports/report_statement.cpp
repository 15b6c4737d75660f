#include "reports/report_statement.h"

#include "database/sql_literal.h"

namespace qbx {

namespace {

QString WithParameters(QString text, const ReportDefinition& report, const ParameterValues& parameters) {
  // Replaced from the end, so that a value which looks like a parameter is not replaced in its turn.
  for (qsizetype at = text.lastIndexOf(QLatin1String("{?")); at >= 0;
       at = at == 0 ? -1 : text.lastIndexOf(QLatin1String("{?"), at - 1)) {
    const qsizetype end = text.indexOf(u'}', at);
    const QString name = text.mid(at + 2, end - at - 2);
    const auto parameter = std::ranges::find(report.parameters, name, &ParameterDefinition::name);
    if (end < 0 || parameter == report.parameters.end()) continue;
    text.replace(at, end - at + 1, SqlLiteral(ParameterValue(parameter->type, parameters.value(name))));
  }
  return text;
}

}  // namespace

QString StatementOf(const ReportSource& source, const ReportDefinition& report, const ParameterValues& parameters) {
  if (!source.query.isEmpty()) return WithParameters(source.query, report, parameters);
  QString statement = source.location == source.name ? QStringLiteral("SELECT * FROM [%1]").arg(source.name)
                                                     : QStringLiteral("SELECT * FROM %1").arg(source.location);
  if (!source.where.isEmpty()) statement += QStringLiteral(" WHERE ") + source.where;
  if (!source.orderBy.isEmpty()) statement += QStringLiteral(" ORDER BY ") + source.orderBy;
  return WithParameters(statement, report, parameters);
}

Value ParameterValue(ParameterType type, const Value& value) {
  if (value.IsNull()) return value;
  switch (type) {
    case ParameterType::kNumber:
      return value.Type() == ValueType::kInt ? value : Value(value.ToDouble());
    case ParameterType::kDate:
      return value.ToDateTime().isValid() ? Value(value.ToDateTime()) : Value();
    case ParameterType::kText:
      return value.ToText();
  }
  return {};
}

}  // namespace qbx
