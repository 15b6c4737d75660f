// Running reports: what their fields are filled with, what the user is told and in which order, and what is written.

#include "printing/print_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "printing/print_choice.h"
#include "support/embedded_host.h"
#include "support/fakes.h"
#include "support/printing.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;

/// A report whose parameters and formulas have these names.
QByteArray Definition(const QStringList& parameters, const QStringList& formulas, const QByteArray& inside = {}) {
  QByteArray xml = "<report version='1'><page/>" + inside;
  for (const QString& name : parameters)
    xml += "<parameter name='" + name.toUtf8() + "' type='" + (name.startsWith(u"@Date") ? "date" : "text") + "'/>";
  for (const QString& name : formulas)
    xml += "<formula name='" + name.toUtf8() + "'>\"as it was\"</formula>";
  return xml + "</report>";
}

class Outlet : public ReportOutlet {
 public:
  TakenOut Preview(const ReportRun& run) override {
    caption = run.caption;
    landscape = run.report.Paper().landscape;
    const auto pager = run.report.LayOut(run.database);
    while (const auto page = pager->Next())
      for (const PlacedObject& placed : page->objects)
        texts += placed.text;
    return {.all = true};
  }
  TakenOut Print(const ReportRun& run, bool prompt) override {
    caption = QString("%1 on %2, prompt %3").arg(run.reportName, run.printer).arg(prompt);
    return {.all = true};
  }
  QString caption;
  bool landscape = false;
  QStringList texts;
};

class PrintReportTest : public testing::Test {
 protected:
  PrintReportTest() {
    startup.user = "Pat";
    startup.RunKey = "run-1";
    campaign.record.ID = 12;
    campaign.record.Campaign_Name = "Spring \"offer\"";
    userOptions.REPORT_PRINTER = "Office";
  }

  ReportOutcome Run(const QString& path, ReportMode mode = ReportMode::kPreview, const ReportRunValues& values = {}) {
    return printer.PrintReport(path, mode, true, values);
  }
  QString Write(const QByteArray& xml, const QString& name = "Test.RPT") { return host.folder.Write(name, xml); }
  QStringList Logged() { return host.Rows("SELECT EventType, TableKey, Details FROM _Log ORDER BY LogID"); }

  EmbeddedHost host;
  StartupValues startup;
  Options options;
  UserOptions userOptions;
  CurrentCampaign campaign;
  Outlet outlet;
  ReportPrinter printer{
      {startup, options, userOptions, campaign, host.connection, host.events, host.diagnostics, outlet}};
};

TEST_F(PrintReportTest, FillsFormulas) {
  struct Row {
    const char16_t* formula;
    std::function<void()> given;
    const char16_t* text;
  };
  ReportState state;
  const Row table[] = {
      {u"@HidePrices", {}, u"\"NO\""},
      {u"@AppName", {}, u"\"KO\""},
      {u"@AppName", [&] { startup.edition.commercialVehicle = true; }, u"\"WE\""},
      {u"@AppName", [&] { startup.edition.parts = true; }, u"\"TE\""},
      {u"@AppName", [&] { startup.edition.truck = true; }, u"\"HO\""},
      {u"@AppName", [&] { startup.edition.boat = true; }, u"\"MX\""},
      {u"@MultiCompany", {}, u"\"NO\""},
      {u"@DetailedReport", [&] { options.DetailedReport = true; }, u"\"YES\""},
      {u"@CompanyCode", {}, u"\"A\""},
      {u"@CompanyCode", [&] { options.CompanyCode = "B"; }, u"\"B\""},
      {u"@RemindersFontSize", [&] { options.RemindersFontSize = 11; }, u"11"},
      {u"@CompanyName", [&] { options.Company = "Smith \"&\" Co"; }, u"\"Smith \"\"&\"\" Co\""},
      {u"@CompanyAddress_1", [&] { options.Address = "A\r\nB\nC\rD"; },
       u"\"A\" + Chr(10) + \"B\" + Chr(10) + \"C\" + Chr(10) + \"D\""},
      {u"@CampaignName", {}, u"\"Spring \"\"offer\"\"\""},
      {u"@Period", {}, u"\"Period: First Record to 04/03/2026\""},
      {u"@Period", [&] { state.dateFromText = "13/01/1989"; }, u"\"Period: First Record to 04/03/2026\""},
      {u"@Period", [&] { state.dateFromText = "01/02/2026", state.dateToText = "28/02/2026"; },
       u"\"Period: 01/02/2026 to 28/02/2026\""},
      {u"@Mine", {}, u"\"as it was\""},
  };
  for (const auto& [formula, given, text] : table) {
    if (given) given();
    const QString name = QString::fromUtf16(formula);
    Report report = Report::Open(Write(Definition({}, {name})));
    SetReportFormula(report, QString("{%1}").arg(name), {startup, options, campaign, state, host.clock.Today()}, state);
    EXPECT_EQ(report.FormulaText(QString("{%1}").arg(name)), QString::fromUtf16(text));
  }
}

