// The filters of step 2, their rules, and their parameters.

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

/// Numbers of the filters: indexes of the check boxes `chkFilter`, and of the condition boxes `cmbFilter` where there
/// are any. The rows are in filter_table.h.
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
  std::array<int, kFilterCount> cmbFilter = NoConditions();  ///< position of the condition, -1 for none
  QString cmbData1 = {};                                     ///< customer type
  QString cmbData2 = {};                                     ///< enquiry source
  std::array<QString, 2> txtMileage = {};
  std::array<QString, 2> txtYear = {};
  QString txtModel = {};
  bool mileageVisible = true;  ///< whether the query has a mileage filter

  /// Whether a filter is ticked and visible; a hidden filter counts as unticked.
  [[nodiscard]] bool Ticked(FilterIndex filter) const;
  /// Whether a filter that narrows vehicles is ticked.
  [[nodiscard]] bool AnyVehicleFilter() const;

 private:
  static constexpr std::array<int, kFilterCount> NoConditions() {
    std::array<int, kFilterCount> none;
    none.fill(-1);
    return none;
  }
};

/// Captions that differ in the boat edition.
struct FilterCaptions {
  QString fraVehicleFilter;
  std::array<QString, kFilterCount> chkFilter;
};
[[nodiscard]] FilterCaptions MakeFilterCaptions(bool boatEdition);

/// The entries of `cmbFilter`; empty for a filter without a condition.
[[nodiscard]] QStringList FilterConditions(FilterIndex filter);
/// Whether the chosen condition of a filter is "Between".
[[nodiscard]] bool IsBetween(const Filters& filters, FilterIndex filter);

/// What `ShowFilterState` and `ShowBetweenFields` show. Nothing is ever disabled.
struct FilterView {
  /// Whether condition and values have the normal text colour; otherwise they are greyed.
  std::array<bool, kFilterCount> active = {};
  /// Whether "and" and the second box are shown, and the first box is narrow.
  std::array<bool, kFilterCount> between = {};
};
[[nodiscard]] FilterView ShowFilterState(const Filters& filters);

/// Adds the parameters of the ticked filters, in the order of the filters.
void AddFilterParameters(const Filters& filters, std::vector<NamedValue>& parameters);

/// Called after a click on `chkIncludeOptedOut`. If the company's settings forbid it, it is unticked again and the
/// message to show is returned.
[[nodiscard]] std::optional<Message> GuardIncludeOptedOut(Filters& filters, const Options& options);

/// The refusal of a ticked filter that needs a value and has none.
[[nodiscard]] std::optional<Message> CheckNeededValues(const Filters& filters, bool boatEdition);
/// The refusal of a ticked filter whose "Between" has the smaller value second.
[[nodiscard]] std::optional<Message> CheckBetween(const Filters& filters, bool boatEdition);
/// Why "Refresh" cannot run; nothing when it can.
[[nodiscard]] std::optional<Message> CheckRefresh(const Filters& filters, bool stepOneComplete, bool boatEdition);

}  // namespace qbx
