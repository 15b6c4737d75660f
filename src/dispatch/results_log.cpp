#include "dispatch/results_log.h"

namespace qbx {

void ResultsLog::LogProcessResult(const QString& text) {
  const QString line = clock_.Now().toString(QStringLiteral("dd/MM/yy HH:mm:ss")) + QStringLiteral(" - ") + text;
  lines_.append(line);
  ProcessResultsLogged = true;
  if (sink_) sink_(line);
  ui_.PumpEvents();
}

}  // namespace qbx
