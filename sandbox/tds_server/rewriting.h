// Making a client's statement into one that the engine takes: variables become literals, and so do the few functions
// that tell something about the server.

#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "database/embedded/translator.h"
#include "database/value.h"

namespace qbx::tds {

/// The value of a variable (with "@") or of what the server tells of itself (with "@@"); nothing where there is none.
using ValueOf = std::function<std::optional<Value>(const QString& name)>;

/// Cuts a batch into its statements: at ";", and behind each SET of an option, which clients write without one.
[[nodiscard]] std::vector<Tokens> CutBatch(const std::vector<Token>& tokens);

/// Whether it sets an option of the session, which means nothing here.
[[nodiscard]] bool SetsOption(Tokens statement);

/// \throws DatabaseError (137) for a variable without a value
[[nodiscard]] QString Rewritten(Tokens statement, const ValueOf& valueOf);

}  // namespace qbx::tds
