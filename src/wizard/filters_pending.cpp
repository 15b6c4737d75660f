#include "wizard/filters_pending.h"

namespace qbx {
namespace {

std::vector<NamedValue> Parameters(const Filters& filters) {
  std::vector<NamedValue> parameters;
  AddFilterParameters(filters, parameters);
  return parameters;
}

}  // namespace

QString FiltersPendingText(const WizardState& state) {
  const bool selected = state.bStepComplete[1];
  if (!selected || Parameters(state.filters) == Parameters(state.appliedFilters)) return {};
  return QStringLiteral("The filters are not applied to these rows yet. Press Refresh, or Next > on step 2.");
}

}  // namespace qbx
