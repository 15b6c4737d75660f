#include "report.h"

#include <QRegularExpression>
#include <cstdio>

namespace qbx::scenario {
namespace {

// "function@file:line" or "function@file:line:column".
int LineInStack(const QString& stack, const QString& file) {
  static const QRegularExpression kFrame(QStringLiteral("^[^@]*@(.*?):(-?\\d+)(?::-?\\d+)?$"));
  for (const QString& frame : stack.split(QLatin1Char('\n'))) {
    const QRegularExpressionMatch match = kFrame.match(frame);
    if (match.hasMatch() && match.captured(1).endsWith(file)) return match.captured(2).toInt();
  }
  return 0;
}

}  // namespace

void Report::Print(const QString& line) {
  const QByteArray utf8 = (line + QLatin1Char('\n')).toUtf8();
  std::fwrite(utf8.constData(), 1, static_cast<std::size_t>(utf8.size()), stdout);
  std::fflush(stdout);  // keeps the output when the process crashes
}

void Report::fail(const QString& text, const QString& stack) {
  FailAt(text, LineInStack(stack, file_));
  failed_(failures_);
}

void Report::FailAt(const QString& text, int line) {
  ++failures_;
  Print(QStringLiteral("FAIL %1%2: %3").arg(file_, line > 0 ? QStringLiteral(":%1").arg(line) : QString(), text));
}

}  // namespace qbx::scenario
