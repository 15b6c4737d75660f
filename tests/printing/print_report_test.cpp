// Running reports: what their fields are filled with, what the user is told and in which order, and what is written.

#include "printing/print_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileInfo>

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
    caption = QStringLiteral("%1 on %2, prompt %3").arg(run.reportName, run.printer).arg(prompt);
    return {.all = true};
  }
  QString caption;
  bool landscape = false;
  QStringList texts;
};

class PrintReportTest : public testing::Test {
 protected:
  PrintReportTest() {
    startup.user = u"Pat"_qs;
    startup.RunKey = u"run-1"_qs;
    campaign.record.ID = 12;
    campaign.record.Campaign_Name = u"Spring \"offer\""_qs;
    userOptions.REPORT_PRINTER = u"Office"_qs;
  }

  ReportOutcome Run(const QString& path, ReportMode mode = ReportMode::kPreview, const ReportRunValues& values = {}) {
    return printer.PrintReport(path, mode, true, values);
  }
  QString Write(const QByteArray& xml, const QString& name = u"Test.RPT"_qs) { return host.folder.Write(name, xml); }
  QStringList Logged() { return host.Rows(u"SELECT EventType, TableKey, Details FROM _Log ORDER BY LogID"_qs); }

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
      {u"@CompanyCode", [&] { options.CompanyCode = u"B"_qs; }, u"\"B\""},
      {u"@RemindersFontSize", [&] { options.RemindersFontSize = 11; }, u"11"},
      {u"@CompanyName", [&] { options.Company = u"Smith \"&\" Co"_qs; }, u"\"Smith \"\"&\"\" Co\""},
      {u"@CompanyAddress_1", [&] { options.Address = u"A\r\nB\nC\rD"_qs; },
       u"\"A\" + Chr(10) + \"B\" + Chr(10) + \"C\" + Chr(10) + \"D\""},
      {u"@CampaignName", {}, u"\"Spring \"\"offer\"\"\""},
      {u"@Period", {}, u"\"Period: First Record to 04/03/2026\""},
      {u"@Period", [&] { state.dateFromText = u"13/01/1989"_qs; }, u"\"Period: First Record to 04/03/2026\""},
      {u"@Period", [&] { state.dateFromText = u"01/02/2026"_qs, state.dateToText = u"28/02/2026"_qs; },
       u"\"Period: 01/02/2026 to 28/02/2026\""},
      {u"@Mine", {}, u"\"as it was\""},
  };
  for (const auto& [formula, given, text] : table) {
    if (given) given();
    const QString name = QString::fromUtf16(formula);
    Report report = Report::Open(Write(Definition({}, {name})));
    SetReportFormula(report, u"{%1}"_qs.arg(name), {startup, options, campaign, state, host.clock.Today()}, state);
    EXPECT_EQ(report.FormulaText(u"{%1}"_qs.arg(name)), QString::fromUtf16(text));
  }
}

