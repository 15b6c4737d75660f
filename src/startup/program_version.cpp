#include "startup/program_version.h"

namespace qbx {

QString ProgramVersion() {
  return QStringLiteral(QBX_VERSION);
}

}  // namespace qbx