TEST_F(PrintReportTest, FillsParametersAndShowsTheTitle) {
  const QStringList names{"@UserID", "@SessionID", "@DateFrom", "@DateTo", "@CampaignID", "@Mine"};
  QByteArray texts;
  for (const QString& name : names)
    texts += "<text x='0' y='0' width='50' height='5'><parameter name='" + name.toUtf8() + "' format='yyyy'/></text>";
  QByteArray xml = Definition(names, {});
  xml.replace("</report>",
              "<formula name='@ReportTitle'>\"The \"\"list\"\"\"</formula><formula name='@Landscape'>\"yes\"</formula>"
              "<reportHeader height='5'>" +
                  texts + "</reportHeader></report>");
  const ReportRunValues values{Value(3), Value(QDate(2026, 2, 1).startOfDay(Qt::UTC)), Value(QString("")),
                               Value(QString("more"))};
  EXPECT_EQ(Run(Write(xml), ReportMode::kPreview, values), ReportOutcome::kOut);
  EXPECT_THAT(outlet.texts, ElementsAre("Pat", "run-1", "2026", "", "12", ""));
  EXPECT_EQ(outlet.caption, "The list");
  EXPECT_TRUE(outlet.landscape);
  const QStringList logged = Logged();
  ASSERT_EQ(logged.size(), 1);
  EXPECT_TRUE(logged[0].startsWith("8|PRINT|File:Test, Param0:3 Param1:")) << logged[0].toStdString();
  EXPECT_TRUE(logged[0].endsWith("Param3:more ")) << logged[0].toStdString();
  EXPECT_TRUE(printer.state.reportTitle.isEmpty()) << "the next report would have this title";
  EXPECT_EQ(Run(Write(Definition({}, {}), "Plain.xml"), ReportMode::kPrint), ReportOutcome::kOut);
  EXPECT_EQ(outlet.caption, "Plain.xml on Office, prompt 1");

  CurrentCampaign other;
  other.record.ID = 7;
  printer.FeedNextRun(host.Run("SELECT 1 AS One"), {}, other);
  for (const char* id : {"7", "12"}) {
    outlet.texts.clear();
    EXPECT_EQ(Run(Write(xml)), ReportOutcome::kOut);
    EXPECT_EQ(outlet.texts.value(4), id);
  }
}

TEST_F(PrintReportTest, WhatCannotBeginSaysSoAndOpensNothing) {
  EXPECT_EQ(Run("/no/Such.rpt"), ReportOutcome::kFailed);
  const QString path = Write(Definition({}, {}));
  printer.state.tableLocationFilter = "Old.%";
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kFailed);
  EXPECT_TRUE(printer.state.tableLocationFilter.isEmpty()) << "the next report would be read elsewhere";
  const QString query = Write(Definition({}, {}, "<query name='Q'>SELECT 1 AS A</query>"));
  printer.state.tableLocationFilter = "Old.%";
  EXPECT_EQ(Run(query), ReportOutcome::kFailed);
  EXPECT_THAT(host.ui.MessageTexts(),
              ElementsAre("The document or report could not created because a file is missing.\r\rFile: /no/Such.rpt",
                          "Report to PDF but no PDF Filename Specified.",
                          "The Report 'Test' does not support the specified filter.\r\rFilter: Old.%"));
  for (const Message& message : host.ui.Messages())
    EXPECT_EQ(message.icon, MessageIcon::kExclamation);
  EXPECT_FALSE(host.ui.StatusVisible() || host.ui.Busy());
  EXPECT_EQ(Logged().size(), 1) << "only the run that began is logged";
}

TEST_F(PrintReportTest, WithoutAConnectionEachTableIsNamedOnce) {
  const QString path = Write(Definition({}, {}, "<table name='Letters'/>"));
  host.connection.Close();
  host.ui.Answer("PrintReport", MessageAnswer::kAbort);
  EXPECT_EQ(Run(path), ReportOutcome::kFailed);
  ASSERT_EQ(host.ui.Messages().size(), 2U);
  EXPECT_EQ(host.ui.MessageTexts().front(), "No report connection to the database.");
}

