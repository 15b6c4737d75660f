#include "marketingctl/results_log_file.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace qbx::ctl {

namespace {

constexpr char kName[] = "MARKETING-RESULTS-%1.LOG";

QStringList ReadLines(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
  lines.removeAll(QString());
  return lines;
}

}  // namespace

ResultsLogFile::ResultsLogFile(const QString& logFile, int campaignId)
    : path_(QFileInfo(logFile).dir().filePath(QString::fromLatin1(kName).arg(campaignId))) {}

void ResultsLogFile::Begin() {
  QFile::remove(path_);
}

void ResultsLogFile::Append(const QString& line) {
  QFile file(path_);
  if (file.open(QIODevice::Append)) file.write(line.simplified().toUtf8() + "\r\n");
}

QStringList ResultsLogFile::Read() const {
  return ReadLines(path_);
}

QStringList ReadNewestResultsLog(const QString& logFile) {
  const QDir folder = QFileInfo(logFile).dir();
  const QStringList newestFirst =
      folder.entryList({QString::fromLatin1(kName).arg(QLatin1Char('*'))}, QDir::Files, QDir::Time);
  return newestFirst.isEmpty() ? QStringList() : ReadLines(folder.filePath(newestFirst.first()));
}

}  // namespace qbx::ctl
