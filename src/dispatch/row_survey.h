// What the rows of a campaign that are still to be sent are like, found in one pass.

#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "database/statements.h"

namespace qbx {

struct RowSurvey {
  int texts = 0;           ///< rows that ask for a text
  int emails = 0;          ///< rows that ask for an e-mail
  int longestText = 0;     ///< characters of the longest merged text, its line breaks as CR LF, before it is cut
  int textsCut = 0;        ///< rows whose text is longer than 918 characters
  int sharingMobile = 0;   ///< rows with a text whose number another one of them has, too
  int sharingAddress = 0;  ///< rows with an e-mail whose address another one of them has, too
};

/// \param rows  columns of [Campaign Results]; stepped once from where they stand
[[nodiscard]] RowSurvey SurveyRows(Recordset& rows, const QString& smsTemplate, QDate today);

/// The same for the rows of a campaign that are flagged and not processed.
/// \return nothing when they could not be read (already reported)
[[nodiscard]] std::optional<RowSurvey> SurveyCampaign(Statements& statements, int campaignId,
                                                      const QString& smsTemplate, QDate today);

/// "3 texts go to a mobile number that another row has, too.", and the like for e-mails; empty where nothing is shared.
[[nodiscard]] QString SharedMobileText(const RowSurvey& survey);
[[nodiscard]] QString SharedAddressText(const RowSurvey& survey);

}  // namespace qbx
