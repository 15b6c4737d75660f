// The results log of the last run of a campaign, kept beside the log file.

#pragma once

#include <QString>
#include <QStringList>

namespace qbx::ctl {

/// One file a campaign, begun anew with each run and appended to line by line, so that it tells also of a run that was cut off.
class ResultsLogFile {
 public:
  /// \param logFile  path of the program's log
  ResultsLogFile(const QString& logFile, int campaignId);

  [[nodiscard]] const QString& Path() const { return path_; }
  void Begin();
  /// A line that cannot be written is lost.
  void Append(const QString& line);
  [[nodiscard]] QStringList Read() const;

 private:
  QString path_;
};

/// The lines of the run that was the last of all campaigns.
[[nodiscard]] QStringList ReadNewestResultsLog(const QString& logFile);

}  // namespace qbx::ctl
