// What step 1 of the wizard holds: the options of the starting query.

#pragma once

#include <QDate>
#include <QString>
#include <array>

namespace qbx {

/// Values of the step-1 controls, named as the controls. They stay when another query is chosen; only `txtMakes` is
/// emptied then.
struct QueryOptions {
  std::array<QDate, 2> dteDate = {};        ///< From and To; an invalid date: the box is empty or holds no date
  std::array<bool, 2> dteDateHasText = {};  ///< the box is not empty, though what stands in it may be no date
  QString txtCriteria = {};                 ///< number of records to return, as typed
  QString txtCriteriaStart = {};            ///< first record, as typed, counting from 1
  QString txtMakes = {};                    ///< makes or engines, separated by ", "
  int cmbReminder = -1;                     ///< position in the reminder list, -1: none
  QString cmbType = {};                     ///< campaign type, empty: none

  QString FromDateText = {};  ///< "yyyy-mm-dd", set by the date check when it succeeds; empty until then
  QString ToDateText = {};
};

}  // namespace qbx
