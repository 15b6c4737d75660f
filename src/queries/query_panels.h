// Which option panels of step 1 a query shows, with their captions, hints and defaults.

#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "queries/query_options.h"

namespace qbx {

/// What step 1 shows for the selected node, named as the controls. A page copies it to its controls and decides nothing
/// itself.
struct QueryPanels {
  QString txtQueryDesc = {};
  QString lblQueryOptions = {};
  QString lblInfo = {};  ///< the hint line of tab 1
  bool cmdNextEnabled = false;

  bool fraPickStart = true;  ///< visible; so are the next five
  bool fraDates = false;
  bool fraMakes = false;
  bool fraCriteria = false;
  bool fraReminder = false;
  bool fraOptionsText = false;

  QString lblCriteria = {};
  QString fraDatesCaption = {};
  QString lblDateFrom = {};
  QString lblDateTo = {};
  QString fraMakesCaption = {};  ///< "Makes" or "Engines"; the label inside is this and ":"
  QString lblOptionsExample = {};

  std::optional<QString> makesListStatement = {};  ///< when set, `lstMakes` is cleared and filled from it
  bool mileageFilterVisible = true;                ///< of step 2: check box, condition and value
};

/// What is shown while no node is selected.
[[nodiscard]] QueryPanels NoQueryPanels();

/// What is shown for a query. For "LAPSED CUSTOMERS" with an empty From box the dates are set as well: today, and six
/// calendar months before.
/// \param queryKey  key of the node in upper case; an unknown one shows what is shown for no node
[[nodiscard]] QueryPanels ShowQueryOptions(const QString& queryKey, QueryOptions& options, bool boatEdition,
                                           const QDate& today);

}  // namespace qbx
