// What stands on which page: small definitions over rows held in memory.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QRegularExpression>

#include "held_rows.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;

QByteArray Text(const QByteArray& inside, const QByteArray& attributes = "x='0' y='0' width='60' height='5'") {
  return "<text " + attributes + ">" + inside + "</text>";
}

/// An A5 page has room for four rows of 50 mm and a footer.
constexpr char kA5[] = "<page paper='A5'/>";

HeldRows::Table Numbers(int count) {
  HeldRows::Table table{{"N"}, {}};
  for (int i = 1; i <= count; ++i)
    table.rows.push_back({Value(i)});
  return table;
}

TEST(Paging, GroupsHaveTheirSumsAndTheReportItsOwn) {
  TestReport test("<table name='Sales'/><group field='city'><header height='5'>" +
                  Text("In <field name='City'/>, so far <count/>") + "</header><footer height='5'>" +
                  Text("<sum name='Price' format='0.00'/> of <count/>") + "</footer></group><detail height='5'>" +
                  Text("<field name='PRICE' format='#,##0.0'/> <field name='When' format='dd/MM/yy'/> "
                       "<field name='Paid' format='yes|no'/>") +
                  "</detail><reportFooter height='5'>" + Text("<sum name='Price'/> of <count/>") + "</reportFooter>");
  const QDateTime day = QDate(2026, 1, 31).startOfDay(Qt::UTC);
  test.rows.tables["Sales"] = {{"City", "Price", "When", "Paid"},
                               {{Value(QString("Bath")), Value(1234.5), Value(day), Value(true)},
                                {Value(QString("Bath")), Value(2), Value(), Value(false)},
                                {Value(QString("York")), Value(0.25), Value(day), Value()}}};
  EXPECT_THAT(test.Pages(), ElementsAre(u"In Bath, so far 1|1,234.5 31/01/26 yes|2.0  no|1236.50 of 2|"
                                        "In York, so far 1|0.3 31/01/26 |0.25 of 1|1236.75 of 3"));
}

TEST(Paging, AGroupHidesItsDetailsUntilSomebodyLooks) {
  TestReport test("<table name='Sales'/><reportHeader height='5'>" + Text("all") +
                  "</reportHeader><group field='Land'><header height='5'>" + Text("<field name='Land'/>") +
                  "</header></group><group field='City' drillDown='yes'><header height='5'>" +
                  Text("<field name='City'/>") + "</header><footer height='5'>" + Text("<sum name='N'/>") +
                  "</footer></group><group field='Make' drillDown='yes'><footer height='5'>" +
                  Text("<field name='Make'/>") + "</footer></group><detail height='5'>" + Text("<field name='N'/>") +
                  "</detail>");
  const auto row = [](const char* land, const char* city, const char* make, int n) {
    return std::vector<Value>{QString(land), QString(city), QString(make), n};
  };
  test.rows.tables["Sales"] = {
      {"Land", "City", "Make", "N"},
      {row("UK", "Bath", "FORD", 1), row("UK", "Bath", "KIA", 2), row("US", "Bath", "KIA", 4)}};
  EXPECT_THAT(test.Pages(), ElementsAre("all|UK|Bath|3|US|Bath|4"));
  ReportPages pages(test.report, test.report.LayOut(test.rows));
  pages.LayOutNext();
  const std::vector<DrillDown> found = pages.At(1).drillDowns;
  ASSERT_EQ(found.size(), 4U) << "headers and footers of both";
  EXPECT_THAT(found[1].group, ElementsAre("UK", "Bath"));
  EXPECT_EQ(qRound(found[1].area.top() / kUnitsPerMillimetre), 15);
  EXPECT_THAT(test.Pages(0, false, found[1].group), ElementsAre("Bath|FORD|KIA|3"));
  EXPECT_THAT(test.Pages(0, false, {"UK", "Bath", "KIA"}), ElementsAre("2|KIA"));
}

TEST(Paging, PageNumbersHeadersAndTheEmptyReport) {
  const QByteArray inside = "<table name='T'/><pageHeader pages='first' height='5'>" + Text("first") +
                            "</pageHeader><pageHeader pages='later' height='5'>" + Text("<field name='N'/>...") +
                            "</pageHeader><detail height='49'>" + Text("<field name='N'/>") +
                            "</detail><pageFooter height='5'>" + Text("page <page/> of <pages/>!") +
                            "</pageFooter><reportFooter height='2'>" +
                            Text("<count/>", "x='0' y='0' width='9' height='2'") + "</reportFooter>";
  TestReport test(inside, kA5);
  test.rows.tables["T"] = Numbers(6);
  EXPECT_TRUE(test.report.ShowsTotal());
  EXPECT_THAT(test.Pages(), ElementsAre("first|1|2|3|4|page 1!", "5...|5|6|6|page 2!"));
  EXPECT_THAT(test.Pages(2), ElementsAre("first|1|2|3|4|page 1 of 2!", "5...|5|6|6|page 2 of 2!"));
  const QStringList written = test.PdfText({"-raw"}).split(u'\f');
  ASSERT_EQ(written.size(), 3);
  EXPECT_TRUE(written[0].contains("page 1 of 2!") && written[1].contains("page 2 of 2!"));
  test.rows.tables.clear();
  EXPECT_THAT(test.Pages(1), ElementsAre("first|0|page 1 of 1!"));
}

