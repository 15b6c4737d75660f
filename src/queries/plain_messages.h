// The two kinds of message boxes with one button that checks show.

#pragma once

#include <QString>

#include "platform/user_interface.h"

namespace qbx {

/// A refusal or warning: exclamation icon.
[[nodiscard]] inline Message WarningMessage(const QString& text) {
  return {.text = text, .icon = MessageIcon::kExclamation, .defaultAnswer = MessageAnswer::kOk};
}

/// A hint: information icon.
[[nodiscard]] inline Message InformationMessage(const QString& text, const QString& title = {}) {
  return {.text = text, .icon = MessageIcon::kInformation, .title = title, .defaultAnswer = MessageAnswer::kOk};
}

}  // namespace qbx
