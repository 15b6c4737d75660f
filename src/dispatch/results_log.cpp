#include "dispatch/results_log.h"

namespace qbx {

int ResultsLog::Listen(Listener listener) {
  listeners_.emplace(++lastListener_, std::move(listener));
  return lastListener_;
}

void ResultsLog::LogProcessResult(const QString& text) {
  const QString line = clock_.Now().toString(QStringLiteral("dd/MM/yy HH:mm:ss")) + QStringLiteral(" - ") + text;
  lines_.append(line);
  ProcessResultsLogged = true;
  for (const auto& [number, listener] : listeners_)
    listener(line);
  ui_.PumpEvents();
}

}  // namespace qbx
