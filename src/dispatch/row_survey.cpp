#include "dispatch/row_survey.h"

#include <QHash>
#include <algorithm>

#include "dispatch/result_rows.h"
#include "dispatch/sms_credits.h"
#include "dispatch/sms_text.h"
#include "merge/compiled_template.h"
#include "results/merge_row.h"
#include "results/mobile_number.h"
#include "util/text.h"

namespace qbx {

namespace {

/// Counts how often each value occurs.
class Tally {
 public:
  void Add(const QString& value) {
    if (!value.isEmpty()) ++times_[value];
  }
  [[nodiscard]] int Shared() const {
    int shared = 0;
    for (const int times : times_)
      shared += times > 1 ? times : 0;
    return shared;
  }

 private:
  QHash<QString, int> times_;
};

}  // namespace

RowSurvey SurveyRows(Recordset& rows, const QString& smsTemplate, QDate today) {
  RowSurvey survey;
  CompiledTemplate sms(smsTemplate);
  Tally phones;
  Tally addresses;
  QString text;
  for (; !rows.Eof(); rows.MoveNext()) {
    if (rows.Field(QStringLiteral("Send_SMS")).ToBool()) {
      ++survey.texts;
      sms.Merge(MergeRow(rows, BlankContact::kBecomesCustomer), today, text);
      const int length = SmsLength(text);
      survey.longestText = std::max(survey.longestText, length);
      survey.textsCut += length > kMaxSmsLength ? 1 : 0;
      phones.Add(PhoneOf(rows.Field(QStringLiteral("Mobile")).ToText()));
    }
    if (rows.Field(QStringLiteral("Send_Email")).ToBool()) {
      ++survey.emails;
      addresses.Add(TrimBlanks(rows.Field(QStringLiteral("Email")).ToText()).toLower());
    }
  }
  survey.sharingMobile = phones.Shared();
  survey.sharingAddress = addresses.Shared();
  return survey;
}

std::optional<RowSurvey> SurveyCampaign(Statements& statements, int campaignId, const QString& smsTemplate,
                                        QDate today) {
  Recordset rows;
  if (OpenForward(statements, rows, SelectMailshotRows(campaignId))) return std::nullopt;
  return SurveyRows(rows, smsTemplate, today);
}

QString SharedMobileText(const RowSurvey& survey) {
  if (survey.sharingMobile == 0) return {};
  return QStringLiteral("%1 texts go to a mobile number that another row has, too.").arg(survey.sharingMobile);
}

QString SharedAddressText(const RowSurvey& survey) {
  if (survey.sharingAddress == 0) return {};
  return QStringLiteral("%1 e-mails go to an address that another row has, too.").arg(survey.sharingAddress);
}

}  // namespace qbx
