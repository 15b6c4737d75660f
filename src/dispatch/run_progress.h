// The progress of a run, its rate and the time left.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// The text of a progress line. The observer of a run feeds it; it uses no clock.
class RunProgress {
 public:
  /// \param done     messages dealt with
  /// \param total    messages at the start of the run
  /// \param elapsed  milliseconds since the run began
  void Note(int done, int total, qint64 elapsed);

  /// "1,200 of 5,000 - 41 a second - about 2 minutes left"; rate and time left are missing at first.
  [[nodiscard]] QString Text() const;
  /// The text without the time left, for a run that has ended.
  [[nodiscard]] QString Done() const;

 private:
  [[nodiscard]] std::optional<double> PerSecond() const;

  int done_ = 0;
  int total_ = 0;
  qint64 elapsed_ = 0;
};

}  // namespace qbx
