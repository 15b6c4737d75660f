// Measures a report of a long list: the time to its first page and to its last.
//
//   report_bench [ROWS [ROUNDS]]
//
// Prints medians. Needs no display. "Handed over" is the list as the grid prints it, with rows that are in memory.
// "Read" is a definition with its own query, whose rows are read into a temporary file.

#include <QGuiApplication>

#include "printing/connected_rows.h"
#include "printing/report_files.h"
#include "support/rounds.h"
#include "support/sample_program.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

struct Cost {
  std::vector<double> firstPage;
  std::vector<double> allPages;
  int pages = 0;
};

/// Lays out all pages, and also measures the first one alone.
void LayOut(const Report& report, ReportDatabase& database, Cost& cost) {
  std::unique_ptr<Pager> pager;
  cost.firstPage.push_back(Milliseconds([&] {
    pager = report.LayOut(database);
    if (!pager->Next()) Fail("There is no page.");
  }));
  cost.pages = 1;
  cost.allPages.push_back(Milliseconds([&] {
    while (pager->Next())
      ++cost.pages;
  }));
}

void Print(const char* name, const Cost& cost) {
  std::printf("%-12s first page after %7.1f ms, the other %d laid out in %8.0f ms\n", name, Median(cost.firstPage),
              cost.pages - 1, Median(cost.allPages));
}

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const int rows = argc > 1 ? std::max(1, std::atoi(argv[1])) : 100'000;
  const int rounds = argc > 2 ? std::max(1, std::atoi(argv[2])) : 3;
  SampleProgram program(rows);
  program.Start();
  Connection& connection = program.App().connection;
  connection.Driver().Execute(QStringLiteral(
      "DELETE FROM [Campaign Results]; INSERT INTO [Campaign Results] (CampaignID, Customer, Title, Firstname, Lastname, Telephone, Mobile, Email, Vehicle, Make, Send_SMS, Send_Email, Send_Letter, Processed) SELECT 1, Customer, Title, Firstname, Lastname, Telephone, Mobile, Email, 'AB12 CDE', 'FORD', 1, 1, 0, 0 FROM Customers"));
  const QString path = ReportPath(program.App().startup.ProgramFolder, QStringLiteral("CampaignResults.rpt"));
  ConnectedRows database(connection, program.App().diagnostics);
  Cost handedOver;
  Cost read;
  for (int round = 0; round < rounds; ++round) {
    Report fromGrid = Report::Open(path);
    fromGrid.FeedFrom(
        Recordset::ReadAll(connection.Driver().Execute(QStringLiteral("proc_selp_Campaign_Results (1)"))));
    LayOut(fromGrid, database, handedOver);
    Report fromQuery = Report::Open(path);
    fromQuery.SetCurrentValue(QStringLiteral("{?@CampaignID}"), 1);
    LayOut(fromQuery, database, read);
  }
  std::printf("%d rows, median of %d rounds\n", rows, rounds);
  Print("handed over", handedOver);
  Print("read", read);
  return 0;
}
