// The state of a report run; there is one in the program.

#pragma once

#include <QString>
#include <vector>

#include "database/value.h"

namespace qbx {

/// The values given to `PrintReport`: element 0 is the record type, 1 and 2 are the dates of the period, the rest are
/// flags of other kinds of reports. A missing value changes nothing.
using ReportRunValues = std::vector<Value>;

struct ReportState {
  QString reportName;    ///< file name without folder and extension
  QString reportTitle;   ///< of the formula {@ReportTitle}; cleared after each run
  QString dateFromText;  ///< "dd/mm/yyyy"; empty when it is not given
  QString dateToText;
  bool landscape = false;
  int recordType = 0;
  QString pdfFileName;          ///< set before a PDF run, cleared after it
  QString tableLocationFilter;  ///< where every table is read, with "%" for the table's name; cleared after each run
};

}  // namespace qbx
