#include "reports/report_definition.h"

#include <algorithm>

namespace qbx {

QSizeF SheetOf(const ReportPaper& paper) {
  return paper.landscape ? paper.size.transposed() : paper.size;
}

void ForEachSection(ReportDefinition& report, const std::function<void(ReportSection&)>& visit) {
  if (report.reportHeader) visit(*report.reportHeader);
  std::ranges::for_each(report.pageHeaders, visit);
  for (ReportGroup& group : report.groups) {
    if (group.header) visit(*group.header);
    if (group.footer) visit(*group.footer);
  }
  std::ranges::for_each(report.details, visit);
  std::ranges::for_each(report.pageFooters, visit);
  if (report.reportFooter) visit(*report.reportFooter);
}

void ForEachSection(const ReportDefinition& report, const std::function<void(const ReportSection&)>& visit) {
  ForEachSection(const_cast<ReportDefinition&>(report), [&visit](ReportSection& section) { visit(section); });
}

}  // namespace qbx
