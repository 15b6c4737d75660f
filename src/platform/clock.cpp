#include "platform/clock.h"

#include <QtGlobal>

namespace qbx {

void SettleTimeZone() {
  if (!qEnvironmentVariableIsSet("TZ")) qputenv("TZ", ":/etc/localtime");
}

}  // namespace qbx
