// Why a call is refused: shown to a person on stderr, and kept for a script.

#pragma once

#include <QJsonObject>
#include <QString>
#include <span>

#include "database/connection.h"
#include "platform/user_interface.h"

namespace qbx::ctl {

/// A code that scripts see, and what it means.
struct ErrorCode {
  Reason reason;
  const char* code;
  const char* meaning;
};

/// All codes, in the order of docs/headless.md.
[[nodiscard]] std::span<const ErrorCode> ErrorCodes();

/// Prints a refusal on stderr and keeps it as `NoteRefusal` does.
/// \return kRefused
int Refuse(Reason reason, const QString& text);
int Refuse(const QString& text);

/// Keeps a refusal that was already shown. A process handles one call and reports one error: the first text and the
/// first known reason.
void NoteRefusal(Reason reason, const QString& text);

/// Gives a refusal without a known reason the reason of a lost database when the database does not answer.
void NoteLostDatabase(Connection& connection);

/// `{"error": {"code", "message"}}` of this call; empty when nothing was refused.
[[nodiscard]] QJsonObject ErrorJson();

}  // namespace qbx::ctl
