#include "reports/page_painter.h"

#include <QAbstractTextDocumentLayout>

#include "reports/report_values.h"
#include "reports/rich_text_slices.h"
#include "reports/text_fit.h"

namespace qbx {

namespace {

/// Excludes the lines that only touch a slice.
constexpr qreal kInset = 1;

FittedText Fitted(const PlacedObject& placed, const TextObject& text, int pages) {
  const QString shown = ShownText(placed, pages);
  if (!placed.cut || !text.canGrow) return FitText(shown, text, placed.frame.size());
  TextObject inFrame = text;
  inFrame.canGrow = false;
  return FitText(shown, inFrame, placed.frame.size());
}

void Paint(QPainter& painter, const PlacedObject& placed, const TextObject& text, int pages) {
  const FittedText fitted = Fitted(placed, text, pages);
  painter.setPen(text.style.colour);
  for (int i = 0; i < fitted.shown; ++i)
    fitted.lines->lineAt(i).draw(&painter, placed.frame.topLeft());
}

void Paint(QPainter& painter, const PlacedObject& placed, const RichTextObject&, int) {
  const auto document = placed.document ? placed.document : LayOutRichText(placed.text, placed.frame.width());
  const QRectF slice(0, placed.from, placed.frame.width(), placed.to - placed.from);
  painter.save();
  painter.translate(placed.frame.left(), placed.frame.top() - placed.from);
  QAbstractTextDocumentLayout::PaintContext context;
  context.palette.setColor(QPalette::Text, Qt::black);
  context.clip = slice.adjusted(0, kInset, 0, -kInset);
  if (slice.height() < document->size().height()) painter.setClipRect(slice, Qt::IntersectClip);
  document->documentLayout()->draw(&painter, context);
  painter.restore();
}

void Paint(QPainter& painter, const PlacedObject& placed, const LineObject& line, int) {
  painter.setPen(line.colour.isValid() ? QPen(line.colour, line.width) : QPen(Qt::NoPen));
  painter.drawLine(QLineF(placed.frame.topLeft(), placed.frame.bottomRight()));
}

void Paint(QPainter& painter, const PlacedObject& placed, const BoxObject& box, int) {
  painter.setPen(box.border.isValid() && box.width > 0 ? QPen(box.border, box.width) : QPen(Qt::NoPen));
  painter.setBrush(box.fill.isValid() ? QBrush(box.fill) : QBrush());
  painter.drawRect(placed.frame);
  painter.setBrush({});
}

void Paint(QPainter& painter, const PlacedObject& placed, const ImageObject& image, int) {
  if (image.image.isNull()) return;
  const QSizeF size = QSizeF(image.image.size()).scaled(placed.frame.size(), Qt::KeepAspectRatio);
  painter.drawImage(QRectF(placed.frame.topLeft(), size), image.image);
}

void Paint(QPainter&, const PlacedObject&, const SubreportObject&, int) {}

}  // namespace

void PaintPage(QPainter& painter, const ReportPage& page, int pages, Paper paper) {
  for (const PlacedObject& placed : page.objects)
    if (paper == Paper::kBlank || !placed.object->notOnHeadedPaper)
      std::visit([&](const auto& what) { Paint(painter, placed, what, pages); }, placed.object->what);
}

QString ShownText(const PlacedObject& placed, int pages) {
  QString text = placed.text;
  if (!text.contains(kPagesMark)) return text;
  if (pages > 0) return text.remove(kBeforePagesMark).replace(kPagesMark, QString::number(pages));
  for (qsizetype mark = text.indexOf(kPagesMark); mark >= 0; mark = text.indexOf(kPagesMark)) {
    const qsizetype before = text.lastIndexOf(kBeforePagesMark, mark);
    const qsizetype start = before < 0 ? mark : before;
    text.remove(start, mark - start + 1);
  }
  return text;
}

}  // namespace qbx
