// The merge values of a results row.

#pragma once

#include "database/recordset.h"
#include "merge/merge_fields.h"

namespace qbx {

enum class BlankContact {
  kBecomesCustomer,  ///< "Customer", used by letters, texts and e-mails
  kStaysBlank,       ///< used by the credit estimate
};

/// Reads the current row of a recordset over [Campaign Results]: `Title`, `Firstname`, `Lastname`, `Contact`, `Make`,
/// `Model`, `Vehicle`, `Recall_Date` (as "dd/mm/yyyy", without its time). The due time is always empty. NULL and
/// missing columns are empty.
[[nodiscard]] MergeValues MergeRow(const Recordset& rows, BlankContact blank);

}  // namespace qbx
