#include "reports/report_statement_checks.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>

#include "reports/report_error.h"

namespace qbx {

namespace {

/// Words that a reading statement does not need.
constexpr std::array kWordsThatWrite = {
    "insert", "update", "delete",     "into",       "exec",       "execute",        "drop",    "alter",     "create",
    "merge",  "grant",  "truncate",   "revoke",     "deny",       "begin",          "commit",  "rollback",  "declare",
    "set",    "use",    "backup",     "restore",    "waitfor",    "shutdown",       "bulk",    "dbcc",      "kill",
    "while",  "revert", "openrowset", "openquery",  "setuser",    "opendatasource", "receive", "writetext", "disable",
    "enable", "attach", "pragma",     "checkpoint", "updatetext", "reconfigure"};

/// Comments, texts and quoted names.
const QRegularExpression& Quoted() {
  static const QRegularExpression quoted(
      QStringLiteral("'(?:[^']|'')*'|\"[^\"]*\"|\\[[^\\]]*\\]|--[^\\n]*|/\\*.*?\\*/"),
      QRegularExpression::DotMatchesEverythingOption);
  return quoted;
}

/// A statement without quoted parts: its words and signs.
QString WithoutQuoted(const QString& statement) {
  return QString(statement).replace(Quoted(), QStringLiteral(" _ ")).trimmed();
}

/// Whether servers may disagree where a quote or a comment ends. They would then run words that were not checked.
bool IsAmbiguous(const QString& statement, const QString& bare) {
  static const QRegularExpression ends(QStringLiteral("[;'\"`\\[\\]]|/\\*|\\*/"));
  if (statement.contains(u'\r') || bare.contains(ends)) return true;
  for (auto match = Quoted().globalMatch(statement); match.hasNext();) {
    const QString part = match.next().captured();
    if (part.startsWith(QLatin1String("/*")) && part.indexOf(QLatin1String("/*"), 2) >= 0) return true;
  }
  return false;
}

bool Writes(const QString& word) {
  return std::ranges::any_of(kWordsThatWrite, [&word](const char* writes) {
    return word.compare(QLatin1String(writes), Qt::CaseInsensitive) == 0;
  });
}

}  // namespace

void CheckOnlyReads(const QString& statement) {
  static const QRegularExpression word(QStringLiteral("[A-Za-z_][A-Za-z0-9_]*"));
  const QString bare = WithoutQuoted(statement);
  if (!bare.startsWith(QLatin1String("select"), Qt::CaseInsensitive))
    throw ReportError{QStringLiteral("The rows of a report must come from one SELECT.")};
  if (IsAmbiguous(statement, bare))
    throw ReportError{QStringLiteral("The rows of a report must come from one statement.")};
  for (auto match = word.globalMatch(bare); match.hasNext();) {
    const QString found = match.next().captured();
    if (Writes(found))
      throw ReportError{QStringLiteral("A report only reads; its statement has the word \"%1\".").arg(found)};
  }
  if (bare.count(QLatin1String("{?")) != statement.count(QLatin1String("{?")))
    throw ReportError{QStringLiteral("A parameter stands in quotes or in a comment; it brings its own quotes.")};
}

QStringList ParametersOf(const QString& statement) {
  static const QRegularExpression parameter(QStringLiteral("\\{\\?([^}]*)\\}"));
  QStringList names;
  for (auto match = parameter.globalMatch(statement); match.hasNext();)
    names += match.next().captured(1);
  return names;
}

}  // namespace qbx
