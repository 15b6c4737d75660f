// Counts of who gets what, and of who was left out and why.

#pragma once

#include <QString>
#include <vector>

#include "database/statements.h"
#include "queries/left_out.h"

namespace qbx {

struct WhoGetsWhat {
  qint64 rows = 0;
  std::vector<CountedRows> gets = {};     ///< a row can get several things
  std::vector<CountedRows> leftOut = {};  ///< by the query; empty until one ran
};

/// Counts the rows of a campaign. All counts are empty when that fails (reported).
[[nodiscard]] WhoGetsWhat CountWhoGetsWhat(Statements& statements, int campaignId, const LeftOut& leftOut,
                                           bool boatEdition);

/// The numbers in words: "213 rows. Text 120, e-mail 90, letter 0, nothing 12. Left out: opted out 9, by Year 87."
[[nodiscard]] QString InWords(const WhoGetsWhat& counts);

}  // namespace qbx
