// Measures the results grid: from the end of a query to a painted grid, sorting, scrolling, finding, filtering, and
// changing flags.
//
//   grid_bench [ROUNDS [CUSTOMERS]]
//
// Prints medians. Needs no display. The comparison steps through the same rows with the C API of SQLite and reads every
// column as text. The two sides run in turn.

#include <malloc.h>

#include <QApplication>
#include <QImage>
#include <QTableView>
#include <algorithm>
#include <array>
#include <string>

#include "grids/ui/cDataGrid.h"
#include "queries/query_catalogue.h"
#include "support/plain_database.h"
#include "support/rounds.h"
#include "support/sample_program.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

constexpr int kCampaign = -3;
constexpr int kShownColumns = 30;

/// The grid, set up as on the results page.
class ResultsGrid {
 public:
  explicit ResultsGrid(SampleProgram& program)
      : program_(program), grid_(program.App().statements, program.App().diagnostics, program.App().userOptions) {
    view_.resize(1100, 600);
    grid_.Grid(view_);
    grid_.StoredProc(QStringLiteral("Campaign_Results"));
    grid_.SetLineID(QStringLiteral("RecordID"));
    grid_.FlagColumns({QStringLiteral("Send_SMS"), QStringLiteral("Send_Email"), QStringLiteral("Send_Letter"),
                       QStringLiteral("Processed")});
    Results().OnDisplayed([this] { grid_.ConnectRecordset(Results().Rows()); });
    Results().OnRefresh([this](const std::function<void()>& requery) { grid_.Requery(requery); });
    view_.show();
  }

  [[nodiscard]] ResultsView& Results() { return program_.Desk().results; }
  [[nodiscard]] cDataGrid& Grid() { return grid_; }

  void Paint() {
    QCoreApplication::processEvents();
    view_.render(&image_);
  }

  /// Drops the rows, so that the next display starts like the first.
  void Forget() {
    grid_.Clear();
    Results().Rows().Close();
    malloc_trim(0);
  }

  void Display() {
    if (!Results().DisplayResults(kCampaign)) Fail("the rows could not be read");
    Paint();
  }

  /// \param flag  the grid is not sorted by it, so that the row keeps its place
  void Flip(const QString& flag) {
    const QString before = grid_.CellText(grid_.CurrentRow(), flag);
    program_.Desk().edits.ClickCell(flag, grid_.RecordID());
    if (grid_.CellText(grid_.CurrentRow(), flag) == before) Fail("no flag was flipped");
    Paint();
  }

  void FlipFirst() {
    grid_.MoveTo(0);
    const CounterValues before = program_.Desk().counters.Values();
    program_.Desk().edits.ClickCell(QStringLiteral("Send_SMS"), grid_.RecordID());
    if (program_.Desk().counters.Values() == before) Fail("no flag was flipped");
    Paint();
  }

  void Filter(RowKind kind) {
    grid_.ShowOnly(Results().Kinds().Filter(kind, Results().Rows()));
    Paint();
  }

  void FindNowhere(const char* text) {
    if (grid_.FindText(QLatin1String(text), cDataGrid::Search::kNext)) Fail("a text was found that is nowhere");
  }

  void FindLast() {
    const qint64 last = Results().Rows().At(grid_.RowCount() - 1, 0).integer;
    if (!grid_.FindLine(QString::fromLatin1(ResultsView::kRowKey), Value(last))) Fail("a row was not found");
    Paint();
  }

  [[nodiscard]] std::vector<qint64> Keys(qint64 count) {
    std::vector<qint64> keys;
    for (qint64 row = 0; row < count; ++row)
      keys.push_back(Results().Rows().At(row, 0).integer);
    return keys;
  }

  /// Ticks or unticks the letters of rows; rows without an address are left alone.
  void Tick(const std::vector<qint64>& keys, bool ticked) {
    if (program_.Desk().edits.SetFlag(Channel::kLetter, ticked, keys).changed.empty()) Fail("nothing was changed");
    Paint();
  }

  void TakeOut(const std::vector<qint64>& keys) {
    if (program_.Desk().edits.TakeOut(keys).changed.size() != keys.size()) Fail("rows were left alone");
    Paint();
  }

  void Undo() {
    if (program_.Desk().edits.Undo().changed.empty()) Fail("nothing was taken back");
    Paint();
  }

 private:
  SampleProgram& program_;
  QTableView view_;
  cDataGrid grid_;
  QImage image_ = QImage(1100, 600, QImage::Format_ARGB32_Premultiplied);
};

/// Memory in use, MiB.
double UsedMemory() {
  const auto info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1048576.0;
}

void RunQuery(SampleProgram& program) {
  CampaignRecord& record = program.App().campaign.record;
  record.ID = kCampaign;
  record.CampaignTypeID = kAllCustomers;
  program.App().options.Only_Send_Comms_When_Opted_In = false;
  for (const int step : {0, 1}) {
    if (program.Desk().queries.ProcessQuery(step, false) != QueryOutcome::kDone)
      Fail(program.Ui().LastMessage().toUtf8().constData());
  }
}

void Show(const char* what, const std::vector<double>& times) {
  std::printf("%-44s %9.1f ms\n", what, Median(times));
}

/// The times of each step, in the order of the first round.
class Times {
 public:
  template <typename Work>
  void Take(const char* what, const Work& work) {
    const double time = Milliseconds(work);
    auto known = std::find_if(all_.begin(), all_.end(), [what](const auto& one) { return one.first == what; });
    if (known == all_.end()) known = all_.insert(all_.end(), {what, {}});
    known->second.push_back(time);
  }
  void Show() const {
    for (const auto& [what, times] : all_)
      ::Show(what.c_str(), times);
  }

