#include "dispatch/run_progress.h"

#include <QLocale>
#include <cmath>

namespace qbx {

namespace {

constexpr qint64 kTooShort = 1000;  // milliseconds; before that a rate would be a guess

QString Grouped(int number) {
  return QLocale(QLocale::English, QLocale::UnitedKingdom).toString(number);
}

QString RateText(double perSecond) {
  if (perSecond >= 10) return QStringLiteral("%1 a second").arg(Grouped(static_cast<int>(perSecond)));
  if (perSecond >= 1) return QStringLiteral("%1 a second").arg(perSecond, 0, 'f', 1);
  return QStringLiteral("%1 a minute").arg(perSecond * 60, 0, 'f', perSecond * 60 >= 10 ? 0 : 1);
}

QString TimeLeftText(double seconds) {
  if (seconds < 10) return QStringLiteral("a few seconds left");
  if (seconds < 90) return QStringLiteral("about %1 seconds left").arg(static_cast<int>(std::ceil(seconds / 10) * 10));
  const int minutes = static_cast<int>(std::lround(seconds / 60));
  if (minutes < 90) return QStringLiteral("about %1 minutes left").arg(minutes);
  return QStringLiteral("about %1 h %2 min left").arg(minutes / 60).arg(minutes % 60);
}

}  // namespace

void RunProgress::Note(int done, int total, qint64 elapsed) {
  done_ = done;
  total_ = total;
  elapsed_ = elapsed;
}

std::optional<double> RunProgress::PerSecond() const {
  if (done_ == 0 || elapsed_ < kTooShort) return std::nullopt;
  return done_ * 1000.0 / static_cast<double>(elapsed_);
}

QString RunProgress::Done() const {
  const QString text = QStringLiteral("%1 of %2").arg(Grouped(done_), Grouped(total_));
  const std::optional<double> perSecond = PerSecond();
  return perSecond ? text + QStringLiteral(" - ") + RateText(*perSecond) : text;
}

QString RunProgress::Text() const {
  const std::optional<double> perSecond = PerSecond();
  if (!perSecond || done_ >= total_) return Done();
  return Done() + QStringLiteral(" - ") + TimeLeftText((total_ - done_) / *perSecond);
}

}  // namespace qbx
