#include "start_wishes.h"

#include <QRegularExpression>

#include "bridge.h"
#include "platform/ini_file.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

// All names with their defaults.
const QVariantMap kUnnamed = {{"garage", "small"},   {"edition", "garage"}, {"user", "Pat"},    {"commandLine", {}},
                              {"database", {}},      {"ini", {}},           {"registry", {}},   {"options", {}},
                              {"userOptions", {}},   {"files", {}},         {"sandbox", {}},    {"clock", {}},
                              {"realPauses", false}, {"services", {}},      {"reachable", true}};

const QHash<QString, QString> kEditionFiles = {{"garage", ""},
                                               {"vehicleSales", "QBX_DA.EXE"},
                                               {"commercialVehicle", "WEMANAGER.EXE"},
                                               {"parts", "QBXTESSOR.EXE"},
                                               {"boat", "QBXMARNEX.EXE"},
                                               {"truck", "QBXHOVLIN.EXE"}};

// The value of a switch of the command line.
QString SwitchValue(const QString& commandLine, const QString& name) {
  const QRegularExpression pattern(QStringLiteral("/%1:\\s*([^\\s/]+)").arg(name),
                                   QRegularExpression::CaseInsensitiveOption);
  return pattern.match(commandLine).captured(1);
}

}  // namespace

StartWishes::StartWishes(const QVariantMap& options) : wishes_(kUnnamed) {
  for (auto option = options.begin(); option != options.end(); ++option) {
    if (!kUnnamed.contains(option.key()))
      throw ScenarioError(QStringLiteral("start does not know \"%1\".").arg(option.key()));
    wishes_.insert(option.key(), option.value());
  }
  const QString garage = IsNumber((*this)["garage"]) ? QString() : Text("garage");
  if (!QStringList{"", "small", "empty", "none"}.contains(garage))
    throw ScenarioError(QStringLiteral("There is no garage \"%1\".").arg(garage));
  if (!options.contains("commandLine"))
    wishes_.insert("commandLine", QStringLiteral("/userid:\"%1\"").arg(Text("user")));
}

QString StartWishes::EditionFile() const {
  if (!kEditionFiles.contains(Text("edition")))
    throw ScenarioError(QStringLiteral("There is no edition \"%1\".").arg(Text("edition")));
  return kEditionFiles.value(Text("edition"));
}

EditionNames StartWishes::Names(const QString& programFolder) const {
  EditionFlags flags = DetectEdition(programFolder);
  ApplyEditionCode(
      flags, IniFile(programFolder + QStringLiteral("/QBX.INI")).Read(QStringLiteral("App"), QStringLiteral("Name")));
  const QString suffix = SwitchValue(Text("commandLine"), "database");
  EditionNames names = EditionNamesFor(flags, SwitchValue(Text("commandLine"), "instance").toUpper(),
                                       suffix.isEmpty() ? QString() : QLatin1Char('_') + suffix);
  if (!Text("database").isEmpty()) names.databaseName = Text("database");
  return names;
}

void StartWishes::KeepDatabase(const StartWishes& last) {
  if (Text("database").isEmpty()) wishes_.insert("database", last["database"]);
}

}  // namespace qbx::scenario
