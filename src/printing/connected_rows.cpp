#include "printing/connected_rows.h"

namespace qbx {

namespace {

/// A third of a second; shorter work flickers.
constexpr int kPumpsBeforeStatus = 33;

}  // namespace

std::unique_ptr<ReportRows> ConnectedRows::Read(const QString& statement) {
  std::unique_ptr<ReportRows> rows;
  int pumps = 0;
  bool cancelled = false;
  const auto pump = [&] {
    if (++pumps == kPumpsBeforeStatus) diagnostics_.status.ShowStatus(QStringLiteral("Reading the report"), true);
    diagnostics_.ui.PumpEvents();
    // Before the box is shown, its Cancel is that of another box.
    cancelled = cancelled || (pumps >= kPumpsBeforeStatus && diagnostics_.status.Cancelled());
  };
  const auto tidyUp = [&] {
    if (pumps >= kPumpsBeforeStatus) diagnostics_.status.Close();
    if (cancelled) throw ReportCancelled{};
  };
  try {
    connection_.RunLong([&] { rows = SpoolRows(connection_.Driver().Execute(statement)); }, pump,
                        [&] { return cancelled; });
  } catch (const DatabaseError&) {
    tidyUp();
    throw;
  }
  tidyUp();
  return rows;
}

bool ConnectedRows::TestConnectivity() {
  try {
    if (connection_.IsOpen()) connection_.ReopenIfLost();
    return connection_.IsOpen() && connection_.Driver().IsAlive();
  } catch (const DatabaseError&) {
    return false;
  }
}

}  // namespace qbx
