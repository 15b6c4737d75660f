// A page as it was laid out.

#pragma once

#include <QByteArray>
#include <QRectF>
#include <QString>
#include <QStringList>
#include <QTextDocument>
#include <memory>
#include <vector>

#include "reports/report_definition.h"

namespace qbx {

/// An object at its place on the page.
struct PlacedObject {
  const ReportObject* object = nullptr;
  QRectF frame;       ///< from the top left corner of the sheet
  QString text = {};  ///< of a text, with the marks of report_values.h; the RTF of a rich text
  qreal from = 0;     ///< of a rich text: the slice of it that stands here
  qreal to = 0;
  bool cut =
      false;  ///< a text that may shrink does not fit in its smallest size, or one that may grow is taller than a page
  std::shared_ptr<QTextDocument> document = {};  ///< of a rich text, while it is at hand
};

/// A group that hides what is inside it, where it stands on a page.
struct DrillDown {
  QRectF area;
  QStringList group;  ///< the values of the groups around it, the outermost first, and its own
};

struct ReportPage {
  int number = 0;  ///< 1 the first
  int document =
      1;  ///< what is printed as one: the number of the group that counts its pages, such as a letter; else 1
  QString key = {};  ///< the value of that group, such as the key of the letter
  std::vector<PlacedObject> objects = {};
  std::vector<DrillDown> drillDowns = {};
};

/// What of a page does not fit its place, such as an address that is too long for the window of an envelope: the first line of each text.
[[nodiscard]] QStringList TextsThatDoNotFit(const ReportPage& page);

}  // namespace qbx
