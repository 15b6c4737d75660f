// Every value that the five steps of the wizard hold.

#pragma once

#include <QString>
#include <array>
#include <vector>

#include "database/list_query.h"
#include "queries/filters.h"
#include "queries/process_query.h"
#include "queries/query_options.h"
#include "queries/query_panels.h"

namespace qbx {

/// Plain values, named as the controls that show them. A page copies values between its controls and this struct. Logic
/// uses only this struct.
struct WizardState {
  /// Element 0 is true once a campaign is set up, element n once "Next >" completed step n.
  std::array<bool, 4> bStepComplete = {};

  // Step 1
  int selectedNode = 0;  ///< of the query tree, 0 for none
  QueryPanels panels = {};
  QueryOptions options = {};
  std::vector<ListRow> lstMakes = {};
  std::vector<bool> lstMakesSelected = {};  ///< for each entry of `lstMakes`

  // Step 2
  Filters filters = {};
  /// The filters with which the rows were last selected.
  Filters appliedFilters = {};
  std::array<std::vector<ListRow>, kFilterCount> filterLists = {};  ///< the entries of the filters' lists
  RecordLabels lblRecords = {"Records found: ", "Records found: "};
  LeftOut leftOut = {};  ///< the counts beside the labels

  // Step 4
  QString rtfLetter = {};  ///< RTF
  QString txtEmailSubject = {};
  QString txtEmailBody = {};
  QString txtSMS = {};

  std::vector<ListRow> cmbCampaigns = {};  ///< stored campaigns; data: their IDs
};

}  // namespace qbx
