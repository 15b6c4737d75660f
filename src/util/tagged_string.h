// Small settings stored in one text: pairs "KEY:value" separated by ",".

#pragma once

#include <QString>

namespace qbx {

/// The three text properties of a control or a grid column that can carry pairs.
struct TaggedObject {
  QString Caption;
  QString TagVariant;
  QString Tag;
};

/// Reads the value of a key: the text after "KEY:" up to the next "," or the end. A value cannot hold ",".
///
/// The key is found as a plain substring, ignoring case, and the first occurrence counts. So "MSG" is also found at the
/// end of "AMSG:": the keys of one text should not end alike.
/// \param key  with or without its ":"
/// \return the value, empty when the key is missing
[[nodiscard]] QString strGetTag(const QString& tagged, const QString& key);

/// The text with the value of a key replaced, or with the pair added at its end. The key is written in the case given
/// here.
[[nodiscard]] QString strSetTag(const QString& tagged, const QString& key, const QString& value);

/// Sets a pair in the object's Caption if `useCaption`, else in its TagVariant if `useTagVariant`, else in its Tag.
/// Nothing calls it yet.
void strSetTag(TaggedObject& object, const QString& key, const QString& value, bool useCaption, bool useTagVariant);

}  // namespace qbx
