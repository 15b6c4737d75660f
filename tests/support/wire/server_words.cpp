#include "support/wire/server_words.h"

#include <QRegularExpression>

namespace qbx::test {
namespace {

/// "DELETE FROM _Procedures" with its condition.
QString DropProcedures(const QString& condition) {
  static const QRegularExpression name(QStringLiteral("'(\\w+)'"));
  QStringList names;
  for (auto all = name.globalMatch(condition); all.hasNext();)
    names += all.next().captured(1);
  return QLatin1String("DROP PROCEDURE ") + names.join(QLatin1String(", "));
}

/// A trigger of SQLite that raises an error, with what it is called, when it fires, its condition and its text.
QString RefusingTrigger(const QRegularExpressionMatch& trigger) {
  const QString rows = trigger.captured(QStringLiteral("change")) == QLatin1String("DELETE")
                           ? QStringLiteral("deleted")
                           : QStringLiteral("inserted");
  QStringList conditions;
  if (const QString column = trigger.captured(QStringLiteral("column")); !column.isEmpty())
    conditions += QStringLiteral("UPDATE(%1)").arg(column);
  QString when = trigger.captured(QStringLiteral("when"));
  when.replace(QRegularExpression(QStringLiteral("\\b(old|new)\\."), QRegularExpression::CaseInsensitiveOption), {});
  conditions +=
      QStringLiteral("EXISTS (SELECT 1 FROM %1%2)").arg(rows, when.isEmpty() ? when : QLatin1String(" WHERE ") + when);
  return QStringLiteral("CREATE TRIGGER %1 ON %2 AFTER %3 AS IF %4 THROW 50000, '%5', 1")
      .arg(trigger.captured(QStringLiteral("name")), trigger.captured(QStringLiteral("table")),
           trigger.captured(QStringLiteral("change")), conditions.join(QLatin1String(" AND ")),
           trigger.captured(QStringLiteral("text")));
}

/// With TOP for LIMIT, and + between texts.
QString InItsGrammar(QString sql) {
  static const QRegularExpression limit(QStringLiteral("SELECT ([^()]*) LIMIT (\\d+)"));
  sql.replace(limit, QStringLiteral("SELECT TOP (\\2) \\1"));
  return sql.replace(QStringLiteral("||"), QStringLiteral("+"));
}

/// With the keys that are given, and the names of its own tables.
QString InItsTables(QString sql) {
  sql.replace(QStringLiteral("FROM _Procedures"), QStringLiteral("FROM sys.procedures"));
  sql.replace(QStringLiteral("sqlite_master WHERE type = 'table'"), QStringLiteral("sys.tables"));
  static const QRegularExpression counted(QStringLiteral(
      "INSERT INTO (\\[Campaign Results\\]|Marketing_Campaigns\\w*|Letters|SMS|Emails|_Log|_Marketing_Log) \\((?:RecordID|ID|LetterID|LogID)\\b"));
  const QRegularExpressionMatch found = counted.match(sql);
  if (!found.hasMatch()) return sql;
  const QString set = QStringLiteral("SET IDENTITY_INSERT %1 ").arg(found.captured(1));
  return set + QLatin1String("ON; ") + sql + QLatin1String("; ") + set + QLatin1String("OFF");
}

}  // namespace

QStringList InServerWords(const QString& sql) {
  static const QRegularExpression missing(QStringLiteral("DELETE FROM _Procedures WHERE ([^;]*)"));
  static const QRegularExpression trigger(
      QStringLiteral(
          "CREATE TRIGGER (?<name>\\w+) BEFORE (?<change>DELETE|UPDATE)(?: OF (?<column>\\w+))? ON (?<table>\\[[^\\]]+\\]) "
          "(?:WHEN (?<when>.*?) )?BEGIN SELECT RAISE(?:Error)?\\(\\w+, '(?<text>[^']*)'\\); END"),
      QRegularExpression::CaseInsensitiveOption);
  if (const auto found = missing.match(sql); found.hasMatch()) return {DropProcedures(found.captured(1))};
  QStringList batches;
  QString before = sql;
  if (const auto found = trigger.match(sql); found.hasMatch()) {
    before = sql.left(found.capturedStart()).trimmed();
    batches += RefusingTrigger(found);
  }
  if (!before.isEmpty()) batches.prepend(InItsTables(InItsGrammar(before)));
  return batches;
}

}  // namespace qbx::test
