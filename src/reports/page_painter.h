// Painting a page that was laid out.

#pragma once

#include <QPainter>

#include "reports/report_page.h"

namespace qbx {

enum class Paper { kBlank, kHeaded };

/// Paints a page in its units; the caller scales.
/// \param pages  the number of pages of the report; with 0, not known yet, "page n of m" becomes "page n"
/// \param paper  on headed paper some objects are printed already and left out
void PaintPage(QPainter& painter, const ReportPage& page, int pages, Paper paper = Paper::kBlank);

/// The text of an object as it is painted.
[[nodiscard]] QString ShownText(const PlacedObject& placed, int pages);

}  // namespace qbx
