// The rows of a campaign in the database.

#pragma once

#include "consent/ledger.h"
#include "database/session.h"

namespace qbx::consent {

[[nodiscard]] std::vector<StoredRow> ReadRows(Session& database, int campaign);

/// Compares the rows of a query with the expected ones.
/// \return the rows, each with its key
[[nodiscard]] std::vector<Row> CompareSelection(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked,
                                                const QString& step, Story& story);

/// Whether the rows and their flags are the expected ones.
[[nodiscard]] bool SameRows(const std::vector<StoredRow>& stored, const std::vector<Picked>& picked);
[[nodiscard]] bool SameFlags(const std::vector<StoredRow>& stored, const std::vector<Row>& rows);

/// Compares the flags with the model's.
void CompareFlags(const std::vector<StoredRow>& stored, Ledger& ledger, Story& story);

}  // namespace qbx::consent
