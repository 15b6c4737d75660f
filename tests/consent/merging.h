// What a message has to say and where it has to go, worked out plainly.

#pragma once

#include "consent/selection.h"

namespace qbx::consent {

/// The values of the merge fields of a row.
struct FieldValues {
  QString title, firstname, lastname, contact, make, model, regno, duedate;
};
[[nodiscard]] FieldValues ValuesOf(const Picked& picked);

/// Every field of the template replaced, one after the other.
[[nodiscard]] QString Merged(const QString& text, const FieldValues& values, const QDate& today);
/// Whether a field was left standing.
[[nodiscard]] bool HoldsField(const QString& text);

/// The number that a text goes to; nothing when what was typed is none.
[[nodiscard]] std::optional<QString> NumberOf(const QString& mobile);
/// Characters below which nothing is sent to what was typed.
inline constexpr int kShortestMobileToSend = 9;
/// The addresses that an e-mail goes to; none when what was typed cannot be sent to.
[[nodiscard]] QStringList AddressesOf(const QString& email);

}  // namespace qbx::consent
