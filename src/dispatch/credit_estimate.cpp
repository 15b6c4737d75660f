#include "dispatch/credit_estimate.h"

#include <algorithm>

#include "dispatch/result_rows.h"
#include "dispatch/sms_credits.h"
#include "merge/compiled_template.h"
#include "results/merge_row.h"

namespace qbx {

int CreditEstimate::EstimateSMSCredits(int campaignId, const QString& smsTemplate) {
  const QDate today = clock_.Today();
  if (kept_ && kept_->campaignId == campaignId && kept_->smsTemplate == smsTemplate && kept_->day == today) {
    return kept_->credits;
  }
  kept_.reset();
  const std::optional<int> credits = Add(campaignId, smsTemplate);
  if (credits) kept_ = Kept{campaignId, smsTemplate, today, *credits};
  return credits.value_or(0);
}

std::optional<int> CreditEstimate::Add(int campaignId, const QString& smsTemplate) {
  Recordset rows;
  if (statements_.dbOpenRec(rows, SelectEstimateRows(campaignId), CursorType::kForwardOnly, LockType::kReadOnly,
                            kOptionUnspecified, CursorLocation::kServer)) {
    return std::nullopt;
  }
  CompiledTemplate compiled(smsTemplate);
  const QDate today = clock_.Today();
  QString text;
  int credits = 0;
  for (; !rows.Eof(); rows.MoveNext()) {
    compiled.Merge(MergeRow(rows, BlankContact::kStaysBlank), today, text);
    credits += SMSCreditsFor(std::min(static_cast<int>(text.size()), kMaxSmsLength), 1);
  }
  return credits;
}

}  // namespace qbx
