#include "reports/page_search.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

#include "reports/page_painter.h"
#include "reports/rich_text_slices.h"

namespace qbx {

namespace {

/// The line in which the found text begins.
QRectF LineOf(const QTextCursor& found) {
  const QTextBlock block = found.document()->findBlock(found.selectionStart());
  const QTextLine line = block.layout()->lineForTextPosition(found.selectionStart() - block.position());
  const QRectF frame = found.document()->documentLayout()->blockBoundingRect(block);
  return line.isValid() ? line.naturalTextRect().translated(frame.topLeft()) : frame;
}

void AddPlaces(const PlacedObject& placed, const QString& wanted, std::vector<QRectF>& places) {
  const auto document = LayOutRichText(placed.text, placed.frame.width());
  for (QTextCursor found = document->find(wanted); !found.isNull(); found = document->find(wanted, found)) {
    const QRectF line = LineOf(found);
    if (line.top() >= placed.from && line.top() < placed.to)
      places.push_back(line.translated(placed.frame.left(), placed.frame.top() - placed.from));
  }
}

}  // namespace

std::vector<QRectF> PlacesOf(const ReportPage& page, int pages, const QString& wanted) {
  std::vector<QRectF> places;
  for (const PlacedObject& placed : page.objects) {
    if (std::holds_alternative<RichTextObject>(placed.object->what)) {
      AddPlaces(placed, wanted, places);
    } else if (ShownText(placed, pages).contains(wanted, Qt::CaseInsensitive)) {
      places.push_back(placed.frame);
    }
  }
  return places;
}

}  // namespace qbx
