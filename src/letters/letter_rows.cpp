#include "letters/letter_rows.h"

#include <QTextDocument>

#include "database/procedure.h"
#include "dispatch/result_rows.h"
#include "results/letter_address.h"
#include "rtf/rtf_reader.h"

namespace qbx {

namespace {

QString Text(const Recordset& row, const char* field) {
  return row.Field(QString::fromLatin1(field)).ToText();
}

}  // namespace

QString SelectLetterRows(int campaignId, bool again) {
  const QString due =
      again ? QStringLiteral("(Processed = 0 OR (Send_SMS = 0 AND Send_Email = 0))") : QStringLiteral("Processed = 0");
  return QLatin1String(kSelectResultRows) +
         QStringLiteral("WHERE Send_Letter = 1 AND CampaignID = %1 AND %2 ORDER BY Customer").arg(campaignId).arg(due);
}

QString NameLine(const Recordset& row) {
  const QString first = (Text(row, "Title") + u' ' + Text(row, "Firstname")).trimmed();
  return (first + u' ' + Text(row, "Lastname")).trimmed();
}

LetterRow LetterOf(const Recordset& row, const QString& merged) {
  return {.letter = merged,
          .nameAddress = NameLine(row) + u'\r' + Text(row, "Address"),
          .contact = Text(row, "Contact"),
          .telephone = Text(row, "Telephone"),
          .mobile = Text(row, "Mobile"),
          .vehicle = Text(row, "Vehicle")};
}

QString AddressProblem(const QString& address) {
  switch (FaultOfAddress(address)) {
    case AddressFault::kEmpty:
      return QStringLiteral("There is no address.");
    case AddressFault::kNoPostcode:
      return QStringLiteral("The address has no postcode.");
    case AddressFault::kNone:
      break;
  }
  return {};
}

QString LetterText(const QString& letter) {
  QTextDocument document;
  static_cast<void>(ReadRtf(letter, document));
  return document.toPlainText();
}

LetterCounts ReadLetterCounts(Connection& connection, int campaignId) {
  const Recordset counts = Procedure(connection, "proc_selp_Letter_Counts").Open({{"@CampaignID", campaignId}});
  if (counts.Eof()) return {};
  return {.wentOut = counts.Field(QStringLiteral("Made")).ToInt(),
          .missed = counts.Field(QStringLiteral("By_Mailshot")).ToInt()};
}

QString LettersOutLine(const LetterCounts& counts, int letters) {
  return counts.wentOut == 0 ? QString() : QStringLiteral("Went out: %1 / %2").arg(counts.wentOut).arg(letters);
}

QString LettersMissedLine(const LetterCounts& counts, const CounterValues& rows) {
  const qint64 missed = counts.missed;
  const bool bothToCome = rows.letters > counts.wentOut && rows.Sent() < rows.sms + rows.emails;
  if (missed == 0 && bothToCome)
    return QStringLiteral("Make the letters first: who is sent a text or an e-mail gets none afterwards.");
  if (missed == 0) return {};
  if (missed == 1)
    return QStringLiteral("1 customer with a letter was processed by the mailshot and gets none; make letters first.");
  return QStringLiteral("%1 customers with a letter were processed by the mailshot and get none; make letters first.")
      .arg(missed);
}

}  // namespace qbx
