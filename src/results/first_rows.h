// The first rows of a campaign, as step 2 shows them.

#pragma once

#include <optional>

#include "database/recordset.h"
#include "database/statements.h"

namespace qbx {

/// Reads and keeps the first rows, without the others. No method throws: a failure is reported, and there are no rows then.
class FirstRows {
 public:
  static constexpr int kMost = 50;

  explicit FirstRows(Statements& statements) : statements_(statements) {}

  /// Reads the first rows of a campaign, unless they are here already.
  void Read(int campaignId);
  /// A query has replaced the rows: what is here is out of date.
  void Forget() { campaignId_.reset(); }
  [[nodiscard]] Recordset& Rows() { return rows_; }

 private:
  Statements& statements_;
  Recordset rows_;
  std::optional<int> campaignId_;
};

}  // namespace qbx