TEST_F(PrintReportTest, WritesAPdfOfTheRowsOfTheDatabase) {
  static_cast<void>(host.Run("INSERT INTO Letters (SessionID, NameAddress) VALUES ('run-1', 'Ann'), ('other', 'Bob')"));
  const QString path = Write(Definition({}, {},
                                        "<table name='Letters' where='SessionID = {?@SessionID}'/><parameter "
                                        "name='@SessionID' type='text'/>"
                                        "<detail height='9' breakAfter='yes'/>"));
  const QString pdf = host.folder.Write("out.pdf", "older");
  int pages = 0;
  const auto stopFirst = [&](const ReportPage&) { return ++pages > 1; };
  printer.OnPage(stopFirst);
  printer.state.pdfFileName = pdf;
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kFailed) << "it was stopped";
  EXPECT_EQ(host.folder.Read("out.pdf"), "older");
  printer.state.pdfFileName = pdf;
  printer.OnPage(stopFirst);
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kOut);
  EXPECT_EQ(pages, 2) << "one letter of this run, in two tries";
  EXPECT_TRUE(host.folder.Read("out.pdf").startsWith("%PDF-"));
  EXPECT_TRUE(Logged().last().startsWith("8|PRINT-PDF|File:Test, "));
  EXPECT_EQ(host.folder.Names().filter("out.pdf").size(), 1) << "what was stopped left a file behind";
}

TEST_F(PrintReportTest, ALetterCountsWhenAllItsPagesWerePrinted) {
  static_cast<void>(host.Run("INSERT INTO Letters (LetterID, SessionID) VALUES (7, 'b'), (8, 'a')"));
  const Report report = Report::Open(
      Write("<report version='1'><page/><table name='Letters' orderBy='SessionID'/><group field='LetterID' "
            "restartPages='yes'/><detail height='9' breakAfter='yes'/><detail height='9'/></report>"));
  ConnectedRows rows(host.connection, host.diagnostics);
  ReportFollower nobody;
  const ReportRun run{
      .report = report, .database = rows, .caption = {}, .reportName = {}, .printer = {}, .follower = nobody};
  FakePrinters printers;
  PrintService service(printers, host.diagnostics);
  const auto keys = [&](const PageRange& range) {
    ReportPages pages(report, report.LayOut(rows));
    const TakenOut taken = PrintPages(run, pages, service, {.printer = {}, .range = range}, [] { return true; });
    return taken.all ? QStringList{"all"} : QStringList(taken.keys.begin(), taken.keys.end());
  };
  EXPECT_THAT(keys({.lastPage = 3}), ElementsAre("8")) << "in the order of the definition";
  EXPECT_THAT(keys({.firstPage = 2, .lastPage = 3}), ElementsAre());
  EXPECT_THAT(keys({.firstDocument = 2}), ElementsAre("7"));
  EXPECT_THAT(keys({}), ElementsAre("all"));
}

TEST_F(PrintReportTest, ASilentPrintServiceCanBeCancelled) {
  FakePrinters printers;
  printers.silent = true;
  PrintService service(printers, host.diagnostics);
  host.ui.OnStatus([&](const StatusView& view) {
    if (view.showCancel) host.ui.PressCancel();
  });
  EXPECT_FALSE(service.List().has_value());
  EXPECT_FALSE(host.ui.StatusVisible());
  host.diagnostics.status.ShowStatus("Printing the report", true);
  try {
    service.Print(printers.printers[0], {.file = {}, .title = {}});
    ADD_FAILURE() << "nobody knows whether it is printed";
  } catch (const PrintingUnknown& error) {
    EXPECT_TRUE(error.text.startsWith("It is not known whether")) << error.text.toStdString();
  }
  EXPECT_EQ(host.ui.StatusTexts().last(), "Printing the report...") << "the box of the printing stays";
  EXPECT_TRUE(host.ui.StatusVisible());
}

TEST_F(PrintReportTest, ReadingCanBeCancelled) {
  const QString path =
      Write(Definition({}, {},
                       "<query name='Endless'>SELECT A.N FROM (WITH RECURSIVE X(N) AS (SELECT 1 UNION ALL "
                       "SELECT N + 1 FROM X) SELECT N FROM X) A</query>"));
  host.ui.OnStatus([&](const StatusView& view) {
    if (view.showCancel) host.ui.PressCancel();
  });
  EXPECT_EQ(Run(path), ReportOutcome::kFailed);
  EXPECT_TRUE(host.ui.MessageTexts().isEmpty());
  EXPECT_FALSE(host.ui.StatusVisible());
}

}  // namespace
}  // namespace qbx::test
