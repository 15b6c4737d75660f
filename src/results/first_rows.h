// The first rows of a campaign, as step 2 shows them.

#pragma once

#include <optional>

#include "database/recordset.h"
#include "database/statements.h"

namespace qbx {

/// Reads and keeps the first rows, without the others. No method throws. A failure is not reported, since nobody asked for these rows: there are none then, and
/// the next call tries again.
class FirstRows {
 public:
  static constexpr int kMost = 50;

  explicit FirstRows(Statements& statements) : statements_(statements) {}

  /// Reads the first rows of a campaign, unless they are here already.
  void Read(int campaignId);
  /// A query has replaced the rows: what is here is out of date.
  void Forget() { campaignId_.reset(); }
  [[nodiscard]] const Recordset& Rows() const { return rows_; }

 private:
  Statements& statements_;
  Recordset rows_;
  std::optional<int> campaignId_;
};

}  // namespace qbx
