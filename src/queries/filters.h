// What step 2 of the wizard holds: the filters, their rules, and the parameters that they become.

#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <optional>
#include <vector>

#include "platform/user_interface.h"
#include "queries/query_parameters.h"

namespace qbx {

struct Options;

/// Positions of the check boxes `chkFilter` (and of the condition boxes `cmbFilter` 1 to 4).
enum FilterIndex : size_t {
  kFilterNoMarketing = 0,
  kFilterCustomerType = 1,
  kFilterEnquirySource = 2,
  kFilterMileage = 3,
  kFilterYear = 4,
  kFilterModel = 5,
};

/// Values of the step-2 controls, named as the controls. An unticked filter keeps its values.
struct Filters {
  bool chkIncludeOptedOut = false;
  std::array<bool, 6> chkFilter = {};
  std::array<int, 5> cmbFilter = {-1, -1, -1, -1, -1};  ///< position of the condition, -1: none; element 0 is not used
  QString cmbData1 = {};                                ///< customer type
  QString cmbData2 = {};                                ///< enquiry source
  std::array<QString, 2> txtMileage = {};
  std::array<QString, 2> txtYear = {};
  QString txtModel = {};
  bool mileageVisible = true;  ///< the query has a mileage filter at all

  /// Ticked and visible: a hidden filter counts as unticked.
  [[nodiscard]] bool Ticked(FilterIndex filter) const;
  /// Mileage, year or model.
  [[nodiscard]] bool AnyVehicleFilter() const;
};

/// Captions that the boat edition words differently.
struct FilterCaptions {
  QString fraVehicleFilter;
  std::array<QString, 6> chkFilter;
};
[[nodiscard]] FilterCaptions MakeFilterCaptions(bool boatEdition);

/// The entries of `cmbFilter` 1 to 4; empty for a filter without a condition.
[[nodiscard]] QStringList FilterConditions(FilterIndex filter);
/// Whether the chosen condition of the mileage or year filter is "Between".
[[nodiscard]] bool IsBetween(const Filters& filters, FilterIndex filter);

/// What `ShowFilterState` and `ShowBetweenFields` make of the controls. Nothing is ever disabled.
struct FilterView {
  /// Condition and values of filters 1 to 4 in the normal text colour, otherwise greyed.
  std::array<bool, 5> active = {};
  bool mileageBetween = false;  ///< "and" and the second box shown, the first narrowed
  bool yearBetween = false;
};
[[nodiscard]] FilterView ShowFilterState(const Filters& filters);

/// Adds the parameters of the ticked filters in their order.
void AddFilterParameters(const Filters& filters, std::vector<NamedValue>& parameters);

/// To be asked when `chkIncludeOptedOut` was just clicked: unticks it again, with the message to show, when the
/// company's settings forbid it.
[[nodiscard]] std::optional<Message> GuardIncludeOptedOut(Filters& filters, const Options& options);

/// The message that refuses a ticked model filter without a model.
[[nodiscard]] std::optional<Message> CheckModelFilter(const Filters& filters, bool boatEdition);
/// What keeps "Refresh" from running, if anything.
[[nodiscard]] std::optional<Message> CheckRefresh(const Filters& filters, bool stepOneComplete, bool boatEdition);

}  // namespace qbx
