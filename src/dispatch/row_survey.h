// Facts about a campaign's rows that are still to be sent, found in one pass.

#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "database/statements.h"

namespace qbx {

struct RowSurvey {
  int texts = 0;           ///< rows that ask for a text
  int emails = 0;          ///< rows that ask for an e-mail
  int longestText = 0;     ///< characters of the longest merged text with line breaks as CR LF, before it is cut
  int textsCut = 0;        ///< rows whose text is longer than 918 characters
  int sharingMobile = 0;   ///< rows with a text whose number another such row also has
  int sharingAddress = 0;  ///< rows with an e-mail whose address another such row also has
};

/// \param rows  with the columns of [Campaign Results]; read once from the current row
[[nodiscard]] RowSurvey SurveyRows(Recordset& rows, const QString& smsTemplate, QDate today);

/// Surveys the rows of a campaign that are flagged and not processed.
/// \return nothing when they could not be read (already reported)
[[nodiscard]] std::optional<RowSurvey> SurveyCampaign(Statements& statements, int campaignId,
                                                      const QString& smsTemplate, QDate today);

/// A sentence such as "3 texts go to a mobile number that another row has, too."; empty when no number is shared.
[[nodiscard]] QString SharedMobileText(const RowSurvey& survey);
[[nodiscard]] QString SharedAddressText(const RowSurvey& survey);

}  // namespace qbx
