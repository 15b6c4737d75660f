#include "printing/report_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <optional>

#include "platform/file_names.h"
#include "platform/safe_file.h"

namespace qbx {

namespace {

constexpr char kFolder[] = "Reports";

std::optional<QString> Find(const QString& programFolder, const QString& name) {
  if (auto path = FindFileNoCase(programFolder, QString::fromLatin1(kFolder) + u'/' + name)) return path;
  return FindFileNoCase(programFolder, name);
}

/// Copies one of the program's own definitions to the folder of reports.
void Install(const QString& path, const QString& name) {
  QFile own(QStringLiteral(":/printing/") + name);
  if (!own.open(QIODevice::ReadOnly)) return;
  QDir().mkpath(QFileInfo(path).path());
  static_cast<void>(ReplaceFile(path, own.readAll()));
}

}  // namespace

QString ReportPath(const QString& programFolder, const QString& name) {
  if (const auto path = Find(programFolder, name)) return *path;
  QString path = PathNoCase(programFolder, QString::fromLatin1(kFolder) + u'/' + name);
  Install(path, name);
  return path;
}

QString LetterReportPath(const QString& programFolder, const Options& options) {
  if (const auto own = Find(programFolder, QStringLiteral("MarketingLetter_%1.rpt").arg(options.Customer))) return *own;
  return ReportPath(programFolder, options.MMPrefix + QStringLiteral("MarketingLetter.rpt"));
}

}  // namespace qbx
