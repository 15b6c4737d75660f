#include "letters/letter_rows.h"

#include <QRegularExpression>

#include "dispatch/result_rows.h"

namespace qbx {

namespace {

QString Text(const Recordset& row, const char* field) {
  return row.Field(QString::fromLatin1(field)).ToText();
}

/// A postcode of the United Kingdom or of Ireland, or at least four digits in a row as most other countries have them.
bool HoldsPostcode(const QString& address) {
  static const QRegularExpression postcode(
      QStringLiteral(
          "\\b([A-Z]{1,2}[0-9][0-9A-Z]? ?[0-9][A-Z]{2}|[AC-FHKNPRTV-Y][0-9][0-9W] ?[0-9A-Z]{4}|[0-9]{4,6})\\b"),
      QRegularExpression::CaseInsensitiveOption);
  return postcode.match(address).hasMatch();
}

}  // namespace

QString SelectLetterRows(int campaignId) {
  return QLatin1String(kSelectResultRows) +
         QStringLiteral("WHERE Send_Letter = 1 AND CampaignID = %1 AND Processed = 0 ORDER BY Customer")
             .arg(campaignId);
}

QString NameLine(const Recordset& row) {
  const QString first = (Text(row, "Title") + u' ' + Text(row, "Firstname")).trimmed();
  return (first + u' ' + Text(row, "Lastname")).trimmed();
}

QString AddressProblem(const QString& address) {
  if (address.trimmed().isEmpty()) return QStringLiteral("There is no address.");
  return HoldsPostcode(address) ? QString() : QStringLiteral("The address has no postcode.");
}

}  // namespace qbx
