#include "database/odbc/statement_text.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>
#include <span>

#include "util/text.h"

namespace qbx {
namespace {

constexpr std::array kRowStatements = {"SELECT", "INSERT", "UPDATE", "DELETE", "EXEC"};

bool IsOfWord(QChar character) {
  return character.isLetterOrNumber() || character == u'_';
}

/// Where the part that begins at `from` ends. A part is a text or a name in quotes, a comment, a word, or one
/// character.
qsizetype EndOfPart(const QString& sql, qsizetype from) {
  const auto behind = [&](const QString& mark, qsizetype start) {
    const qsizetype found = sql.indexOf(mark, start);
    return found < 0 ? sql.size() : found + mark.size();
  };
  const QChar first = sql[from];
  const QStringView two = QStringView(sql).mid(from, 2);
  if (first == u'\'' || first == u'"') return behind(first, from + 1);
  if (first == u'[') return behind(QStringLiteral("]"), from + 1);
  if (two == QLatin1String("--")) return behind(QStringLiteral("\n"), from + 2);
  if (two == QLatin1String("/*")) return behind(QStringLiteral("*/"), from + 2);
  qsizetype end = from + 1;
  if (IsOfWord(first))
    while (end < sql.size() && IsOfWord(sql[end]))
      ++end;
  return end;
}

bool IsQuotedText(const QString& part) {
  return part.startsWith(u'\'');
}

/// The parts of one statement.
using Parts = QStringList;

bool IsBlank(const QString& part) {
  return part.trimmed().isEmpty() || part.startsWith(QLatin1String("--")) || part.startsWith(QLatin1String("/*"));
}

std::vector<Parts> SplitBatch(const QString& batch) {
  std::vector<Parts> statements(1);
  for (qsizetype at = 0; at < batch.size();) {
    const qsizetype end = EndOfPart(batch, at);
    const QString part = batch.mid(at, end - at);
    at = end;
    if (part == QLatin1String(";"))
      statements.emplace_back();
    else if (!statements.back().isEmpty() || !IsBlank(part))
      statements.back() += part;
  }
  for (Parts& statement : statements)
    while (!statement.isEmpty() && statement.last().trimmed().isEmpty())
      statement.removeLast();
  std::erase_if(statements, [](const Parts& statement) { return statement.isEmpty(); });
  return statements;
}

/// In a text, the server drops a "\" together with the line break behind it. Such a text is written as a sum
/// of two, with an empty one without limit between them: a sum of short texts is cut at 4000 characters.
void KeepLineBreaks(Parts& statement) {
  static const QRegularExpression kBreak(QStringLiteral("\\\\(?=[\\r\\n])"));
  for (QString& part : statement)
    if (IsQuotedText(part)) part.replace(kBreak, QStringLiteral("\\' + CAST(N'' AS nvarchar(max)) + N'"));
}

/// Puts N before a text in quotes with a character beyond ASCII. A text with a doubled quote is two parts; only the
/// first one gets the N.
void MarkUnicode(Parts& statement) {
  for (qsizetype at = 0; at < statement.size(); ++at) {
    const bool marked = at > 0 && EqualsNoCase(statement[at - 1], QStringLiteral("N"));
    const qsizetype first = at;
    bool ascii = true;
    for (; at < statement.size() && IsQuotedText(statement[at]); ++at)
      ascii = ascii && std::ranges::all_of(statement[at], [](QChar character) { return character.unicode() < 0x80; });
    if (!ascii && !marked) statement[first].prepend(u'N');
  }
}

bool IsCall(const Parts& statement) {
  const QString& name = statement.first();
  return name.startsWith(QLatin1String("proc_"), Qt::CaseInsensitive) ||
         name.startsWith(QLatin1String("sp_"), Qt::CaseInsensitive);
}

/// "proc_x (1, 2)" as "EXEC proc_x 1, 2".
QString CallText(Parts statement) {
  const QString name = statement.takeFirst();
  while (!statement.isEmpty() && IsBlank(statement.first()))
    statement.removeFirst();
  if (!statement.isEmpty() && statement.first() == QLatin1String("(") && statement.last() == QLatin1String(")")) {
    statement.removeFirst();
    statement.removeLast();
  }
  return (QLatin1String("EXEC ") + name + u' ' + statement.join(QString()).trimmed()).trimmed();
}

bool StartsWithAny(const QString& statement, std::span<const char* const> words) {
  const QString first = statement.left(EndOfPart(statement, 0));
  return std::ranges::any_of(words, [&](const char* word) { return EqualsNoCase(first, QLatin1String(word)); });
}

BatchKind KindOfBatch(const std::vector<Parts>& parts, const QStringList& statements) {
  if (statements.size() == 1) {
    const bool stores = parts.front().contains(QLatin1String("INTO"), Qt::CaseInsensitive);
    return !stores && StartsWithAny(statements.front(), std::span(kRowStatements).first(1)) ? BatchKind::kRead
                                                                                            : BatchKind::kOne;
  }
  const bool rows = std::ranges::all_of(
      statements, [](const QString& statement) { return StartsWithAny(statement, kRowStatements); });
  return rows ? BatchKind::kStatements : BatchKind::kOne;
}

}  // namespace

BatchText ServerBatch(const QString& batch) {
  std::vector<Parts> parts = SplitBatch(batch);
  QStringList statements;
  for (Parts& statement : parts) {
    const bool call = IsCall(statement);
    // An argument of a call cannot be a sum.
    if (!call && !EqualsNoCase(statement.first(), QStringLiteral("EXEC"))) KeepLineBreaks(statement);
    MarkUnicode(statement);
    statements += call ? CallText(statement) : statement.join(QString());
  }
  return {statements.join(QLatin1String(";\n")), KindOfBatch(parts, statements)};
}

QString BracketedName(const QString& name) {
  return u'[' + QString(name).replace(u']', QLatin1String("]]")) + u']';
}

}  // namespace qbx
