#include "queries/query_sentence.h"

#include <algorithm>
#include <cmath>

#include "queries/date_check.h"
#include "queries/starting_queries.h"
#include "util/boat_wording.h"
#include "util/date_text.h"
#include "util/text.h"
#include "util/typed_number.h"

namespace qbx {

namespace {

/// The places as the host takes the numbers: without fraction, counted from 1.
QString Places(const QueryOptions& options) {
  const auto whole = [](double number) { return QString::number(std::trunc(number), 'f', 0); };
  const double count = std::trunc(TypedNumber(options.txtCriteria));
  const double first = std::max(1.0, std::trunc(TypedNumber(options.txtCriteriaStart)));
  if (count == 1) return QStringLiteral("Customer %1").arg(whole(first));
  return QStringLiteral("Customers %1 to %2").arg(whole(first), whole(first + count - 1));
}

QString Makes(const QueryOptions& options) {
  QStringList makes;
  for (const QString& piece : options.txtMakes.split(u',')) {
    if (const QString make = TrimBlanks(piece); !make.isEmpty()) makes += make;
  }
  return makes.join(QLatin1String(" or "));
}

/// How the numbers of a ranking were read, when the boxes hold more than numbers.
QString NumbersRead(const QueryOptions& options) {
  QString read;
  if (!IsTypedNumber(options.txtCriteria))
    read += QStringLiteral(" Records to return: read as %1.").arg(TypedNumberText(options.txtCriteria));
  if (!IsTypedNumber(options.txtCriteriaStart))
    read += QStringLiteral(" Start at record: read as %1.").arg(TypedNumberText(options.txtCriteriaStart));
  return read;
}

/// Why the query cannot run with these options, in the words of the step; empty when it can.
QString Missing(const StartingQuery& query, QueryOptions& options, const QDate& today) {
  if (query.dates != DateRule::kNone && !CheckQueryDates(query.number, options, today))
    return QStringLiteral("Needs two dates, both from 1990 on.");
  if (query.panels.ranking && TypedNumber(options.txtCriteria) < 1)
    return QStringLiteral("Needs a number of records to return.");
  if (query.panels.ranking && TypedNumber(options.txtCriteriaStart) <= 0)
    return QStringLiteral("Needs the record to start at.");
  if (query.panels.makes && Makes(options).isEmpty())
    return QStringLiteral("Needs one or more %1.").arg(QString::fromLatin1(query.panels.makes->caption).toLower());
  if (CheckReminder(query, options)) return QStringLiteral("Needs a reminder.");
  return {};
}

}  // namespace

QString QuerySelects(int query, const QueryOptions& options, const QStringList& reminders, bool boatEdition,
                     const QDate& today) {
  const StartingQuery* const row = FindStartingQuery(query);
  if (row == nullptr || row->IsGroup() || (row->boatOnly && !boatEdition)) return {};
  QueryOptions filled = options;
  if (QString missing = Missing(*row, filled, today); !missing.isEmpty()) return missing;
  QString text = QString::fromLatin1(row->selects);
  if (boatEdition) text = BoatWording(text);
  if (row->panels.ranking) text += NumbersRead(filled);
  const auto [earlier, later] = std::minmax(filled.dteDate[0], filled.dteDate[1]);
  // What the user wrote is inserted last, so that it is not searched for placeholders.
  return text.replace(QLatin1String("{earlier}"), DayText(earlier))
      .replace(QLatin1String("{later}"), DayText(later))
      .replace(QLatin1String("{places}"), row->panels.ranking ? Places(filled) : QString())
      .replace(QLatin1String("{reminder}"), reminders.value(filled.cmbReminder))
      .replace(QLatin1String("{makes}"), Makes(filled));
}

}  // namespace qbx
