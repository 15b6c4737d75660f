// What the database says of a campaign's rows.

#pragma once

#include <sqlite3.h>

#include "consent/ledger.h"

namespace qbx::consent {

[[nodiscard]] std::vector<StoredRow> ReadRows(sqlite3* database, int campaign);

/// Holds the rows of a query against those that it has to give, and takes over their keys.
/// \return the rows, each with its key
[[nodiscard]] std::vector<Row> CompareSelection(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked,
                                                const QString& step, Story& story);

/// Whether the rows are these, and whether their flags are.
[[nodiscard]] bool SameRows(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked);
[[nodiscard]] bool SameFlags(const std::vector<StoredRow>& stored, const std::vector<Row>& rows);

/// Holds the flags against those that the model has.
void CompareFlags(const std::vector<StoredRow>& stored, Ledger& ledger, Story& story);

}  // namespace qbx::consent
