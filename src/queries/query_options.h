// The options of the starting query in step 1.

#pragma once

#include <QDate>
#include <QString>
#include <array>

namespace qbx {

/// Values of the step-1 controls, named as the controls. Choosing another query empties only `txtMakes`.
struct QueryOptions {
  std::array<QDate, 2> dteDate = {};        ///< From and To; invalid when the box is empty or holds no date
  std::array<bool, 2> dteDateHasText = {};  ///< whether the box holds text, even text that is no date
  QString txtCriteria = {};                 ///< number of records to return, as typed
  QString txtCriteriaStart = {};            ///< first record, as typed, counting from 1
  QString txtMakes = {};                    ///< makes or engines, separated by ", "
  int cmbReminder = -1;                     ///< position in the reminder list, -1 for none
  QString cmbType = {};                     ///< campaign type, empty for none

  QString FromDateText = {};  ///< "yyyy-mm-dd", set by a successful date check; empty until then
  QString ToDateText = {};
};

}  // namespace qbx
