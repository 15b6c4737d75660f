// Finding text on a page.

#pragma once

#include <QRectF>
#include <QString>
#include <vector>

#include "reports/report_page.h"

namespace qbx {

/// The places on the page whose text contains `wanted`, ignoring case: whole objects, but single lines of rich text.
/// \param pages  as for `PaintPage`
[[nodiscard]] std::vector<QRectF> PlacesOf(const ReportPage& page, int pages, const QString& wanted);

}  // namespace qbx
