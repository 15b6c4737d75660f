// The option panels of step 1 that a query shows, with captions, hints and defaults.

#pragma once

#include <QDate>
#include <QString>
#include <optional>

#include "queries/query_options.h"

namespace qbx {

/// What step 1 shows for the selected node, named as the controls. The page only copies it to its controls.
struct QueryPanels {
  QString txtQueryDesc = {};
  QString lblQueryOptions = {};
  QString lblInfo = {};  ///< the hint line of tab 1
  bool cmdNextEnabled = false;

  bool fraPickStart = true;  ///< whether it is visible; also the next five
  bool fraDates = false;
  bool fraMakes = false;
  bool fraCriteria = false;
  bool fraReminder = false;
  bool fraOptionsText = false;

  QString lblCriteria = {};
  QString fraDatesCaption = {};
  QString lblDateFrom = {};
  QString lblDateTo = {};
  QString fraMakesCaption = {};  ///< "Makes" or "Engines"; the label inside has a ":" added
  QString lblOptionsExample = {};

  std::optional<QString> makesListStatement = {};  ///< if set, `lstMakes` is cleared and filled with its result
  bool mileageFilterVisible = true;                ///< of step 2: check box, condition and value
};

/// What is shown while no node is selected.
[[nodiscard]] QueryPanels NoQueryPanels();

/// What is shown for a query. For "LAPSED CUSTOMERS" with an empty From box it also sets the dates: today, and six
/// calendar months before.
/// \param queryKey  key of the node in upper case; an unknown one shows the same as no node
[[nodiscard]] QueryPanels ShowQueryOptions(const QString& queryKey, QueryOptions& options, bool boatEdition,
                                           const QDate& today);

}  // namespace qbx
