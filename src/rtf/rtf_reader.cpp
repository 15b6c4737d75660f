#include "rtf/rtf_reader.h"

#include <algorithm>

#include "rtf/group_reader.h"

namespace qbx {
namespace {

qsizetype RtfStart(const QString& text) {
  qsizetype start = 0;
  while (start < text.size() && (text[start].isSpace() || text[start] == QChar::ByteOrderMark))
    ++start;
  return QStringView(text).sliced(start).startsWith(u"{\\rtf", Qt::CaseInsensitive) ? start : -1;
}

}  // namespace

RtfLosses ReadRtf(const QString& text, QTextDocument& document) {
  const QStringView read = QStringView(text).first(std::min(text.size(), kMaxRtfCharacters));
  document.setUndoRedoEnabled(false);
  RtfLosses losses;
  if (const qsizetype start = RtfStart(text); start >= 0 && start < read.size()) {
    losses = GroupReader(read.sliced(start), document).Read();
  } else {
    document.setPlainText(read.toString());
    SetTabDistance(document, kDefaultTabTwips);
  }
  if (read.size() < text.size()) losses.prepend(QStringLiteral("everything behind the first 32 million characters"));
  document.setUndoRedoEnabled(true);
  document.setModified(false);
  return losses;
}

}  // namespace qbx
