// What a call is refused for: told to a person on stderr, kept for a script.

#pragma once

#include <QJsonObject>
#include <QString>
#include <span>

#include "platform/user_interface.h"

namespace qbx::ctl {

/// A code that scripts see, and what it means.
struct ErrorCode {
  Reason reason;
  const char* code;
  const char* meaning;
};

/// All of them, in the order of docs/headless.md.
[[nodiscard]] std::span<const ErrorCode> ErrorCodes();

/// A refusal on stderr, kept like `NoteRefusal` does.
/// \return kRefused
int Refuse(Reason reason, const QString& text);
int Refuse(const QString& text);

/// Keeps a refusal that was told already. A process is one call and says one error: the first text, and the first reason that is known.
void NoteRefusal(Reason reason, const QString& text);

/// `{"error": {"code", "message"}}` of this call; empty when nothing was refused.
[[nodiscard]] QJsonObject ErrorJson();

}  // namespace qbx::ctl
