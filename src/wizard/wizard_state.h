// Every value that the five steps of the wizard hold.

#pragma once

#include <QString>
#include <QStringList>
#include <array>
#include <vector>

#include "database/list_query.h"
#include "queries/filters.h"
#include "queries/process_query.h"
#include "queries/query_options.h"
#include "queries/query_panels.h"

namespace qbx {

/// Plain values, named as the controls that show them. A page copies between its controls and this; logic reads and
/// writes only this.
struct WizardState {
  /// Element 0 is true once a campaign is set up, element n once step n was completed with "Next >".
  std::array<bool, 4> bStepComplete = {};

  // Step 1
  int selectedNode = 0;  ///< of the query tree, 0: none
  QueryPanels panels = {};
  QueryOptions options = {};
  std::vector<ListRow> lstMakes = {};
  std::vector<bool> lstMakesSelected = {};  ///< as long as `lstMakes`

  // Step 2
  Filters filters = {};
  Filters appliedFilters = {};                                      ///< those that the rows were last selected with
  std::array<std::vector<ListRow>, kFilterCount> filterLists = {};  ///< what the lists of the filters offer
  RecordLabels lblRecords = {"Records found: ", "Records found: "};
  LeftOut leftOut = {};  ///< what stands beside them

  // Step 4
  QString rtfLetter = {};  ///< RTF
  QString txtEmailSubject = {};
  QString txtEmailBody = {};
  QString txtSMS = {};

  std::vector<ListRow> cmbCampaigns = {};  ///< stored campaigns, data: their IDs
};

}  // namespace qbx
