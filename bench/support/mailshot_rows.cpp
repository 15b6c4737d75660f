#include "mailshot_rows.h"

#include "sqlite/sqlite_file.h"

namespace qbx::bench {

MailshotTemplates SampleTemplates() {
  const QString call = QStringLiteral(
      "It is against the law to drive a vehicle without a valid certificate and it may affect your insurance. Our "
      "technicians will check the tyres, brakes, lights, steering and suspension while you wait. ");
  return {.sms = QStringLiteral(
              "Dear {contact}, your {make} {model} {regno} is due for its MOT on {duedate}. Please call us to book."),
          .emailSubject = QStringLiteral("{title} {lastname}: your {make} is due"),
          .emailBody = QStringLiteral("Dear {contact},\r\n\r\nOur records show that your {make} {model}, registration "
                                      "{regno}, is due for its annual test on {duedate}, {title} {lastname}.\r\n\r\n") +
                       call.repeated(4) + QStringLiteral("\r\n\r\nYours sincerely,\r\nHartley Motors\r\n")};
}

void AddMailshotRows(sqlite3* database, int campaignId, Channel channel, int rows) {
  const QByteArray sql =
      "DELETE FROM [Campaign Results]; WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < " +
      QByteArray::number(rows) +
      ") INSERT INTO [Campaign Results] (CampaignID, Customer, Title, Firstname, Lastname, Contact, Address, Mobile, "
      "Email, Vehicle, Make, Model, Recall_Date, Marketing, Send_SMS, Send_Email, UserID, Created_Date) SELECT " +
      QByteArray::number(campaignId) +
      ", 1000 + i, 'Mrs', 'Mary', 'Hartley' || i, 'Mrs Hartley' || i, i || ' Mill Lane', printf('07700%06d', i), "
      "'customer' || i || '@example.com', printf('AB%05d', i), 'FORD', 'FOCUS', '2026-07-01', 1, " +
      (channel == Channel::kSms ? "1, 0" : "0, 1") +
      ", 'Bench', '2026-06-01' FROM n; DELETE FROM Customers; INSERT INTO Customers (Customer, Consent_Response, Can_Send_SMS, Can_Send_Email) SELECT Customer, 1, 1, 1 FROM "
      "[Campaign Results]; PRAGMA wal_checkpoint(TRUNCATE)";
  ExecuteSql(database, sql.constData());
}

void ResetMailshot(sqlite3* database) {
  ExecuteSql(
      database,
      "BEGIN; DELETE FROM Send_Journal; DELETE FROM Emails; DELETE FROM SMS; UPDATE [Campaign Results] SET Processed "
      "= 0, Processed_Date = NULL; COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace qbx::bench