TEST(Paging, GroupsThatCountTheirPagesBeginOnASheetOfTheirOwn) {
  TestReport test("<table name='T'/><pageHeader pages='first' height='5'>" + Text("Dear <field name='N'/>") +
                      "</pageHeader><group field='N' restartPages='yes'/><detail height='100' breakAfter='yes'/>"
                      "<detail height='100'/><pageFooter height='5'>" +
                      Text("<groupPage/> of <groupPages/>, letter <groupNumber/>, page <page/>") + "</pageFooter>",
                  kA5);
  test.rows.tables["T"] = Numbers(2);
  EXPECT_THAT(test.Pages(), ElementsAre("Dear 1|1 of 2, letter 1, page 1", "2 of 2, letter 1, page 2",
                                        "Dear 2|1 of 2, letter 2, page 3", "2 of 2, letter 2, page 4"));
  const auto pager = test.report.LayOut(test.rows);
  QList<int> letters;
  while (const auto page = pager->Next())
    letters += page->document;
  EXPECT_THAT(letters, ElementsAre(1, 1, 2, 2));
}

TEST(Paging, BreaksLeaveNoBlankPage) {
  TestReport test(
      "<table name='T'/><group field='N' newPage='yes'/><detail height='20' breakBefore='yes' breakAfter='yes'>" +
      Text("<field name='N'/>") + "</detail>");
  test.rows.tables["T"] = Numbers(3);
  EXPECT_THAT(test.Pages(), ElementsAre("1", "2", "3"));
}

TEST(Paging, WhatGrowsMovesWhatStandsBelow) {
  TestReport test("<table name='T'/><detail height='12'>" +
                      Text("<field name='N'/>", "x='0' y='0' width='60' height='5' canGrow='yes'") +
                      Text("below", "x='0' y='6' width='60' height='5'") +
                      Text("beside", "x='70' y='2' width='60' height='5'") + "</detail><pageFooter height='10'/>",
                  kA5);
  HeldRows::Table& table = test.rows.tables["T"] = {{"N"}, {{Value(QString("1\n2\n3\n4"))}, {Value(QString("5"))}}};
  EXPECT_THAT(test.Pages(0, true), ElementsAre("1\n2\n3\n4@0|beside@2|below@17|5@22|beside@24|below@28"));
  // Taller than a page: cut, and nothing runs over the footer or gets lost.
  table.rows = {{Value(QString("row\n").repeated(200))}};
  const QStringList pages = test.PdfText({"-raw"}).split(u'\f');
  ASSERT_EQ(pages.size(), 3);
  EXPECT_TRUE(pages[0].contains("row…"));
  EXPECT_EQ(pages[1].trimmed(), "below");
  const auto page = test.report.LayOut(test.rows)->Next();
  for (const PlacedObject& placed : page->objects)
    EXPECT_LE(TestReport::Millimetres(placed.frame.bottom()), 200);
}

TEST(Paging, TextsShrinkCloseUpOrAreCut) {
  const QByteArray frame = "x='0' y='0' width='40' height='9' shrinkTo='6' closeBlanks='yes'";
  TestReport test("<table name='T'/><detail height='9'>" + Text("<field name='N'/>", frame) + "</detail>");
  const std::pair<QString, bool> lines[] = {{"a\r\n \n b \n\n", false}, {"1\n2\n3", false}, {"1\n2\n3\n4\n5", true}};
  HeldRows::Table& table = test.rows.tables["T"] = {{"N"}, {}};
  for (const auto& [text, cut] : lines)
    table.rows.push_back({Value(text)});
  EXPECT_THAT(test.Pages(), ElementsAre("a\nb|1\n2\n3|1\n2\n3\n4\n5"));
  const auto page = test.report.LayOut(test.rows)->Next();
  for (size_t i = 0; i < std::size(lines); ++i)
    EXPECT_EQ(page->objects[i].cut, lines[i].second) << i;
  const QString written = test.PdfText({"-raw"});
  EXPECT_TRUE(written.startsWith("a\nb\n1\n2\n3\n1\n2\n3…")) << written.toStdString();
}

