#include "wizard/dates_over.h"

#include <algorithm>

#include "queries/query_catalogue.h"
#include "util/date_text.h"

namespace qbx {

QString DatesOverText(int query, const QueryOptions& options, const QDate& today) {
  const auto [earlier, later] = std::minmax(options.dteDate[0], options.dteDate[1]);
  if (query != kReminderDate || !earlier.isValid() || later >= today) return {};
  return QStringLiteral("Both dates are over: this selects reminders from %1 to %2.")
      .arg(DayText(earlier), DayText(later));
}

}  // namespace qbx
