// What one report run knows; one set for the whole program.

#pragma once

#include <QString>
#include <vector>

#include "database/value.h"

namespace qbx {

/// What `PrintReport` is given: element 0 the record type, 1 and 2 the dates of the period, then flags of other kinds of reports. What is missing changes
/// nothing.
using ReportRunValues = std::vector<Value>;

struct ReportState {
  QString reportName;    ///< file name without folder and ending
  QString reportTitle;   ///< of the formula {@ReportTitle}; cleared after each run
  QString dateFromText;  ///< "dd/mm/yyyy", empty when not given
  QString dateToText;
  bool landscape = false;
  int recordType = 0;
  QString pdfFileName;          ///< set before a PDF run, cleared after it
  QString tableLocationFilter;  ///< where every table is read, with "%" for its own name; cleared after each run
};

}  // namespace qbx
