#include "world_commands.h"

#include <QDirIterator>
#include <QFile>
#include <QtWidgets/QLabel>

#include "find_control.h"
#include "scenario_error.h"

namespace qbx::scenario {

QVariant WorldCommands::statusBox() const {
  const auto* text = qobject_cast<QLabel*>(TryFindControl(QStringLiteral("frmProcessing.lblMessage")));
  if (!on_.Ui().StatusVisible() || text == nullptr) return QVariant::fromValue(nullptr);
  const auto* cancel = qobject_cast<QWidget*>(TryFindControl(QStringLiteral("frmProcessing.cmdCancel")));
  return QVariantMap{{"text", PlainLines(text->text())}, {"cancel", cancel != nullptr && cancel->isVisible()}};
}

QStringList WorldCommands::files() const {
  const QDir folder(on_.Folder().Path());
  QStringList names;
  QDirIterator files(folder.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext())
    names += folder.relativeFilePath(files.next());
  names.sort();
  return names;
}

QString WorldCommands::readFile(const QString& name) const {
  QFile file(QDir(on_.Folder().Path()).filePath(name));
  if (!file.open(QIODevice::ReadOnly))
    throw ScenarioError(QStringLiteral("%1 cannot be read: %2").arg(file.fileName(), file.errorString()));
  return QString::fromUtf8(file.readAll());
}

void WorldCommands::removeFile(const QString& name) const {
  if (!QFile::remove(on_.Folder().File(name))) throw ScenarioError(QStringLiteral("There is no file %1.").arg(name));
}

QStringList WorldCommands::log() const {
  const QString name = QStringLiteral("MARKETING.LOG");
  if (!QFile::exists(on_.Folder().File(name))) return {};
  QStringList lines = readFile(name).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts);
  for (QString& line : lines)
    line = PlainLines(line);
  return lines;
}

void WorldCommands::setIni(const QString& section, const QString& key, const QString& value) const {
  if (!Ini().Write(section, key, value)) throw ScenarioError(QStringLiteral("QBX.INI could not be written."));
}

QVariantList WorldCommands::printJobs() const {
  QVariantList jobs;
  for (const auto& [printer, job, pdf] : on_.printers.printed)
    jobs.append(QVariantMap{{"printer", printer},
                            {"title", job.title},
                            {"copies", job.copies},
                            {"bothSides", job.bothSides},
                            {"tray", job.tray},
                            {"pages", pdf.count("/Type /Page\n")}});
  return jobs;
}

}  // namespace qbx::scenario
