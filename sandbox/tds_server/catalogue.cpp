#include "tds_server/catalogue.h"

#include <QRegularExpression>

#include "database/embedded/procedures.h"
#include "tds_server/error_wording.h"

namespace qbx::tds {
namespace {

using Rows = std::vector<std::vector<Value>>;

WireColumn Name(const char* name, int characters = 128) {
  return {QLatin1String(name), {TypeId::kNVarChar, characters * 2}};
}
WireColumn Number(const char* name, int bytes) {
  return {QLatin1String(name), {TypeId::kIntN, bytes}};
}

/// A parameter by its name, or by its position when it has no name.
QString Given(const std::vector<SentParameter>& parameters, const char* name, std::size_t place) {
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    const SentParameter& parameter = parameters[i];
    const bool meant =
        parameter.name.isEmpty() ? i == place : parameter.name.compare(QLatin1String(name), Qt::CaseInsensitive) == 0;
    if (meant) return parameter.value.ToText();
  }
  return {};
}

/// A LIKE pattern as a regular expression.
QRegularExpression Matching(const QString& pattern) {
  QString expression;
  for (qsizetype i = 0; i < pattern.size(); ++i) {
    const QChar character = pattern[i];
    if (character == u'[' && i + 2 < pattern.size() && pattern[i + 2] == u']') {
      expression += QRegularExpression::escape(QString(pattern[i + 1]));
      i += 2;
    } else if (character == u'%') {
      expression += QLatin1String(".*");
    } else {
      expression += character == u'_' ? QStringLiteral(".") : QRegularExpression::escape(QString(character));
    }
  }
  return QRegularExpression(
      QRegularExpression::anchoredPattern(expression.isEmpty() ? QStringLiteral(".*") : expression),
      QRegularExpression::CaseInsensitiveOption);
}

int WriteRows(Answer& answer, const std::vector<WireColumn>& columns, const Rows& rows) {
  answer.Columns(columns);
  for (const std::vector<Value>& row : rows)
    answer.ValueRow(columns, row);
  answer.End(Answer::Statement::kOfProcedure, {.more = true, .count = rows.size()});
  return 0;
}

/// The headers of the procedures whose names match.
std::vector<ProcedureHeader> Headers(Session& session, const QString& pattern) {
  const QRegularExpression wanted = Matching(pattern.section(u';', 0, 0));
  std::vector<ProcedureHeader> headers;
  const auto rows = session.Execute(QStringLiteral("SELECT Name, Header FROM _Procedures ORDER BY Name"));
  while (rows->Next()) {
    if (!wanted.match(rows->At(0).ToValue().ToText()).hasMatch()) continue;
    headers.push_back(ParseProcedureHeader(rows->At(1).utf8));
  }
  return headers;
}

/// What ODBC calls a type of the server.
struct OdbcType {
  const char* name;
  int odbc;
  int precision;  // 0: as declared
  int bytes;      // 0: two for each character
  int old;        // the server's own old number
};
constexpr OdbcType kOdbcTypes[] = {
    {"bit", -7, 1, 1, 50},
    {"tinyint", -6, 3, 1, 38},
    {"smallint", 5, 5, 2, 38},
    {"int", 4, 10, 4, 38},
    {"bigint", -5, 19, 8, 108},
    {"float", 6, 53, 8, 109},
    {"real", 7, 24, 4, 109},
    {"money", 3, 19, 21, 110},
    {"decimal", 3, 18, 20, 106},
    {"numeric", 2, 18, 20, 108},
    {"datetime", 93, 23, 16, 111},
    {"date", 91, 10, 6, 0},
    {"ntext", -10, 1073741823, 2147483646, 35},
    {"text", -1, 2147483647, 2147483647, 35},
    {"nchar", -8, 0, 0, 39},
    {"varchar", 12, 0, 0, 39},
    {"char", 1, 0, 0, 39},
    {"nvarchar", -9, 0, 0, 39},
};

const OdbcType& OdbcTypeOf(const QString& name) {
  const auto* found = std::find_if(std::begin(kOdbcTypes), std::end(kOdbcTypes) - 1,
                                   [&name](const OdbcType& type) { return name == QLatin1String(type.name); });
  return *found;
}

std::vector<WireColumn> ParameterColumns() {
  return {Name("PROCEDURE_QUALIFIER"),
          Name("PROCEDURE_OWNER"),
          Name("PROCEDURE_NAME", 134),
          Name("COLUMN_NAME"),
          Number("COLUMN_TYPE", 2),
          Number("DATA_TYPE", 2),
          Name("TYPE_NAME"),
          Number("PRECISION", 4),
          Number("LENGTH", 4),
          Number("SCALE", 2),
          Number("RADIX", 2),
          Number("NULLABLE", 2),
          {QStringLiteral("REMARKS"), {TypeId::kVarChar, 254}},
          Name("COLUMN_DEF", 4000),
          Number("SQL_DATA_TYPE", 2),
          Number("SQL_DATETIME_SUB", 2),
          Number("CHAR_OCTET_LENGTH", 4),
          Number("ORDINAL_POSITION", 4),
          {QStringLiteral("IS_NULLABLE"), {TypeId::kVarChar, 254}},
          Number("SS_DATA_TYPE", 1)};
}

std::vector<Value> ParameterRow(const QString& database, const QString& procedure, const DeclaredParameter& parameter,
                                int ordinal) {
  const OdbcType& type = OdbcTypeOf(parameter.typeName);
  const bool isText = parameter.type == ValueType::kText;
  const bool national = parameter.typeName.startsWith(u'n');
  const int precision = type.precision > 0 ? type.precision : parameter.size;
  const int bytes = type.bytes > 0 ? type.bytes : parameter.size * (national ? 2 : 1);
  const bool isNumber = !isText && parameter.type != ValueType::kDateTime && parameter.type != ValueType::kBool;
  return {Value(database),
          Value(QStringLiteral("dbo")),
          Value(procedure + QStringLiteral(";1")),
          Value(parameter.name),
          Value(ordinal == 0 ? 5 : 1),
          Value(type.odbc),
          Value(parameter.typeName),
          Value(precision),
          Value(bytes),
          isText ? Value() : Value(parameter.type == ValueType::kDateTime ? 3 : parameter.scale),
          isNumber ? Value(10) : Value(),
          Value(ordinal == 0 ? 0 : 1),
          Value(),
          Value(),  // a default is never shown
          Value(type.odbc),
          Value(),
          isText ? Value(bytes) : Value(),
          Value(ordinal),
          Value(ordinal == 0 ? QStringLiteral("NO") : QStringLiteral("YES")),
          Value(type.old)};
}

int WriteParameters(ClientState& client, const std::vector<SentParameter>& parameters, Answer& answer) {
  const QRegularExpression wanted = Matching(Given(parameters, "@column_name", 3));
  Rows rows;
  for (const ProcedureHeader& header : Headers(client.session, Given(parameters, "@procedure_name", 0))) {
    std::vector<DeclaredParameter> all(1);
    all[0].name = QStringLiteral("@RETURN_VALUE");
    all[0].typeName = QStringLiteral("int");
    all[0].type = ValueType::kInt;
    all.insert(all.end(), header.parameters.begin(), header.parameters.end());
    for (std::size_t i = 0; i < all.size(); ++i) {
      if (wanted.match(all[i].name).hasMatch())
        rows.push_back(ParameterRow(client.database, header.name, all[i], static_cast<int>(i)));
    }
  }
  return WriteRows(answer, ParameterColumns(), rows);
}

int WriteProcedures(ClientState& client, const std::vector<SentParameter>& parameters, Answer& answer) {
  Rows rows;
  for (const ProcedureHeader& header : Headers(client.session, Given(parameters, "@sp_name", 0))) {
    rows.push_back({Value(client.database), Value(QStringLiteral("dbo")), Value(header.name + QStringLiteral(";1")),
                    Value(-1), Value(-1), Value(-1), Value(), Value(2)});
  }
  return WriteRows(answer,
                   {Name("PROCEDURE_QUALIFIER"),
                    Name("PROCEDURE_OWNER"),
                    Name("PROCEDURE_NAME", 134),
                    Number("NUM_INPUT_PARAMS", 4),
                    Number("NUM_OUTPUT_PARAMS", 4),
                    Number("NUM_RESULT_SETS", 4),
                    {QStringLiteral("REMARKS"), {TypeId::kVarChar, 254}},
                    Number("PROCEDURE_TYPE", 2)},
                   rows);
}

int WriteTables(ClientState& client, const std::vector<SentParameter>& parameters, Answer& answer) {
  const QRegularExpression wanted = Matching(Given(parameters, "@table_name", 0));
  Rows rows;
  const auto names = client.session.Execute(
      QStringLiteral("SELECT name, upper(type) FROM sqlite_master WHERE type IN ('table', 'view') ORDER BY 2, 1"));
  while (names->Next()) {
    const QString name = names->At(0).ToValue().ToText();
    if (!wanted.match(name).hasMatch()) continue;
    rows.push_back(
        {Value(client.database), Value(QStringLiteral("dbo")), Value(name), names->At(1).ToValue(), Value()});
  }
  return WriteRows(answer,
                   {Name("TABLE_QUALIFIER"),
                    Name("TABLE_OWNER"),
                    Name("TABLE_NAME"),
                    {QStringLiteral("TABLE_TYPE"), {TypeId::kVarChar, 32}},
                    {QStringLiteral("REMARKS"), {TypeId::kVarChar, 254}}},
                   rows);
}

}  // namespace

std::optional<int> WriteCatalogue(ClientState& client, const QString& procedure,
                                  const std::vector<SentParameter>& parameters, Answer& answer) {
  const QString name = procedure.toLower();
  try {
    if (name == QLatin1String("sp_sproc_columns")) return WriteParameters(client, parameters, answer);
    if (name == QLatin1String("sp_stored_procedures")) return WriteProcedures(client, parameters, answer);
    if (name == QLatin1String("sp_tables")) return WriteTables(client, parameters, answer);
  } catch (const DatabaseError& error) {
    WriteError(answer, error);
    return 1;
  }
  return std::nullopt;
}

}  // namespace qbx::tds
