#include "platform/ui/long_text.h"

#include <QList>
#include <QPlainTextEdit>
#include <algorithm>

namespace qbx {
namespace {

constexpr qsizetype kLongestWrapped = 5000;

bool HasLongLine(const QString& text) {
  const QList<QStringView> lines = QStringView(text).split(QLatin1Char('\n'));
  return std::any_of(lines.begin(), lines.end(), [](QStringView line) { return line.size() > kLongestWrapped; });
}

}  // namespace

void SetLongText(QPlainTextEdit& box, const QString& text) {
  box.setPlainText({});  // otherwise the old long line would be broken when wrapping is switched on
  box.setLineWrapMode(HasLongLine(text) ? QPlainTextEdit::NoWrap : QPlainTextEdit::WidgetWidth);
  box.setPlainText(text);
}

void ShowText(QPlainTextEdit& box, const QString& text) {
  if (ExactText(box, text) != text) SetLongText(box, text);
}

QString ExactText(const QPlainTextEdit& box, const QString& before) {
  const QString lineEnd = before.contains(QLatin1String("\r\n")) ? QStringLiteral("\r\n")
                          : before.contains(QLatin1Char('\r'))   ? QStringLiteral("\r")
                                                                 : QStringLiteral("\n");
  QString text = box.document()->toRawText();
  text.replace(QChar::ParagraphSeparator, lineEnd);
  text.replace(QChar::LineSeparator, lineEnd);
  return text;
}

}  // namespace qbx