 private:
  std::vector<std::pair<std::string, std::vector<double>>> all_;
};

constexpr qint64 kSelected = 1'000;

/// The usual work in the rows. Every change is painted.
void WorkInRows(ResultsGrid& grid, Times& times) {
  const QString email = QStringLiteral("Send_Email");
  times.Take("kinds of all rows, read for the first time", [&] { (void)grid.Results().Kinds(); });
  grid.Grid().MoveTo(grid.Grid().RowCount() / 2);
  times.Take("flip a flag (goal 100)", [&] { grid.Flip(email); });
  grid.Grid().sSortString(QStringLiteral("Lastname"));
  times.Take("flip a flag, sorted by name", [&] { grid.Flip(email); });
  times.Take("show: gets nothing, sorted by name (goal 100)", [&] { grid.Filter(RowKind::kNothing); });
  times.Take("find a row (goal 100)", [&] { grid.FindLast(); });
  times.Take("flip a flag, sorted by name, filtered", [&] { grid.FlipFirst(); });
  times.Take("show: all, sorted by name", [&] { grid.Filter(RowKind::kAll); });
  grid.Grid().sSortString(QStringLiteral("Send_SMS"));
  times.Take("flip a flag, sorted by it", [&] { grid.FlipFirst(); });
  grid.Grid().sSortString({});
  times.Take("find a text that is nowhere (goal 100)", [&] { grid.FindNowhere("qqzx"); });
  times.Take("find a number that is nowhere (goal 100)", [&] { grid.FindNowhere("98.7654"); });
  const std::vector<qint64> some = grid.Keys(kSelected);
  const std::vector<qint64> all = grid.Keys(grid.Grid().RowCount());
  times.Take("tick 1,000 rows (goal 100)", [&] { grid.Tick(some, true); });
  times.Take("take that back", [&] { grid.Undo(); });
  times.Take("take 1,000 rows out", [&] { grid.TakeOut(some); });
  times.Take("put them back, all rows read again", [&] { grid.Undo(); });
  times.Take("tick all rows", [&] { grid.Tick(all, true); });
  times.Take("untick all rows", [&] { grid.Tick(all, false); });
}

constexpr std::array kSorted = {"Lastname",     "Address",       "Email",   "Customer",
                                "Last_Mileage", "Last_Invoiced", "Send_SMS"};

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  QApplication::setStyle(QStringLiteral("Fusion"));
  const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
  const int customers = argc > 2 ? std::atoi(argv[2]) : 100'000;
  SampleProgram program(customers);
  {
    const SqliteFile garage = OpenPlain(program.File(), program.Time());
    ExecuteSql(
        garage.Handle(),
        "UPDATE Customers SET No_Marketing = 0, Consent_Response = 0; UPDATE _Options SET Only_Send_Comms_When_Opted_In = 0");
  }
  program.Start();
  RunQuery(program);
  const SqliteFile plain = OpenPlain(program.File(), program.Time());
  SqliteStatement select(plain.Handle(), "SELECT * FROM Campaign_Results_Grid WHERE CampaignID = -3 ORDER BY RecordID");
  ResultsGrid grid(program);
  grid.Display();
  const qint64 rows = grid.Grid().RowCount();
  if (rows != customers || StepThrough(select) != rows) Fail("rows are missing");
  if (static_cast<int>(grid.Results().Rows().Columns().size()) < kShownColumns) Fail("columns are missing");

  std::vector<double> plainTimes;
  std::vector<double> shown;
  std::vector<double> memory;
  std::vector<double> scrolled;
  Times worked;
  std::vector<double> selected;
  std::array<std::vector<double>, kSorted.size()> sorted;
  for (int round = 0; round < rounds; ++round) {
    plainTimes.push_back(Milliseconds([&] { StepThrough(select); }));
    grid.Forget();
    const double before = UsedMemory();
    shown.push_back(Milliseconds([&] { grid.Display(); }));
    memory.push_back(UsedMemory() - before);
    for (int tenth = 1; tenth <= 10; ++tenth) {
      scrolled.push_back(Milliseconds([&] {
        grid.Grid().SetFirstVisibleRow(rows * tenth / 11);
        grid.Paint();
      }));
    }
    selected.push_back(Milliseconds([&] {
      grid.Grid().SelectAll();
      grid.Paint();
    }));
    for (std::size_t i = 0; i < kSorted.size(); ++i) {
      sorted[i].push_back(Milliseconds([&] {
        grid.Grid().sSortString(QLatin1String(kSorted[i]));
        grid.Paint();
      }));
    }
    grid.Grid().sSortString({});
    WorkInRows(grid, worked);
  }

  std::printf("%lld rows of %zu columns, median of %d rounds\n", rows, grid.Results().Rows().Columns().size(), rounds);
  Show("plain step + column_text", plainTimes);
  std::printf("%-44s %9.1f ms   %.2f x plain (goal 2)\n", "counters, rows, grid, first paint", Median(shown),
              Median(shown) / Median(plainTimes));
  std::printf("%-44s %9.1f MiB (goal 80)\n", "memory", Median(memory));
  for (std::size_t i = 0; i < kSorted.size(); ++i)
    Show((QByteArray("sort by ") + kSorted[i] + " (goal 100)").constData(), sorted[i]);
  Show("scroll anywhere and paint", scrolled);
  Show("select all rows and paint", selected);
  worked.Show();
}
