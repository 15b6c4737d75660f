// The pages of a report for looking at: laid out as far as somebody looked, and kept.

#pragma once

#include <QString>
#include <exception>
#include <memory>

#include "reports/report.h"
#include "reports/report_page.h"
#include "reports/spool.h"

namespace qbx {

/// Pages by their number. Those that were laid out are kept on disk, so that memory does not grow with them, and what was seen is what is printed.
class ReportPages {
 public:
  /// \param report  must outlive this object
  ReportPages(const Report& report, std::unique_ptr<Pager> pager);

  /// Lays out the next page.
  /// \return false when there is none
  /// \throws ReportError, DatabaseError; once it has failed it fails every time, so that nothing is taken for the whole that is not
  bool LayOutNext();
  /// Pages that are laid out.
  [[nodiscard]] int Count() const { return static_cast<int>(spool_.Count()); }
  /// Whether that is all of them.
  [[nodiscard]] bool IsComplete() const { return complete_; }
  /// The number of all pages, 0 while it is not known.
  [[nodiscard]] int Total() const { return complete_ ? Count() : 0; }

  /// \param number  1 the first, at most Count()
  [[nodiscard]] ReportPage At(int number);

 private:
  const Report& report_;
  std::unique_ptr<Pager> pager_;
  Spool spool_;
  bool complete_ = false;
  std::exception_ptr failure_;
};

}  // namespace qbx
