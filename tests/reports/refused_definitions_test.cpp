// Definitions that are wrong, or could do harm: refused with the line, and nothing is read or run.

#include <gtest/gtest.h>

#include <QFile>

#include "held_rows.h"
#include "reports/definition_loader.h"
#include "reports/report_statement_checks.h"

namespace qbx::test {
namespace {

/// A report of five lines whose last holds this.
QByteArray WithLine5(const QByteArray& last) {
  return "<?xml version='1.0'?>\n<report version='1'>\n<page paper='A5'/>\n\n" + last + "</report>";
}

QByteArray Nested(int levels) {
  QByteArray inside;
  for (int i = 0; i < levels; ++i)
    inside =
        "<detail height='1'><subreport><link parameter='@N' field='N'/><table name='T'/><parameter name='@N' "
        "type='text'/>" +
        inside + "</subreport></detail>";
  return inside;
}

QByteArray Chain(int formulas) {
  QByteArray chain = "<formula name='@0'>''</formula>";
  for (int i = 1; i < formulas; ++i)
    chain += QString("<formula name='@%1'>{@%2}+{@%2}</formula>").arg(i).arg(i - 1).toUtf8();
  return chain;
}

TEST(RefusedDefinitions, AreNamedWithTheirPlace) {
  const TempFolder folder;
  folder.Write("secret.ppm", "P6 1 1 255\nabc");
  folder.Write("reports/large.ppm", "P6 9000 9000 255\nabc");
  folder.Write("reports/text.png", "no picture");
  QFile::link(folder.File("secret.ppm"), folder.File("reports/link.ppm"));
  const auto image = [](const QByteArray& file) {
    return WithLine5("<detail height='5'><image x='0' y='0' width='5' height='5' file='" + file + "'/></detail>");
  };
  const auto text = [](const QByteArray& inside) {
    return WithLine5("<detail height='5'><text x='0' y='0' width='5' height='5'>" + inside + "</text></detail>");
  };
  const QByteArray deep = "<formula name='@200'>{@199}</formula>";
  struct Row {
    QByteArray xml;
    int line;
    const char* says;
  };
  const Row table[] = {
      {"", 1, "This is no XML"},
      {"<report version='1'>\n<page></report>", 2, "This is no XML"},
      {"<report version='2'><page/></report>", 1, "report"},
      {WithLine5("<detail height='5'><movie/></detail>"), 5, "movie"},
      {WithLine5("<detail height='5' colur='#000000'/>"), 5, "colur"},
      {WithLine5("<detail height='-5'/>"), 5, "detail"},
      {WithLine5("<detail height='1e3'/>"), 5, "1e3"},
      {"<!DOCTYPE report [<!ENTITY a 'x'>]><report version='1'><page/></report>", 1, "document type"},
      {"<!DOCTYPE report SYSTEM '/etc/passwd'><report version='1'><page/></report>", 1, "document type"},
      {"<!DOCTYPE r [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;&a;&a;&a;&a;'><!ENTITY c "
       "'&b;&b;&b;&b;&b;&b;&b;&b;'>]><report version='&c;&c;&c;&c;'><page/></report>",
       1, ""},
      {image("none.png"), 5, "The image is missing: none.png"},
      {image("../secret.ppm"), 5, "below the folder"},
      {image("link.ppm"), 5, "below the folder"},
      {image("."), 5, "below the folder"},
      {image("large.ppm"), 5, "too many pixels"},
      {image("text.png"), 5, "cannot be read"},
      {text("<formula name='@None'/>"), 5, "There is no formula \"@None\""},
      {text("<parameter name='@None'/>"), 5, "There is no parameter \"@None\""},
      {text("<page/>"), 5, "headers and footers of pages only"},
      {text("<groupPage/>"), 5, "no group counts its own pages"},
      {WithLine5("<table name='T' where='A = {?@B}'/>"), 5, "There is no parameter \"@B\""},
      {WithLine5("<table name='T]; DELETE FROM T --'/>"), 5, "one statement"},
      {WithLine5("<table name='T' orderBy='A; DELETE FROM T'/>"), 5, "one statement"},
      {WithLine5("<query name='Q'>UPDATE T SET A = 1</query>"), 5, "one SELECT"},
      {WithLine5("<query name='Q'> </query>"), 5, "The query is empty"},
      {WithLine5("<formula name='@A'>1 +</formula>"), 5, "The formula is wrong at character 4"},
      {WithLine5("<formula name='@A'>{@B}</formula><formula name='@B'>{@A}</formula>"), 5, "stands for itself"},
      {WithLine5(Chain(40)), 5, "too long"},
      {WithLine5(deep + Chain(200)), 5, "too long"},
      {WithLine5(Nested(4)), 5, "more than 3 deep"},
      {WithLine5("<group field='A' restartPages='yes'/><group field='B' restartPages='yes'/>"), 0, "Only one group"},
      {WithLine5("<group field='A' restartPages='yes'/><group field='B' drillDown='yes'><header height='5'/></group>"),
       0, "no drill-down"},
      {WithLine5("<group field='A' drillDown='yes'/>"), 0, "shows nothing itself"},
      {WithLine5("<pageHeader height='2000'/>"), 0, "no room for rows"},
      {WithLine5("<pageHeader pages='later' height='205'/>"), 0, "no room for rows"},
      {WithLine5("<detail height='220'/>"), 5, "taller than the room"},
      {WithLine5("<!--" + QByteArray(kMaxDefinitionBytes, 'x') + "-->"), 0, "too large"},
  };
  for (const Row& row : table) {
    const QString path = folder.Write("reports/test.rpt", row.xml);
    try {
      static_cast<void>(LoadDefinition(path));
      ADD_FAILURE() << row.xml.left(300).constData();
    } catch (const ReportError& error) {
      EXPECT_EQ(error.line, row.line) << row.xml.left(300).constData();
      EXPECT_TRUE(error.Description().startsWith(u"test.rpt")) << error.Description().toStdString();
      EXPECT_TRUE(error.text.contains(row.says)) << row.xml.left(300).constData() << ": " << error.text.toStdString();
    }
  }
}

TEST(RefusedDefinitions, AllowOnlyStatementsThatRead) {
  for (const char* reads :
       {"SELECT * FROM [Campaign Results] R WHERE R.A = {?@A} ORDER BY R.B", "select 'it''s; DROP TABLE T' AS [Into]",
        "SELECT A -- not a comment's end; DELETE\nFROM T", "SELECT /* only; reads */ A FROM T",
        "SELECT Updated, \"delete\", T.Set_A FROM T UNION SELECT A, B, C FROM U"})
    EXPECT_NO_THROW(CheckOnlyReads(QString::fromUtf8(reads))) << reads;
  for (const char* writes :
       {"DELETE FROM T", "", "WITH X AS (SELECT 1) DELETE FROM T", "SELECT 1; DROP TABLE T", "SELECT 1 DROP TABLE T",
        "SELECT * INTO U FROM T", "SELECT 1 EXEC xp_cmdshell 'x'", "SELECT 1 /**/INSERT/**/INTO T VALUES (1)",
        "SELECT 1 -- x\nUPDATE T SET A = 1", "SELECT 1 -- ' \r DELETE FROM T --'",
        "SELECT 1 /* /* */ ' */ DELETE FROM T --'", "SELECT [a]] ' ] DELETE FROM T --'", "SELECT ` ' ` DELETE FROM T '",
        "SELECT 'open", "SELECT 1 /* open", "SELECT * FROM OPENROWSET('a', 'b', 'c')",
        "SELECT A FROM T WHERE A = '{?@A}'", "SELECT A FROM T WHERE A = 1 -- {?@A}"})
    EXPECT_THROW(CheckOnlyReads(QString::fromUtf8(writes)), ReportError) << writes;
}

}  // namespace
}  // namespace qbx::test
