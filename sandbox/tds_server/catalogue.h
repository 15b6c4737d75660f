// What clients ask a server about its procedures and tables.

#pragma once

#include <optional>

#include "tds_server/statements.h"

namespace qbx::tds {

/// Writes the rows of one of the catalogue's procedures: sp_sproc_columns, sp_stored_procedures, sp_tables.
/// \return its return code; nothing when it is none of them
[[nodiscard]] std::optional<int> WriteCatalogue(ClientState& client, const QString& procedure,
                                                const std::vector<SentParameter>& parameters, Answer& answer);

}  // namespace qbx::tds
