#include "wizard/filters_pending.h"

namespace qbx {
namespace {

std::vector<NamedValue> Parameters(const Filters& filters) {
  std::vector<NamedValue> parameters;
  AddFilterParameters(filters, parameters);
  return parameters;
}

bool SelectTheSame(const Filters& one, const Filters& other) {
  return one.chkIncludeOptedOut == other.chkIncludeOptedOut && Parameters(one) == Parameters(other);
}

}  // namespace

QString FiltersPendingText(const WizardState& state) {
  const bool selected = state.bStepComplete[1];
  if (!selected || SelectTheSame(state.filters, state.appliedFilters)) return {};
  return QStringLiteral("The filters are not applied to these rows yet. Press Refresh, or Next > on step 2.");
}

}  // namespace qbx
