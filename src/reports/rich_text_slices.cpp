#include "reports/rich_text_slices.h"

#include <QAbstractTextDocumentLayout>
#include <QTextBlock>
#include <QTextFrame>
#include <QTextLayout>
#include <algorithm>

#include "reports/report_definition.h"
#include "reports/text_fit.h"
#include "rtf/rtf_reader.h"

namespace qbx {

namespace {

/// Steps through the lines of a document from the top.
class LineWalk {
 public:
  explicit LineWalk(const QTextDocument& document) : document_(document), block_(document.begin()) {}

  /// \return false after the last line
  bool Next() {
    ++line_;
    breaksBefore_ = false;
    while (block_.isValid() && line_ >= std::max(1, block_.layout()->lineCount())) {
      block_ = block_.next();
      line_ = 0;
      breaksBefore_ =
          block_.isValid() && (block_.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore);
    }
    if (!block_.isValid()) return false;
    const QRectF block = document_.documentLayout()->blockBoundingRect(block_);
    if (block_.layout()->lineCount() == 0) {
      top_ = block.top();
      bottom_ = block.bottom();
    } else {
      const QRectF line = block_.layout()->lineAt(line_).rect();
      top_ = block.top() + (line_ == 0 ? 0 : line.top());
      bottom_ = block.top() + line.bottom();
    }
    return true;
  }

  [[nodiscard]] qreal Top() const { return top_; }
  [[nodiscard]] qreal Bottom() const { return bottom_; }
  [[nodiscard]] bool BreaksBefore() const { return breaksBefore_; }

 private:
  const QTextDocument& document_;
  QTextBlock block_;
  int line_ = -1;
  qreal top_ = 0;
  qreal bottom_ = 0;
  bool breaksBefore_ = false;
};

}  // namespace

std::shared_ptr<QTextDocument> LayOutRichText(const QString& rtf, qreal width) {
  auto document = std::make_shared<QTextDocument>();
  // Only setTextWidth lays the document out: before it there is no layout or no width.
  document->setDocumentMargin(0);
  document->setPageSize({0, 0});
  ReadRtf(rtf, *document);
  document->setUndoRedoEnabled(false);
  QTextFrameFormat frame = document->rootFrame()->frameFormat();
  frame.setMargin(0);
  document->rootFrame()->setFrameFormat(frame);
  QFont font = document->defaultFont();
  font.setHintingPreference(kHinting);
  document->setDefaultFont(font);
  document->documentLayout()->setPaintDevice(&LayoutDevice());
  document->setTextWidth(width);
  return document;
}

RichTextCut CutRichText(const QTextDocument& document, qreal from, qreal room, bool force) {
  const qreal end = document.size().height();
  if (room <= 0) return {.to = from, .whole = from >= end};
  LineWalk line(document);
  bool any = false;  // whether the slice has a line
  while (line.Next()) {
    const bool begunBefore = line.Top() < from - kLayoutTolerance;
    const bool tallerThanRoom = line.Bottom() - line.Top() > room;
    if (line.Bottom() <= from + kLayoutTolerance || (begunBefore && !tallerThanRoom)) continue;
    if (any && line.BreaksBefore()) return {.to = line.Top(), .pageBreak = true};
    if (line.Bottom() > from + room + kLayoutTolerance) {
      if (any || !force) return {.to = any ? line.Top() : from};
      return {.to = std::min(from + room, line.Bottom())};
    }
    any = true;
  }
  return {.to = std::max(from, end), .whole = true};
}

}  // namespace qbx
