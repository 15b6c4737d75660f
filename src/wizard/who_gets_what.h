// Who gets what, and who was left out why, in numbers.

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

/// Counts the rows of a campaign. When they cannot be counted (reported), there are none.
[[nodiscard]] WhoGetsWhat CountWhoGetsWhat(Statements& statements, int campaignId, const LeftOut& leftOut,
                                           bool boatEdition);

/// The numbers in words: "213 rows. Text 120, e-mail 90, letter 0, nothing 12. Left out: opted out 9, by Year 87."
[[nodiscard]] QString InWords(const WhoGetsWhat& counts);

}  // namespace qbx
