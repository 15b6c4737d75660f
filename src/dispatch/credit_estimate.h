// How many credits a campaign's texts are going to cost.

#pragma once

#include <QString>
#include <optional>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "results/counters.h"

namespace qbx {

/// Merges the text of every SMS row of a campaign and adds up what each costs: all of them, and those that are still to go. The sums are kept
/// until `Invalidate` or until they are asked for another campaign, text or day.
class CreditEstimate {
 public:
  CreditEstimate(Statements& statements, Diagnostics diagnostics)
      : statements_(statements), diagnostics_(diagnostics) {}

  /// \param smsTemplate      text with merge fields
  /// \param repeatDelivered  texts that were delivered go again where the e-mail of their row failed
  /// \return nothing when the rows could not be read (already reported)
  [[nodiscard]] std::optional<CreditNeed> EstimateSMSCredits(int campaignId, const QString& smsTemplate,
                                                             bool repeatDelivered = false);

  /// Rows, flags or what went out changed.
  void Invalidate() { kept_.reset(); }

 private:
  struct Wish {
    int campaignId;
    QString smsTemplate;
    bool repeatDelivered;
    QDate day;

    friend bool operator==(const Wish&, const Wish&) = default;
  };
  struct Kept {
    Wish wish;
    CreditNeed need;
  };
  [[nodiscard]] std::optional<CreditNeed> Add(const Wish& wish);

  Statements& statements_;
  Diagnostics diagnostics_;
  std::optional<Kept> kept_;
};

}  // namespace qbx
