// Compares running a query with plain SQLite calls that do the same work: both steps of "All Customers", the removal of
// rows without consent, and reading ahead rows that are not used.
//
//   query_bench [ROUNDS [CUSTOMERS]]
//
// Prints medians. The two sides run in turn.

#include <sqlite3.h>

#include <QCoreApplication>
#include <array>

#include "queries/query_catalogue.h"
#include "support/plain_database.h"
#include "support/rounds.h"
#include "support/sample_program.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kCampaign = -3;
constexpr char kUser[] = "Bench";
constexpr char kProcedure[] = "proc_Marketing_AddAllCustomers";

/// The comparison: only the statements of the procedure for "All Customers".
class PlainQuery {
 public:
  PlainQuery(const QString& file, const Clock& clock)
      : database_(OpenPlain(file, clock)), body_(PrepareProcedure(database_.Handle(), kProcedure)) {
    for (SqliteStatement* statement : {&body_.front(), &body_[1], &body_.back()})
      BindDefaults(*statement);
  }

  /// \return the rows read back
  qint64 Pass() {
    ExecuteSql(database_.Handle(), "BEGIN IMMEDIATE");
    StepThrough(body_.front());
    StepThrough(body_[1]);
    const qint64 rows = StepThrough(body_.back());
    ExecuteSql(database_.Handle(), "COMMIT");
    return rows;
  }

 private:
  static void BindDefaults(SqliteStatement& statement) {
    for (int i = 1; i <= sqlite3_bind_parameter_count(statement.Handle()); ++i)
      statement.Bind(i, qint64{0});
    for (const char* text : {"@FromDate", "@ToDate", "@ValueCustType", "@ValueEnquirySource"})
      Bind(statement, text, "");
    Bind(statement, "@UserID", kUser);
    Bind(statement, "@CampaignID", kCampaign);
  }

  SqliteFile database_;
  std::vector<SqliteStatement> body_;  ///< the first deletes, the second inserts, the last selects
};

/// The program's own objects.
class ProgramQuery {
 public:
  explicit ProgramQuery(SampleProgram& program) : program_(program) {
    CampaignRecord& record = program.App().campaign.record;
    record.ID = kCampaign;
    record.CampaignTypeID = kAllCustomers;
  }

  /// Runs both steps. \return the number of rows after the second
  qint64 BothSteps(bool removeWithoutConsent) {
    program_.App().options.Only_Send_Comms_When_Opted_In = removeWithoutConsent;
    for (const int step : {0, 1}) {
      if (program_.Desk().queries.ProcessQuery(step, false) != QueryOutcome::kDone)
        Fail(program_.Ui().LastMessage().toUtf8().constData());
    }
    return program_.Desk().queries.Records()[1];
  }

  void ReadAhead() {
    for (const char* read : {"SELECT Customer FROM Customers (NOLOCK)",
                             "SELECT Invoice_Date, Customer FROM Services (NOLOCK) WHERE Record_Type = 0",
                             "SELECT Vehicle, Make, Last_Mileage FROM Vehicles (NOLOCK)"}) {
      if (!program_.App().statements.dbExecute(QString::fromLatin1(read), true).Ok()) Fail("a read ahead failed");
    }
  }

 private:
  SampleProgram& program_;
};

/// Leaves nobody out and lets nobody consent: the query selects every customer, and removes all when it needs consent.
void MakeCustomersAlike(const SampleProgram& program) {
  const SqliteFile database = OpenPlain(program.File(), program.Time());
  ExecuteSql(database.Handle(),
             "UPDATE Customers SET No_Marketing = 0, Consent_Response = 0; PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 5;
  const int customers = argc > 2 ? std::atoi(argv[2]) : 100'000;
  SampleProgram program(customers);
  MakeCustomersAlike(program);
  PlainQuery plain(program.CopyForPeer(), program.Time());
  program.Start();
  ProgramQuery ours(program);
  if (plain.Pass() != customers || ours.BothSteps(false) != customers) Fail("rows are missing");

  std::array<std::vector<double>, 4> times;
  for (int round = 0; round < rounds; ++round) {
    times[0].push_back(Milliseconds([&] {
      plain.Pass();
      plain.Pass();
    }));
    times[1].push_back(Milliseconds([&] { ours.BothSteps(false); }));
    times[2].push_back(Milliseconds([&] {
      if (ours.BothSteps(true) != 0) Fail("rows without consent are left");
    }));
    times[3].push_back(Milliseconds([&] { ours.ReadAhead(); }));
    ours.BothSteps(false);  // so that the next round replaces rows, too
  }

  std::array<double, 4> medians;
  std::transform(times.begin(), times.end(), medians.begin(), Median);
  std::printf("%d customers, both steps, median of %d rounds\n", customers, rounds);
  std::printf("%-44s %9.1f ms\n", "plain SQLite calls", medians[0]);
  std::printf("%-44s %9.1f ms   %.2f x plain (goal 1.5)\n", "ours", medians[1], medians[1] / medians[0]);
  std::printf("%-44s %9.1f ms   adds %.2f x plain (goal 1)\n", "ours, every row removed in both steps", medians[2],
              (medians[2] - medians[1]) / medians[0]);
  std::printf("%-44s %9.3f ms\n", "the three reads ahead", medians[3]);
}
