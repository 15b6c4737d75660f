// The merge values of a results row.

#pragma once

#include "database/recordset.h"
#include "merge/merge_fields.h"

namespace qbx {

enum class BlankContact {
  kBecomesCustomer,  ///< "Customer", as letters, texts and e-mails greet
  kStaysBlank,       ///< as the credit estimate counts
};

/// Reads the current row of a recordset over [Campaign Results]: `Title`, `Firstname`, `Lastname`, `Contact`, `Make`,
/// `Model`, `Vehicle`, `Recall_Date` ("dd/mm/yyyy", its date part only); the due time is always empty. NULL and missing
/// columns read as empty.
[[nodiscard]] MergeValues MergeRow(const Recordset& rows, BlankContact blank);

}  // namespace qbx
