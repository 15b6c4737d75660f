// Rewrites a client's statement for the engine: variables become literals, and so do the few functions that return
// something about the server.

#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "database/embedded/translator.h"
#include "database/value.h"

namespace qbx::tds {

/// The value of a variable ("@...") or of a value of the server ("@@..."); nothing when there is none.
using ValueOf = std::function<std::optional<Value>(const QString& name)>;

/// Cuts a batch into its statements: at ";", and after each SET of an option, which clients write without ";".
[[nodiscard]] std::vector<Tokens> CutBatch(const std::vector<Token>& tokens);

/// Whether it sets an option of the session, which has no effect here.
[[nodiscard]] bool SetsOption(Tokens statement);

/// \throws DatabaseError (137) for a variable without a value
[[nodiscard]] QString Rewritten(Tokens statement, const ValueOf& valueOf);

}  // namespace qbx::tds
