// What a zip file says of the files in it.

#pragma once

#include <QIODevice>

namespace qbx {

/// \param zip  open for reading; without a comment
/// \return how long the file of this name is once it is unpacked, 0 when there is none
[[nodiscard]] qint64 UnpackedSize(QIODevice& zip, const QByteArray& name);

}  // namespace qbx
