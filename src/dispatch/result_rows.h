// The statements that read a campaign's rows for sending.

#pragma once

#include <QString>

#include "database/statements.h"

namespace qbx {

/// SELECT of the whole row of [Campaign Results] up to FROM, its table and a blank, used by every run that reads rows.
inline constexpr char kSelectResultRows[] =
    "SELECT RecordID, Customer, Title, Firstname, Lastname, Address, Telephone, Contact, Mobile, Email, Cust_Type, Enquiry_Source, Last_Invoiced, Vehicle, Make, Model, Year, Last_Mileage, Recall_Date, Marketing, Send_SMS, Send_Email, Send_Letter, UserID, Created_Date, Processed, Processed_Date FROM [Campaign Results] ";

/// The rows of a mailshot, in sending order.
[[nodiscard]] inline QString SelectMailshotRows(int campaignId) {
  return QLatin1String(kSelectResultRows) + QLatin1String("WHERE (Send_SMS = 1 OR Send_Email = 1) AND CampaignID = ") +
         QString::number(campaignId) + QLatin1String(" AND Processed = 0 ORDER BY Customer");
}

/// One row.
[[nodiscard]] inline QString SelectResultRow(qint64 recordId) {
  return QLatin1String(kSelectResultRows) + QLatin1String("WHERE RecordID = ") + QString::number(recordId);
}

/// The rows whose texts count for the credit estimate.
[[nodiscard]] inline QString SelectEstimateRows(int campaignId) {
  return QLatin1String(kSelectResultRows) +
         QLatin1String("WHERE IsNull(Send_SMS, 0) = 1 AND IsNull(Mobile, '') <> '' AND CampaignID = ") +
         QString::number(campaignId) + QLatin1String(" ORDER BY Customer");
}

/// Opens rows that are read forward once.
/// \return true when it failed (already reported), like `dbOpenRec`
[[nodiscard]] inline bool OpenForward(Statements& statements, Recordset& rows, const QString& select) {
  return statements.dbOpenRec(rows, select, CursorType::kForwardOnly, LockType::kReadOnly, kOptionUnspecified,
                              CursorLocation::kServer);
}

}  // namespace qbx