TEST(Paging, HiddenColumnsLeaveNoGap) {
  TestReport test(
      "<table name='T'/><pageHeader height='5'>" + Text("A", "x='1' y='0' width='18' height='5' column='A'") +
      Text("B", "x='21' y='0' width='28' height='5' column='B'") +
      Text("C", "x='50' y='0' width='20' height='5' column='C'") + Text("rest", "x='90' y='0' width='20' height='5'") +
      "</pageHeader><detail height='5'>" + Text("a", "x='1' y='0' width='18' height='5' column='A'") +
      Text("b", "x='21' y='0' width='28' height='5' column='B'") +
      Text("c", "x='50' y='0' width='20' height='5' column='C'") + "</detail>");
  test.rows.tables["T"] = Numbers(1);
  test.report.HideColumns({"a", "nothing"});
  const auto page = test.report.LayOut(test.rows)->Next();
  QStringList places;
  for (const PlacedObject& placed : page->objects)
    places += QString("%1@%2").arg(placed.text).arg(TestReport::Millimetres(placed.frame.left()));
  EXPECT_THAT(places, ElementsAre("B@1", "C@30", "rest@90", "b@1", "c@30"));
}

TEST(Paging, SubreportsReadTheRowsOfTheirRow) {
  TestReport test(
      "<table name='Owners' where='Town = {?@Town}' orderBy='N'/><parameter name='@Town' type='text'/>"
      "<pageHeader height='5'>" +
      Text("<field name='N'/>") + "</pageHeader><detail height='5'>" + Text("<field name='N'/>:") +
      "</detail><detail height='0'><subreport><link parameter='@Owner' field='N'/>"
      "<query name='Cars'>SELECT Car FROM Cars WHERE Owner = {?@Owner} AND Town = {?@Town}</query>"
      "<parameter name='@Owner' type='number'/><parameter name='@Town' type='text'/>"
      "<detail height='5'>" +
      Text("<field name='Car'/>") + "</detail><reportFooter height='5'>" + Text("<count/>") +
      "</reportFooter></subreport></detail>");
  test.rows.tables["[Owners]"] = Numbers(2);
  test.rows.tables["Owner = 2"] = {{"Car"}, {{Value(QString("Mini"))}, {Value(QString("Polo"))}}};
  test.report.SetCurrentValue("{?@Town}", QString("'; {?@Owner} --"));
  EXPECT_THAT(test.Pages(), ElementsAre("1|1:|0|2:|Mini|Polo|2"));
  EXPECT_THAT(test.rows.statements, ElementsAre("SELECT * FROM [Owners] WHERE Town = '''; {?@Owner} --' ORDER BY N",
                                                "SELECT Car FROM Cars WHERE Owner = 1 AND Town = '''; {?@Owner} --'",
                                                "SELECT Car FROM Cars WHERE Owner = 2 AND Town = '''; {?@Owner} --'"));
}

TEST(Paging, LettersAreCutBetweenLinesAndNothingIsLostOrRepeated) {
  TestReport test(
      "<table name='Letters'/><pageHeader pages='first' height='60'/><group field='ID' restartPages='yes'/>"
      "<detail height='10'><richText x='10' y='3' width='120' height='5' field='Letter'/></detail>"
      "<pageFooter height='5'>" +
          Text("<groupPage/>/<groupPages/>") + "</pageFooter>",
      kA5);
  QStringList words;
  for (int i = 0; i < 1200; ++i)
    words += QString("w%1").arg(i);
  const QString letter = QString("{\\rtf1 ") + words.join(u' ') + "\\par\\page x\\uFDD2?y\\par}";
  test.rows.tables["Letters"] = {{"ID", "Letter"},
                                 {{Value(1), Value(letter)}, {Value(2), Value(QString("{\\rtf1 short}"))}}};
  const QStringList pages = test.PdfText({"-raw"}).split(u'\f', Qt::SkipEmptyParts);
  ASSERT_GE(pages.size(), 5) << "the letter needs three pages, its page break a fourth";
  EXPECT_TRUE(pages.back().contains("short") && pages.back().contains("1/1"));
  const QString& broken = pages[pages.size() - 2];
  EXPECT_TRUE(broken.startsWith(u'x')) << broken.toStdString();
  QStringList found;
  for (const QString& word : pages.mid(0, pages.size() - 2).join(u' ').split(QRegularExpression("\\s+")))
    if (word.startsWith(u'w')) found += word;
  EXPECT_EQ(found, words);
}

TEST(Paging, ReportsThatCannotBeLaidOutSaySo) {
  TestReport turned("<pageHeader height='220'/>");
  turned.report.SetLandscape();
  EXPECT_THROW(static_cast<void>(turned.report.LayOut(turned.rows)), ReportError);
  TestReport query("<query name='Q'>SELECT 1</query>");
  EXPECT_THROW(query.report.SetTableLocations("Old.%"), ReportError);
  TestReport table("<table name='T'/>");
  table.report.SetTableLocations("Old.dbo.[%]");
  static_cast<void>(table.Pages());
  EXPECT_THAT(table.rows.statements, ElementsAre("SELECT * FROM Old.dbo.[T]"));
}

}  // namespace
}  // namespace qbx::test
