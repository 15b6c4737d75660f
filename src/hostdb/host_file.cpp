#include "hostdb/host_file.h"

#include "database/embedded/functions.h"

namespace qbx {

SqliteFile OpenHostFile(const QString& path) {
  static const SystemClock kClock;
  SqliteFile file(path, SqliteMode::kCreate);
  RegisterFunctions(file.Handle(), kClock);
  return file;
}

}  // namespace qbx
