#include "printing/connected_rows.h"

#include "diagnostics/wait_box.h"

namespace qbx {

std::unique_ptr<ReportRows> ConnectedRows::Read(const QString& statement) {
  std::unique_ptr<ReportRows> rows;
  WaitBox box(diagnostics_, QStringLiteral("Reading the report"));
  bool cancelled = false;
  try {
    connection_.RunLong([&] { rows = SpoolRows(connection_.Driver().Execute(statement)); },
                        [&] { cancelled = !box.GoOn(); }, [&] { return cancelled; });
  } catch (const DatabaseError&) {
    if (cancelled) throw ReportCancelled{};
    throw;
  }
  if (cancelled) throw ReportCancelled{};
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
