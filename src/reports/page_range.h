// Which pages of a report are to be printed or written.

#pragma once

#include "reports/report_page.h"

namespace qbx {

/// First and last, both included; 0 for no limit.
struct PageRange {
  int firstPage = 0;
  int lastPage = 0;
  int firstDocument = 0;  ///< a document is, for example, one letter
  int lastDocument = 0;

  [[nodiscard]] bool HoldsAll() const {
    return firstPage <= 1 && lastPage <= 0 && firstDocument <= 1 && lastDocument <= 0;
  }
  [[nodiscard]] bool Holds(const ReportPage& page) const {
    return Lies(page.number, firstPage, lastPage) && Lies(page.document, firstDocument, lastDocument);
  }
  /// Whether no page of the range can follow a page.
  [[nodiscard]] bool EndsBefore(const ReportPage& page) const {
    return (lastPage > 0 && page.number > lastPage) || (lastDocument > 0 && page.document > lastDocument);
  }

 private:
  static bool Lies(int number, int first, int last) { return number >= first && (last <= 0 || number <= last); }
};

}  // namespace qbx
