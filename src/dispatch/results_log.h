// The results log: the lines that a run shows while it works.

#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>

#include "platform/clock.h"
#include "platform/user_interface.h"

namespace qbx {

/// Lines "dd/mm/yy HH:mm:ss - text". They are kept until they are cleared. Listeners get each line as it comes.
class ResultsLog {
 public:
  using Listener = std::function<void(const QString& line)>;

  ResultsLog(const Clock& clock, UserInterface& ui) : clock_(clock), ui_(ui) {}

  /// \param listener  called for every later line, without its line end
  /// \return the argument for `StopListening`
  [[nodiscard]] int Listen(Listener listener);
  void StopListening(int listener) { listeners_.erase(listener); }

  /// Adds a line and lets the screen repaint.
  void LogProcessResult(const QString& text);

  [[nodiscard]] const QStringList& Lines() const { return lines_; }
  void Clear() { lines_.clear(); }

  /// Set when a line is written: results shown elsewhere are then out of date. The reader clears it.
  bool ProcessResultsLogged = false;

 private:
  const Clock& clock_;
  UserInterface& ui_;
  std::map<int, Listener> listeners_;
  int lastListener_ = 0;
  QStringList lines_;
};

}  // namespace qbx
