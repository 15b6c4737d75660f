#include "database/odbc/procedure_call.h"

#include <QStringList>

#include "database/odbc/odbc_rows.h"
#include "database/odbc/statement_text.h"
#include "database/server_errors.h"
#include "util/text.h"

namespace qbx {
namespace {

constexpr int kLongestSized = 4000;  // a longer text has no declared limit
const QLatin1String kReturn("@QbxReturn");

// The columns of the list of parameters, counted from 0.
enum ListColumn { kProcedureName = 2, kParameterName = 3, kDirection = 4, kDataType = 5, kSize = 7 };

QString WithoutBrackets(const QString& name) {
  return name.startsWith(u'[') && name.endsWith(u']') ? name.mid(1, name.size() - 2) : name;
}

/// "dbo.proc_x" as "[dbo].[proc_x]".
QString BracketedPath(const QString& procedure) {
  QStringList names;
  for (const QString& name : procedure.split(u'.'))
    names += BracketedName(WithoutBrackets(name));
  return names.join(u'.');
}

QString DeclaredType(const Parameter& parameter) {
  switch (parameter.type) {
    case ValueType::kBool:
      return QStringLiteral("bit");
    case ValueType::kInt:
      return QStringLiteral("bigint");
    case ValueType::kDouble:
      return QStringLiteral("float");
    case ValueType::kDecimal:
      return QStringLiteral("decimal(19,4)");
    case ValueType::kDateTime:
      return QStringLiteral("datetime");
    default:
      return parameter.size > 0 ? QStringLiteral("nvarchar(%1)").arg(parameter.size) : QStringLiteral("nvarchar(max)");
  }
}

QString OutputName(std::size_t number) {
  return QStringLiteral("@QbxOut%1").arg(number);
}

ParameterDirection DirectionOf(qint64 columnType) {
  switch (columnType) {
    case SQL_RETURN_VALUE:
      return ParameterDirection::kReturnValue;
    case SQL_PARAM_INPUT_OUTPUT:
    case SQL_PARAM_OUTPUT:
      return ParameterDirection::kOutput;
    default:
      return ParameterDirection::kInput;
  }
}

Parameter ParameterFrom(const RowSource& row) {
  Parameter parameter;
  parameter.name = row.At(kParameterName).ToValue().ToText();
  parameter.direction = DirectionOf(row.At(kDirection).ToValue().ToInt());
  parameter.type = TypeOfSqlType(static_cast<SQLSMALLINT>(row.At(kDataType).ToValue().ToInt()));
  const qint64 size = row.At(kSize).ToValue().ToInt();
  if (parameter.type == ValueType::kText && size > 0 && size <= kLongestSized) parameter.size = static_cast<int>(size);
  return parameter;
}

}  // namespace

NamedCall::NamedCall(const QString& procedure, std::span<const Parameter> parameters) {
  QString declared = kReturn + QLatin1String(" int");
  QString before;
  QString asked = kReturn + QLatin1String(" AS ") + QLatin1String(kOutcomeColumn);
  QStringList given;
  for (std::size_t number = 0; const Parameter& parameter : parameters) {
    const QString output = OutputName(number++);
    if (parameter.direction == ParameterDirection::kOutput) {
      declared += QLatin1String(", ") + output + u' ' + DeclaredType(parameter);
      asked += QLatin1String(", ") + output + QLatin1String(" AS ") + output.mid(1);
      given += parameter.name + QLatin1String(" = ") + output + QLatin1String(" OUTPUT");
      if (!parameter.isSet) continue;
      before += QLatin1String("SET ") + output + QLatin1String(" = ?; ");
      values_.Add(parameter.value, parameter.type);
    }
  }
  for (const Parameter& parameter : parameters) {
    if (!parameter.isSet || parameter.direction != ParameterDirection::kInput) continue;
    given += parameter.name + QLatin1String(" = ?");
    values_.Add(parameter.value, parameter.type);
  }
  text_ = QLatin1String("DECLARE ") + declared + QLatin1String("; ") + before + QLatin1String("EXEC ") + kReturn +
          QLatin1String(" = ") + BracketedPath(procedure) + u' ' + given.join(QLatin1String(", ")) +
          QLatin1String("; SELECT ") + asked;
}

void NamedCall::Take(RowSource& outcome, std::span<Parameter> parameters) {
  if (!outcome.Next()) return;
  const auto columns = static_cast<int>(outcome.Columns().size());
  int column = 0;
  for (Parameter& parameter : parameters) {
    if (parameter.direction == ParameterDirection::kReturnValue) parameter.value = outcome.At(0).ToValue();
    if (parameter.direction == ParameterDirection::kOutput && ++column < columns)
      parameter.value = outcome.At(column).ToValue();
  }
}

std::vector<Parameter> ReadParameterList(const OdbcHandle& statement, const QString& procedure, bool dataAnywhere) {
  const QString name = WithoutBrackets(procedure.section(u'.', -1));
  QString pattern = name;  // in which no character may stand for others
  pattern.replace(u'_', QLatin1String("\\_")).replace(u'%', QLatin1String("\\%"));
  std::vector<SQLWCHAR> text = OdbcText(pattern);
  if (!SQL_SUCCEEDED(::SQLProcedureColumnsW(statement.Get(), nullptr, 0, nullptr, 0, text.data(), SQL_NTS, nullptr, 0)))
    throw OdbcFailure{statement.Records()};
  OdbcRows rows(statement, dataAnywhere);
  std::vector<Parameter> list;
  while (rows.Next()) {
    // "proc_x;1": procedures of one name have numbers.
    const QString found = rows.At(kProcedureName).ToValue().ToText().section(u';', 0, 0);
    if (!EqualsNoCase(found, name)) continue;
    Parameter parameter = ParameterFrom(rows);
    // Another schema may have a procedure of the same name. Its list begins with a return value too.
    if (!list.empty() && parameter.direction == ParameterDirection::kReturnValue) break;
    list.push_back(std::move(parameter));
  }
  return list;
}

DatabaseError ProcedureMissing(const QString& procedure) {
  constexpr int kNoProcedure = 2812;
  const QString text =
      QStringLiteral("Could not find stored procedure '%1', or the login may not use it.").arg(procedure);
  return DatabaseError(PendingNumber(kNoProcedure), text,
                       {{kNoProcedure, QStringLiteral("42000"), QLatin1String("[SQL Server]") + text}});
}

}  // namespace qbx
