#include "results/counters.h"

namespace qbx {

namespace {

QString SentText(int sent, int all) {
  return QStringLiteral("Sent: %1 / %2").arg(sent).arg(all);
}

}  // namespace

QString InAllText(const CreditNeed& credits) {
  return credits.toGo == credits.inAll ? QString() : QStringLiteral(" (%1 in all)").arg(credits.inAll);
}

CounterLabels MakeCounterLabels(const CounterValues& values, const CreditNeed& credits) {
  return {.lblLetters = QStringLiteral("Letters to Generate: %1").arg(values.letters),
          .lblSMS0 = QStringLiteral("SMS's to Send: %1").arg(values.sms),
          .lblSMS1 = SentText(values.smsSent, values.sms),
          .lblSMS2 = QStringLiteral("Credit Cost: %1").arg(credits.toGo) + InAllText(credits),
          .lblEmail0 = QStringLiteral("Email's to Send: %1").arg(values.emails),
          .lblEmail1 = SentText(values.emailsSent, values.emails)};
}

Counters::Counters(Statements& statements) : statements_(statements) {}

void Counters::UpdateCounters(int campaignId) {
  Recordset row;
  try {
    const QString sql = QStringLiteral("proc_selp_Results_Counters (%1)").arg(campaignId);
    if (statements_.dbOpenRec(row, sql, CursorType::kForwardOnly, LockType::kReadOnly, kOptionUnspecified,
                              CursorLocation::kServer) ||
        row.Eof()) {
      return;
    }
    const auto counter = [&row](const char* column) {
      return static_cast<int>(row.Field(QString::fromLatin1(column)).ToInt());
    };
    values_ = {.letters = counter("ByLetter"),
               .sms = counter("BySMS"),
               .smsSent = counter("BySMS_Processed"),
               .emails = counter("ByEmail"),
               .emailsSent = counter("ByEmail_Processed")};
  } catch (const DatabaseError& error) {
    statements_.ShowFailure(0, QStringLiteral("UpdateCounters"), error);
  }
}

}  // namespace qbx
