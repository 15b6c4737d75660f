#include "marketingctl/results_log_file.h"

#include <QFile>
#include <QFileInfo>

namespace qbx::ctl {

ResultsLogFile::ResultsLogFile(const QString& logFile, int campaignId)
    : path_(QFileInfo(logFile).path() + QStringLiteral("/MARKETING-RESULTS-") + QString::number(campaignId) +
            QStringLiteral(".LOG")) {}

void ResultsLogFile::Begin() {
  QFile::remove(path_);
}

void ResultsLogFile::Append(const QString& line) {
  QFile file(path_);
  if (file.open(QIODevice::Append)) file.write(line.simplified().toUtf8() + "\r\n");
}

QStringList ResultsLogFile::Read() const {
  QFile file(path_);
  if (!file.open(QIODevice::ReadOnly)) return {};
  QStringList lines = QString::fromUtf8(file.readAll()).split(QStringLiteral("\r\n"));
  lines.removeAll(QString());
  return lines;
}

}  // namespace qbx::ctl
