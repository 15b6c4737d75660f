// Reports on the shared connection.

#pragma once

#include <functional>

#include "database/connection.h"
#include "reports/report.h"

namespace qbx {

/// Reads the rows of reports over the shared connection, on the database thread while events are let through.
class ConnectedRows : public ReportDatabase {
 public:
  /// \param pump  lets events run
  ConnectedRows(Connection& connection, std::function<void()> pump) : connection_(connection), pump_(std::move(pump)) {}

  [[nodiscard]] std::unique_ptr<ReportRows> Read(const QString& statement) override;
  /// Whether the database answers.
  [[nodiscard]] bool TestConnectivity();

 private:
  Connection& connection_;
  std::function<void()> pump_;
};

}  // namespace qbx
