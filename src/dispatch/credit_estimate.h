// How many credits a campaign's texts are going to cost.

#pragma once

#include <QString>
#include <optional>

#include "database/statements.h"
#include "platform/clock.h"

namespace qbx {

/// Merges the text of every SMS row of a campaign and adds up what each costs, whether or not it was processed. The sum
/// is kept until `Invalidate` or until it is asked for another campaign, text or day.
class CreditEstimate {
 public:
  CreditEstimate(Statements& statements, const Clock& clock) : statements_(statements), clock_(clock) {}

  /// \param smsTemplate  text with merge fields
  /// \return credits; 0 when the rows could not be read (already reported)
  [[nodiscard]] int EstimateSMSCredits(int campaignId, const QString& smsTemplate);

  /// Rows or flags changed.
  void Invalidate() { kept_.reset(); }

 private:
  struct Kept {
    int campaignId;
    QString smsTemplate;
    QDate day;
    int credits;
  };
  [[nodiscard]] std::optional<int> Add(int campaignId, const QString& smsTemplate);

  Statements& statements_;
  const Clock& clock_;
  std::optional<Kept> kept_;
};

}  // namespace qbx
