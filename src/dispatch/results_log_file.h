// The results log of the last run of a campaign, kept beside the log file.

#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "dispatch/results_log.h"

namespace qbx {

/// One file a campaign, appended to line by line, so that it tells also of a run that was cut off. A run that goes on where another one
/// stopped goes on in its file; any other run begins it anew. Each run has a heading: when and by whom it was started.
class ResultsLogFile {
 public:
  /// \param logFile  path of the program's log
  ResultsLogFile(const QString& logFile, int campaignId);

  [[nodiscard]] const QString& Path() const { return path_; }
  /// The campaign got another number, as one does when it is stored for the first time. The log of a run that it had goes along.
  void MoveTo(const ResultsLogFile& other) const;
  /// A run begins.
  /// \param resumed  it goes on where another one stopped
  void Begin(const QString& user, const QDateTime& when, bool resumed);
  /// A line that cannot be written is lost.
  void Append(const QString& line);
  /// The lines of the log, without the headings.
  [[nodiscard]] QStringList Read() const;
  /// The lines with the headings.
  [[nodiscard]] QStringList ReadWithHeadings() const;

 private:
  QString path_;
};

/// The lines of the run that was the last of all campaigns, without the headings.
[[nodiscard]] QStringList ReadNewestResultsLog(const QString& logFile);

/// Files the lines of one run as they come. Only a run that really begins touches the file: one that is refused may stand beside a run that is
/// under way, whose file this is.
class RunLog {
 public:
  RunLog(ResultsLog& log, ResultsLogFile file);
  ~RunLog();
  RunLog(const RunLog&) = delete;
  RunLog& operator=(const RunLog&) = delete;

  /// The run begins: the lines that came so far are filed, and each that follows.
  void Begin(const QString& user, const QDateTime& when, bool resumed);

 private:
  ResultsLog& log_;
  ResultsLogFile file_;
  int listener_;
  QStringList waiting_;
  bool begun_ = false;
};

}  // namespace qbx
