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

/// Numbers of the filters: of their check boxes `chkFilter`, and of the condition boxes `cmbFilter` where they have one.
/// Their rows stand in filter_table.h.
enum FilterIndex : size_t {
  kFilterNoMarketing = 0,
  kFilterCustomerType = 1,
  kFilterEnquirySource = 2,
  kFilterMileage = 3,
  kFilterYear = 4,
  kFilterModel = 5,
  kFilterCount
};

/// Values of the step-2 controls, named as the controls. An unticked filter keeps its values.
struct Filters {
  bool chkIncludeOptedOut = false;
  std::array<bool, kFilterCount> chkFilter = {};
  std::array<int, kFilterCount> cmbFilter = NoConditions();  ///< position of the condition, -1: none
  QString cmbData1 = {};                                     ///< customer type
  QString cmbData2 = {};                                     ///< enquiry source
  std::array<QString, 2> txtMileage = {};
  std::array<QString, 2> txtYear = {};
  QString txtModel = {};
  bool mileageVisible = true;  ///< the query has a mileage filter at all

  /// Ticked and visible: a hidden filter counts as unticked.
  [[nodiscard]] bool Ticked(FilterIndex filter) const;
  /// Any that narrows vehicles.
  [[nodiscard]] bool AnyVehicleFilter() const;

 private:
  static constexpr std::array<int, kFilterCount> NoConditions() {
    std::array<int, kFilterCount> none;
    none.fill(-1);
    return none;
  }
};

/// Captions that the boat edition words differently.
struct FilterCaptions {
  QString fraVehicleFilter;
  std::array<QString, kFilterCount> chkFilter;
};
[[nodiscard]] FilterCaptions MakeFilterCaptions(bool boatEdition);

/// The entries of `cmbFilter`; empty for a filter without a condition.
[[nodiscard]] QStringList FilterConditions(FilterIndex filter);
/// Whether the chosen condition of a filter is "Between".
[[nodiscard]] bool IsBetween(const Filters& filters, FilterIndex filter);

/// What `ShowFilterState` and `ShowBetweenFields` make of the controls. Nothing is ever disabled.
struct FilterView {
  /// Condition and values of a filter that has conditions in the normal text colour, otherwise greyed.
  std::array<bool, kFilterCount> active = {};
  std::array<bool, kFilterCount> between = {};  ///< "and" and the second box shown, the first narrowed
};
[[nodiscard]] FilterView ShowFilterState(const Filters& filters);

/// Adds the parameters of the ticked filters in their order.
void AddFilterParameters(const Filters& filters, std::vector<NamedValue>& parameters);

/// To be asked when `chkIncludeOptedOut` was just clicked: unticks it again, with the message to show, when the
/// company's settings forbid it.
[[nodiscard]] std::optional<Message> GuardIncludeOptedOut(Filters& filters, const Options& options);

/// The message that refuses a ticked filter which cannot be without a value.
[[nodiscard]] std::optional<Message> CheckNeededValues(const Filters& filters, bool boatEdition);
/// The message that refuses a ticked filter which is "Between" a value and a smaller one.
[[nodiscard]] std::optional<Message> CheckBetween(const Filters& filters, bool boatEdition);
/// What keeps "Refresh" from running, if anything.
[[nodiscard]] std::optional<Message> CheckRefresh(const Filters& filters, bool stepOneComplete, bool boatEdition);

}  // namespace qbx
