#include "tds_server/faults.h"

namespace qbx::tds {

void Faults::Add(const Fault& fault) {
  const std::lock_guard lock(mutex_);
  planned_.push_back({fault});
}

void Faults::Clear() {
  const std::lock_guard lock(mutex_);
  planned_.clear();
}

std::optional<Fault> Faults::At(FaultMoment moment, const QString& text) {
  const std::lock_guard lock(mutex_);
  for (Planned& planned : planned_) {
    const Fault& fault = planned.fault;
    if (fault.moment != moment || !text.contains(fault.match, Qt::CaseInsensitive)) continue;
    if (planned.seen++ < fault.skip || (fault.times > 0 && planned.happened >= fault.times)) continue;
    ++planned.happened;
    return fault;
  }
  return std::nullopt;
}

int Faults::Happened() const {
  const std::lock_guard lock(mutex_);
  int count = 0;
  for (const Planned& planned : planned_)
    count += planned.happened;
  return count;
}

}  // namespace qbx::tds
