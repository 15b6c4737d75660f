// The credits that a campaign's texts cost.

#pragma once

#include <QString>
#include <optional>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "results/counters.h"

namespace qbx {

/// Merges the text of every SMS row of a campaign and adds up the costs: of all texts, and of those that are still to
/// be sent. The sums are kept until `Invalidate`, or until another campaign, text or day is asked for.
class CreditEstimate {
 public:
  CreditEstimate(Statements& statements, Diagnostics diagnostics)
      : statements_(statements), diagnostics_(diagnostics) {}

  /// \param smsTemplate      text with merge fields
  /// \param repeatDelivered  whether texts that were delivered are sent again where the e-mail of their row failed
  /// \return nothing when the rows could not be read (already reported)
  [[nodiscard]] std::optional<CreditNeed> EstimateSMSCredits(int campaignId, const QString& smsTemplate,
                                                             bool repeatDelivered = false);

  /// Drops the sums: rows, flags or records of what went out have changed.
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
