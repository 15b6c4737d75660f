#include "exporting/zip_directory.h"

#include <QtEndian>

namespace qbx {

namespace {

// Sizes and offsets of the format. The directory is near the end of the file; an end record of fixed size gives its
// place.
constexpr qint64 kEndBytes = 22;
constexpr qint64 kEntryBytes = 46;  // without name, extra field and comment

template <typename Number>
Number At(const QByteArray& bytes, qsizetype place) {
  return qFromLittleEndian<Number>(bytes.constData() + place);
}

}  // namespace

qint64 UnpackedSize(QIODevice& zip, const QByteArray& name) {
  if (!zip.seek(zip.size() - kEndBytes)) return 0;
  const QByteArray end = zip.read(kEndBytes);
  if (end.size() != kEndBytes || !end.startsWith("PK\5\6") || !zip.seek(At<quint32>(end, 16))) return 0;
  for (int left = At<quint16>(end, 10); left > 0; --left) {
    const QByteArray entry = zip.read(kEntryBytes);
    if (entry.size() != kEntryBytes || !entry.startsWith("PK\1\2")) return 0;
    if (zip.read(At<quint16>(entry, 28)) == name) return At<quint32>(entry, 24);
    zip.skip(qint64{At<quint16>(entry, 30)} + At<quint16>(entry, 32));
  }
  return 0;
}

}  // namespace qbx
