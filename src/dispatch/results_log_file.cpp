#include "dispatch/results_log_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <algorithm>

#include "util/date_text.h"

namespace qbx {

namespace {

constexpr char kResultsLogName[] = "MARKETING-RESULTS-%1.LOG";
constexpr char kHeadingMark[] = "== ";

QStringList ReadLogLines(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
  lines.removeAll(QString());
  return lines;
}

QStringList WithoutHeadings(QStringList lines) {
  lines.erase(std::remove_if(lines.begin(), lines.end(),
                             [](const QString& line) { return line.startsWith(QLatin1String(kHeadingMark)); }),
              lines.end());
  return lines;
}

}  // namespace

ResultsLogFile::ResultsLogFile(const QString& logFile, int campaignId)
    : path_(QFileInfo(logFile).dir().filePath(QString::fromLatin1(kResultsLogName).arg(campaignId))) {}

void ResultsLogFile::MoveTo(const ResultsLogFile& other) const {
  if (!QFile::exists(path_)) return;
  QFile::remove(other.path_);
  QFile::rename(path_, other.path_);
}

void ResultsLogFile::Begin(const QString& user, const QDateTime& when, bool resumed) {
  if (!resumed) QFile::remove(path_);
  const QString heading =
      resumed ? QStringLiteral("Went on at %1, started by %2") : QStringLiteral("Run of %1, started by %2");
  Append(QLatin1String(kHeadingMark) + heading.arg(MinuteText(when), user));
}

void ResultsLogFile::Append(const QString& line) {
  QFile file(path_);
  if (file.open(QIODevice::Append)) file.write(line.simplified().toUtf8() + "\r\n");
}

QStringList ResultsLogFile::Read() const {
  return WithoutHeadings(ReadLogLines(path_));
}

QStringList ResultsLogFile::ReadWithHeadings() const {
  return ReadLogLines(path_);
}

QStringList ReadNewestResultsLog(const QString& logFile) {
  const QDir folder = QFileInfo(logFile).dir();
  const QStringList newestFirst =
      folder.entryList({QString::fromLatin1(kResultsLogName).arg(QLatin1Char('*'))}, QDir::Files, QDir::Time);
  return newestFirst.isEmpty() ? QStringList() : WithoutHeadings(ReadLogLines(folder.filePath(newestFirst.first())));
}

RunLog::RunLog(ResultsLog& log, ResultsLogFile file)
    : log_(log),
      file_(std::move(file)),
      listener_(log.Listen([this](const QString& line) { begun_ ? file_.Append(line) : waiting_.append(line); })) {}

RunLog::~RunLog() {
  log_.StopListening(listener_);
}

void RunLog::Begin(const QString& user, const QDateTime& when, bool resumed) {
  if (begun_) return;
  begun_ = true;
  file_.Begin(user, when, resumed);
  for (const QString& line : waiting_)
    file_.Append(line);
  waiting_.clear();
}

}  // namespace qbx
