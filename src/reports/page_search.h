// Finding text on a page.

#pragma once

#include <QRectF>
#include <QString>
#include <vector>

#include "reports/report_page.h"

namespace qbx {

/// The places of a page whose text holds the wanted one, without regard to case: whole objects, and of rich text the lines.
/// \param pages  as `PaintPage` takes it
[[nodiscard]] std::vector<QRectF> PlacesOf(const ReportPage& page, int pages, const QString& wanted);

}  // namespace qbx
