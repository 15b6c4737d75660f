// Reading reports over the shared connection.

#pragma once

#include "database/connection.h"
#include "diagnostics/diagnostics.h"
#include "reports/report.h"

namespace qbx {

/// Thrown when the user cancels the reading of rows.
struct ReportCancelled {};

/// Reads the rows of reports over the shared connection, on the database thread, while events are pumped.
class ConnectedRows : public ReportDatabase {
 public:
  ConnectedRows(Connection& connection, Diagnostics diagnostics) : connection_(connection), diagnostics_(diagnostics) {}

  /// Longer reading shows the status box with its Cancel button.
  /// \throws ReportCancelled as well
  [[nodiscard]] std::unique_ptr<ReportRows> Read(const QString& statement) override;
  /// Whether the database answers.
  [[nodiscard]] bool TestConnectivity();

 private:
  Connection& connection_;
  Diagnostics diagnostics_;
};

}  // namespace qbx
