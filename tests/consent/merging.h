// The expected text and address of a message, computed in a simple way.

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
/// Whether a text still has a merge field.
[[nodiscard]] bool HoldsField(const QString& text);

/// The number for a text; nothing when the typed text is no number.
[[nodiscard]] std::optional<QString> NumberOf(const QString& mobile);
/// A typed number with fewer characters gets no text.
inline constexpr int kShortestMobileToSend = 9;
/// The addresses for an e-mail; none when the typed text has no usable address.
[[nodiscard]] QStringList AddressesOf(const QString& email);

}  // namespace qbx::consent
