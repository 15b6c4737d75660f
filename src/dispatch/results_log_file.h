// The results log of a campaign's last run, kept beside the log file.

#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include "dispatch/results_log.h"

namespace qbx {

/// One file a campaign. It is appended line by line, so it also tells of a run that was interrupted. A resumed run
/// continues the file; any other run begins it anew. Each run has a heading: when and by whom it was started.
class ResultsLogFile {
 public:
  /// \param logFile  path of the program's log
  ResultsLogFile(const QString& logFile, int campaignId);

  [[nodiscard]] const QString& Path() const { return path_; }
  /// Moves the log to the campaign's new number, which it gets when it is stored for the first time.
  void MoveTo(const ResultsLogFile& other) const;
  /// Writes the heading of a run.
  /// \param resumed  whether the run continues an earlier one
  void Begin(const QString& user, const QDateTime& when, bool resumed);
  /// A line that cannot be written is lost.
  void Append(const QString& line);
  /// The lines of the log without headings.
  [[nodiscard]] QStringList Read() const;
  /// The lines with the headings.
  [[nodiscard]] QStringList ReadWithHeadings() const;

 private:
  QString path_;
};

/// The lines of the most recent run of any campaign, without headings.
[[nodiscard]] QStringList ReadNewestResultsLog(const QString& logFile);

/// Files the lines of one run. Only a run that really begins touches the file, because a run may be refused while
/// another one is writing it.
class RunLog {
 public:
  RunLog(ResultsLog& log, ResultsLogFile file);
  ~RunLog();
  RunLog(const RunLog&) = delete;
  RunLog& operator=(const RunLog&) = delete;

  /// Called when the run begins: files the lines so far, and each later line.
  void Begin(const QString& user, const QDateTime& when, bool resumed);

 private:
  ResultsLog& log_;
  ResultsLogFile file_;
  int listener_;
  QStringList waiting_;
  bool begun_ = false;
};

}  // namespace qbx
