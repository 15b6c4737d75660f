// The pages of a report for looking at. They are laid out when needed and kept.

#pragma once

#include <exception>
#include <memory>

#include "reports/report.h"
#include "reports/report_page.h"
#include "reports/spool.h"

namespace qbx {

/// Pages by number. Pages that were laid out are kept on disk, so memory does not grow with their number and the
/// printed pages are the ones that were seen.
class ReportPages {
 public:
  /// \param report  must outlive this object
  ReportPages(const Report& report, std::unique_ptr<Pager> pager);

  /// Lays out the next page.
  /// \return false when there is none
  /// \throws ReportError, DatabaseError; after a failure every further call fails, so that an incomplete report is
  ///         never taken for a complete one
  bool LayOutNext();
  /// The number of pages that are laid out.
  [[nodiscard]] int Count() const { return static_cast<int>(spool_.Count()); }
  /// Whether all pages are laid out.
  [[nodiscard]] bool IsComplete() const { return complete_; }
  /// The number of pages of the whole report, 0 as long as it is unknown.
  [[nodiscard]] int Total() const { return complete_ ? Count() : 0; }

  /// \param number  from 1 to Count()
  [[nodiscard]] ReportPage At(int number);

 private:
  const Report& report_;
  std::unique_ptr<Pager> pager_;
  Spool spool_;
  bool complete_ = false;
  std::exception_ptr failure_;
};

}  // namespace qbx
