#include "util/boat_wording.h"

namespace qbx {

QString BoatWording(QString text) {
  return text.replace(QLatin1String("vehicle"), QLatin1String("boat"))
      .replace(QLatin1String("Vehicle"), QLatin1String("Boat"));
}

}  // namespace qbx
