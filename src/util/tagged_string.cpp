#include "util/tagged_string.h"

namespace qbx {

namespace {

QString WithColon(const QString& key) {
  return key.endsWith(u':') ? key : key + u':';
}

/// End of the value of the pair that begins at `position`.
qsizetype ValueEnd(const QString& tagged, qsizetype position) {
  const qsizetype comma = tagged.indexOf(u',', position);
  return comma < 0 ? tagged.size() : comma;
}

}  // namespace

QString strGetTag(const QString& tagged, const QString& key) {
  const QString marker = WithColon(key);
  const qsizetype position = tagged.indexOf(marker, 0, Qt::CaseInsensitive);
  if (position < 0) return {};
  const qsizetype start = position + marker.size();
  return tagged.mid(start, ValueEnd(tagged, position) - start);
}

QString strSetTag(const QString& tagged, const QString& key, const QString& value) {
  const QString marker = WithColon(key);
  const QString pair = marker + value;
  const qsizetype position = tagged.indexOf(marker, 0, Qt::CaseInsensitive);
  if (position >= 0) return tagged.left(position) + pair + tagged.mid(ValueEnd(tagged, position));
  return tagged.isEmpty() ? pair : tagged + u',' + pair;
}

void strSetTag(TaggedObject& object, const QString& key, const QString& value, bool useCaption, bool useTagVariant) {
  QString& property = useCaption ? object.Caption : useTagVariant ? object.TagVariant : object.Tag;
  property = strSetTag(property, key, value);
}

}  // namespace qbx
