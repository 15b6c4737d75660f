// The directory of a zip file.

#pragma once

#include <QIODevice>

namespace qbx {

/// \param zip  open for reading; without a comment
/// \return the unpacked size of the file with this name, 0 when there is none
[[nodiscard]] qint64 UnpackedSize(QIODevice& zip, const QByteArray& name);

}  // namespace qbx
