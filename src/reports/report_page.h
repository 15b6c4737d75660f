// A page that was laid out.

#pragma once

#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTextDocument>
#include <memory>
#include <vector>

#include "reports/report_definition.h"

namespace qbx {

/// An object at its place on a page.
struct PlacedObject {
  const ReportObject* object = nullptr;
  QRectF frame;       ///< from the top left corner of the sheet
  QString text = {};  ///< of a text, with the marks of report_values.h; of a rich text: its RTF
  qreal from = 0;     ///< of a rich text: the slice that is at this place
  qreal to = 0;
  /// Whether a shrinking text does not fit in its least size, or a growing text is taller than a page.
  bool cut = false;
  std::shared_ptr<QTextDocument> document = {};  ///< of a rich text, as long as it is in memory
};

/// The place on a page of a group that hides its details.
struct DrillDown {
  QRectF area;
  QStringList group;  ///< the values of the groups around it, from the outermost, and its own
};

struct ReportPage {
  int number = 0;    ///< from 1
  int document = 1;  ///< the number of the document, such as a letter: of the group that counts its pages; otherwise 1
  QString key = {};  ///< the value of that group, such as the key of the letter
  std::vector<PlacedObject> objects = {};
  std::vector<DrillDown> drillDowns = {};
};

/// The texts of a page that do not fit their places, such as an address too long for the window of an envelope. Only
/// the first line of each text is given.
[[nodiscard]] QStringList TextsThatDoNotFit(const ReportPage& page);

}  // namespace qbx
