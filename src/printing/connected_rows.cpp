#include "printing/connected_rows.h"

namespace qbx {

std::unique_ptr<ReportRows> ConnectedRows::Read(const QString& statement) {
  std::unique_ptr<ReportRows> rows;
  connection_.RunLong([&] { rows = SpoolRows(connection_.Driver().Execute(statement)); }, pump_, {});
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