TEST_F(PrintReportTest, FillsParametersAndShowsTheTitle) {
  const QStringList names{u"@UserID"_qs, u"@SessionID"_qs,  u"@DateFrom"_qs,
                          u"@DateTo"_qs, u"@CampaignID"_qs, u"@Mine"_qs};
  QByteArray texts;
  for (const QString& name : names)
    texts += "<text x='0' y='0' width='50' height='5'><parameter name='" + name.toUtf8() + "' format='yyyy'/></text>";
  QByteArray xml = Definition(names, {});
  xml.replace("</report>",
              "<formula name='@ReportTitle'>\"The \"\"list\"\"\"</formula><formula name='@Landscape'>\"yes\"</formula>"
              "<reportHeader height='5'>" +
                  texts + "</reportHeader></report>");
  const ReportRunValues values{Value(3), Value(QDate(2026, 2, 1).startOfDay(Qt::UTC)), Value(u""_qs),
                               Value(u"more"_qs)};
  EXPECT_EQ(Run(Write(xml), ReportMode::kPreview, values), ReportOutcome::kOut);
  EXPECT_THAT(outlet.texts, ElementsAre(u"Pat"_qs, u"run-1"_qs, u"2026"_qs, u""_qs, u"12"_qs, u""_qs));
  EXPECT_EQ(outlet.caption, u"The list"_qs);
  EXPECT_TRUE(outlet.landscape);
  const QStringList logged = Logged();
  ASSERT_EQ(logged.size(), 1);
  EXPECT_TRUE(logged[0].startsWith(u"8|PRINT|File:Test, Param0:3 Param1:"_qs)) << logged[0].toStdString();
  EXPECT_TRUE(logged[0].endsWith(u"Param3:more "_qs)) << logged[0].toStdString();
  EXPECT_TRUE(printer.state.reportTitle.isEmpty()) << "the next report would have this title";
  EXPECT_EQ(Run(Write(Definition({}, {}), u"Plain.xml"_qs), ReportMode::kPrint), ReportOutcome::kOut);
  EXPECT_EQ(outlet.caption, u"Plain.xml on Office, prompt 1"_qs);

  CurrentCampaign other;
  other.record.ID = 7;
  printer.FeedNextRun(host.Run(u"SELECT 1 AS One"_qs), {}, other);
  for (const QString& id : {u"7"_qs, u"12"_qs}) {
    outlet.texts.clear();
    EXPECT_EQ(Run(Write(xml)), ReportOutcome::kOut);
    EXPECT_EQ(outlet.texts.value(4), id);
  }
}

TEST_F(PrintReportTest, WhatCannotBeginSaysSoAndOpensNothing) {
  EXPECT_EQ(Run(u"/no/Such.rpt"_qs), ReportOutcome::kFailed);
  const QString path = Write(Definition({}, {}));
  printer.state.tableLocationFilter = u"Old.%"_qs;
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kFailed);
  EXPECT_TRUE(printer.state.tableLocationFilter.isEmpty()) << "the next report would be read elsewhere";
  const QString query = Write(Definition({}, {}, "<query name='Q'>SELECT 1 AS A</query>"));
  printer.state.tableLocationFilter = u"Old.%"_qs;
  EXPECT_EQ(Run(query), ReportOutcome::kFailed);
  EXPECT_THAT(
      host.ui.MessageTexts(),
      ElementsAre(u"The document or report could not created because a file is missing.\r\rFile: /no/Such.rpt"_qs,
                  u"Report to PDF but no PDF Filename Specified."_qs,
                  u"The Report 'Test' does not support the specified filter.\r\rFilter: Old.%"_qs));
  for (const Message& message : host.ui.Messages())
    EXPECT_EQ(message.icon, MessageIcon::kExclamation);
  EXPECT_FALSE(host.ui.StatusVisible() || host.ui.Busy());
  EXPECT_EQ(Logged().size(), 1) << "only the run that began is logged";
}

TEST_F(PrintReportTest, DamagedDefinitionsCanBeRetriedAndGivenUp) {
  const QString path = Write("<report version='1'>\n<page/><movie/></report>");
  host.ui.OnMessage([&](const Message& message) -> std::optional<MessageAnswer> {
    if (message.buttons != MessageButtons::kAbortRetryIgnore) return std::nullopt;
    EXPECT_FALSE(host.ui.Busy() || host.ui.StatusVisible());
    EXPECT_EQ(message.title, u"Application Error"_qs);
    EXPECT_EQ(message.icon, MessageIcon::kStop);
    EXPECT_TRUE(message.text.startsWith(u"The following error has occured in PrintReport - 1 :  Test.RPT, line 2: "_qs))
        << message.text.toStdString();
    if (host.ui.Messages().size() > 2) return MessageAnswer::kAbort;
    if (host.ui.Messages().size() == 2) Write(Definition({}, {}));  // mended meanwhile
    return MessageAnswer::kRetry;
  });
  EXPECT_EQ(Run(path), ReportOutcome::kOut);
  Write("<report version='1'>\n<page/><movie/></report>");
  EXPECT_EQ(Run(path), ReportOutcome::kFailed);
  host.ui.OnMessage({});
  host.ui.Answer(u"line 2"_qs, MessageAnswer::kIgnore);
  EXPECT_EQ(Run(path), ReportOutcome::kFailed);
  EXPECT_EQ(host.ui.MessageTexts().back(), u"Unable to generate the report at this time."_qs);
}

