// The first rows of a campaign, shown on step 2.

#pragma once

#include <optional>

#include "database/recordset.h"
#include "database/statements.h"

namespace qbx {

/// Reads and keeps only the first rows. No method throws. A failure is not reported, because the user did not ask for
/// these rows; there are none then, and the next call tries again.
class FirstRows {
 public:
  static constexpr int kMost = 50;

  explicit FirstRows(Statements& statements) : statements_(statements) {}

  /// Reads the first rows of a campaign unless they are kept already.
  void Read(int campaignId);
  /// Drops the rows, which a query has replaced.
  void Forget() { campaignId_.reset(); }
  [[nodiscard]] const Recordset& Rows() const { return rows_; }

 private:
  Statements& statements_;
  Recordset rows_;
  std::optional<int> campaignId_;
};

}  // namespace qbx
