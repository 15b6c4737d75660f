// Watches a run, and disturbs it as planned.

#pragma once

#include <functional>
#include <vector>

#include "consent/ledger.h"

namespace qbx::consent {

/// Thrown at a step of a run to end the process. The program does not catch it.
struct ProcessEnds {};

class Watch final : public MailshotObserver {
 public:
  struct Disturbance {
    MailshotPoint point;
    int nth;  ///< at which passing of the point, from 1
    std::function<void()> action;
  };
  Watch(Ledger& ledger, std::vector<Disturbance> disturbances)
      : ledger_(ledger), disturbances_(std::move(disturbances)) {}

  void At(MailshotPoint point, qint64 record) override {
    record_ = record;
    if (point == MailshotPoint::kRowStarted) ledger_.RowStarts(record);
    onItsWay_ = point >= MailshotPoint::kAfterJournal && point <= MailshotPoint::kBeforeCommit;
    const int nth = ++times_[static_cast<size_t>(point)];
    for (const Disturbance& disturbance : disturbances_)
      if (disturbance.point == point && disturbance.nth == nth) disturbance.action();
    if (point == MailshotPoint::kBeforeJournal) ledger_.Announces(record);
  }
  /// The present row of the run.
  [[nodiscard]] qint64 Record() const { return record_; }
  /// Whether a message may have left whose outcome is not on disk.
  [[nodiscard]] bool OnItsWay() const { return onItsWay_; }

 private:
  Ledger& ledger_;
  std::vector<Disturbance> disturbances_;
  std::array<int, 7> times_ = {};
  qint64 record_ = 0;
  bool onItsWay_ = false;
};

}  // namespace qbx::consent
