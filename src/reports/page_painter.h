// A laid out page, painted.

#pragma once

#include <QPainter>

#include "reports/report_page.h"

namespace qbx {

enum class Paper { kBlank, kHeaded };

/// Paints a page in its units; the caller scales.
/// \param pages  of how many pages the report is; 0: not known yet, "page n of m" then reads "page n"
/// \param paper  headed paper has some of it already
void PaintPage(QPainter& painter, const ReportPage& page, int pages, Paper paper = Paper::kBlank);

/// The text of an object as it is painted.
[[nodiscard]] QString ShownText(const PlacedObject& placed, int pages);

}  // namespace qbx
