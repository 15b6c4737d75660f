// How far a run is, how fast it goes and how long it will take.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// What a progress line tells. Fed by whoever watches a run; knows no clock.
class RunProgress {
 public:
  /// \param done     messages dealt with
  /// \param total    messages the run set out with
  /// \param elapsed  milliseconds since the run began
  void Note(int done, int total, qint64 elapsed);

  /// "1,200 of 5,000 - 41 a second - about 2 minutes left"; without rate and time left until there is something to go by.
  [[nodiscard]] QString Text() const;
  /// The same without the time left, for a run that is over.
  [[nodiscard]] QString Done() const;

 private:
  [[nodiscard]] std::optional<double> PerSecond() const;

  int done_ = 0;
  int total_ = 0;
  qint64 elapsed_ = 0;
};

}  // namespace qbx