TEST_F(PrintReportTest, WithoutAConnectionEachTableIsNamedOnce) {
  const QString path = Write(Definition({}, {}, "<table name='Letters'/>"));
  host.connection.Close();
  host.ui.Answer(u"PrintReport"_qs, MessageAnswer::kAbort);
  EXPECT_EQ(Run(path), ReportOutcome::kFailed);
  ASSERT_EQ(host.ui.Messages().size(), 2U);
  EXPECT_EQ(host.ui.MessageTexts().front(), u"No report connection to the database."_qs);
}

TEST_F(PrintReportTest, WritesAPdfOfTheRowsOfTheDatabase) {
  static_cast<void>(
      host.Run(u"INSERT INTO Letters (SessionID, NameAddress) VALUES ('run-1', 'Ann'), ('other', 'Bob')"_qs));
  const QString path = Write(Definition({}, {},
                                        "<table name='Letters' where='SessionID = {?@SessionID}'/><parameter "
                                        "name='@SessionID' type='text'/>"
                                        "<detail height='9' breakAfter='yes'/>"));
  const QString pdf = host.folder.Write(u"out.pdf"_qs, "older");
  int pages = 0;
  const auto stopFirst = [&](const ReportPage&) { return ++pages > 1; };
  printer.OnPage(stopFirst);
  printer.state.pdfFileName = pdf;
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kFailed) << "it was stopped";
  EXPECT_EQ(host.folder.Read(u"out.pdf"_qs), "older");
  printer.state.pdfFileName = pdf;
  printer.OnPage(stopFirst);
  EXPECT_EQ(Run(path, ReportMode::kPdf), ReportOutcome::kOut);
  EXPECT_EQ(pages, 2) << "one letter of this run, in two tries";
  EXPECT_TRUE(host.folder.Read(u"out.pdf"_qs).startsWith("%PDF-"));
  EXPECT_TRUE(Logged().last().startsWith(u"8|PRINT-PDF|File:Test, "_qs));
  EXPECT_EQ(host.folder.Names().filter(u"out.pdf"_qs).size(), 1) << "what was stopped left a file behind";
}

TEST_F(PrintReportTest, ALetterCountsWhenAllItsPagesWerePrinted) {
  static_cast<void>(host.Run(u"INSERT INTO Letters (LetterID, SessionID) VALUES (7, 'b'), (8, 'a')"_qs));
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
    return taken.all ? QStringList{u"all"_qs} : QStringList(taken.keys.begin(), taken.keys.end());
  };
  EXPECT_THAT(keys({.lastPage = 3}), ElementsAre(u"8"_qs)) << "in the order of the definition";
  EXPECT_THAT(keys({.firstPage = 2, .lastPage = 3}), ElementsAre());
  EXPECT_THAT(keys({.firstDocument = 2}), ElementsAre(u"7"_qs));
  EXPECT_THAT(keys({}), ElementsAre(u"all"_qs));
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
  host.diagnostics.status.ShowStatus(u"Printing the report"_qs, true);
  try {
    service.Print(printers.printers[0], {.file = {}, .title = {}});
    ADD_FAILURE() << "nobody knows whether it is printed";
  } catch (const PlainReportError& error) {
    EXPECT_TRUE(error.text.startsWith(u"It is not known whether"_qs)) << error.text.toStdString();
  }
  EXPECT_EQ(host.ui.StatusTexts().last(), u"Printing the report..."_qs) << "the box of the printing stays";
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
