#include "results/letter_address.h"

#include <QRegularExpression>

namespace qbx {

namespace {

/// Whether the address holds a postcode of the United Kingdom or Ireland, or four to six successive digits, as in most
/// other countries.
bool HoldsPostcode(const QString& address) {
  static const QRegularExpression postcode(
      QStringLiteral(
          "\\b([A-Z]{1,2}[0-9][0-9A-Z]? ?[0-9][A-Z]{2}|[AC-FHKNPRTV-Y][0-9][0-9W] ?[0-9A-Z]{4}|[0-9]{4,6})\\b"),
      QRegularExpression::CaseInsensitiveOption);
  return postcode.match(address).hasMatch();
}

}  // namespace

AddressFault FaultOfAddress(const QString& address) {
  if (address.trimmed().isEmpty()) return AddressFault::kEmpty;
  return HoldsPostcode(address) ? AddressFault::kNone : AddressFault::kNoPostcode;
}

}  // namespace qbx
