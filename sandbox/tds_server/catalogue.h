// Answers what clients ask about procedures and tables.

#pragma once

#include <optional>

#include "tds_server/statements.h"

namespace qbx::tds {

/// Writes the rows of a catalogue procedure: sp_sproc_columns, sp_stored_procedures or sp_tables.
/// \return its return code; nothing when it is another procedure
[[nodiscard]] std::optional<int> WriteCatalogue(ClientState& client, const QString& procedure,
                                                const std::vector<SentParameter>& parameters, Answer& answer);

}  // namespace qbx::tds
