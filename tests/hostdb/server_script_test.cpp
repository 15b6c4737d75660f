// The script for SQL Server against the embedded database that it is made of, and against what the program sends.

#include <QDirIterator>
#include <QRegularExpression>

#include "hostdb/server_database.h"
#include "support/embedded_host.h"

namespace qbx {
namespace {

/// The batch of the script in which `begin` stands.
QString BatchWith(const QString& begin) {
  for (const QString& batch : BatchesOf(ServerScript()))
    if (batch.contains(begin)) return batch;
  return {};
}

QStringList All(const QString& pattern, const QString& text) {
  QStringList found;
  for (auto all = QRegularExpression(pattern).globalMatch(text); all.hasNext();)
    found << all.next().captured(1);
  return found;
}

TEST(ServerScript, ProceduresAreCalledAsTheEmbeddedOnes) {
  for (const ProcedureFile& procedure : BuiltInProcedures()) {
    const QString batch = BatchWith(QStringLiteral("CREATE PROCEDURE %1\n").arg(QString::fromUtf8(procedure.name)));
    EXPECT_TRUE(batch.contains(QString::fromUtf8(procedure.header) + u'\n')) << procedure.name.constData();
    EXPECT_TRUE(batch.contains(QStringLiteral("\nAS\nSET NOCOUNT ON;\n"))) << procedure.name.constData();
    EXPECT_TRUE(BatchWith(QStringLiteral("GRANT EXECUTE ON %1 TO").arg(QString::fromUtf8(procedure.name))).size() > 0);
  }
}

TEST(ServerScript, TablesHaveTheColumnsOfTheEmbeddedOnes) {
  test::EmbeddedHost host;
  const QStringList tables = All(QStringLiteral("\nCREATE TABLE \\[?([\\w ]+)\\]? \\("), ServerScript());
  ASSERT_GE(tables.size(), 15);
  for (const QString& table : tables) {
    QString expected = host.Rows(QStringLiteral("SELECT name || ' ' || type FROM pragma_table_info('%1')").arg(table))
                           .join(u'\n')
                           .toLower();
    expected.replace(QStringLiteral(" integer"), QStringLiteral(" int"));
    expected.replace(QStringLiteral(" ntext"), QStringLiteral(" nvarchar(max)"));
    const QString batch = BatchWith(QStringLiteral("CREATE TABLE %1 (").arg(table)) +
                          BatchWith(QStringLiteral("CREATE TABLE [%1] (").arg(table));
    const QStringList columns = All(QStringLiteral("\n  (?!PRIMARY)(\\[?\\w+\\]? \\w+(?:\\(\\w+\\))?)"), batch);
    EXPECT_EQ(columns.join(u'\n').remove(u'[').remove(u']').toLower().toStdString(), expected.toStdString())
        << qPrintable(table);
  }
}

/// Whoever makes the program send a new statement gives the role the right to it.
TEST(ServerScript, GrantsTheStatementsThatTheProgramSends) {
  const QString grants = BatchWith(QStringLiteral("CREATE ROLE"));
  const QRegularExpression statement(QStringLiteral(
      "\\b(SELECT)\\b[^\"]*?\\bFROM (\\[[\\w ]+\\]|\\w+)|(UPDATE) (\\[[\\w ]+\\]|\\w+) SET|(DELETE) FROM (\\[[\\w ]+\\]|\\w+)|(INSERT) INTO (\\[[\\w ]+\\]|\\w+)"));
  int found = 0;
  for (QDirIterator files(QStringLiteral(QBX_SOURCE), {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                          QDirIterator::Subdirectories);
       files.hasNext();) {
    QFile file(files.next());
    if (file.fileName().contains(QRegularExpression(QStringLiteral("/(hostdb|embedded|sqlite)/")))) continue;
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    for (auto all = statement.globalMatch(QString::fromUtf8(file.readAll())); all.hasNext();) {
      const QStringList parts = all.next().capturedTexts().mid(1).filter(QRegularExpression(QStringLiteral(".")));
      const QString table = QString(parts.at(1)).remove(u'[').remove(u']');
      ++found;
      EXPECT_TRUE(
          grants.contains(QRegularExpression(QStringLiteral("GRANT %1 ON \\[?%2\\]? ").arg(parts.first(), table))))
          << qPrintable(file.fileName() + u' ' + parts.join(u' '));
    }
  }
  EXPECT_GE(found, 15);
}

TEST(BatchesOf, EndAtLinesThatHoldGoAlone) {
  EXPECT_EQ(BatchesOf(QStringLiteral("a\nGO\n\n go \r\nb 'GO'\n GOTO x\nGo")),
            QStringList({QStringLiteral("a"), QStringLiteral("b 'GO'\n GOTO x")}));
}

}  // namespace
}  // namespace qbx
