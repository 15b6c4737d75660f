#include "start_wishes.h"

#include <QRegularExpression>
#include <QSet>

#include "bridge.h"
#include "platform/ini_file.h"
#include "scenario_error.h"

namespace qbx::scenario {
namespace {

const QSet<QString>& KnownNames() {
  static const QSet<QString> kNames = {
      QStringLiteral("garage"),      QStringLiteral("edition"),  QStringLiteral("user"),
      QStringLiteral("commandLine"), QStringLiteral("database"), QStringLiteral("ini"),
      QStringLiteral("registry"),    QStringLiteral("options"),  QStringLiteral("userOptions"),
      QStringLiteral("files"),       QStringLiteral("sandbox"),  QStringLiteral("clock"),
      QStringLiteral("realPauses"),  QStringLiteral("services"), QStringLiteral("reachable")};
  return kNames;
}

void ReadGarage(const QVariant& value, StartWishes& wishes) {
  if (!value.isValid()) return;
  if (IsNumber(value)) {
    wishes.customers = value.toInt();
  } else if (value.typeId() == QMetaType::QVariantMap) {
    const QVariantMap map = value.toMap();
    wishes.customers = map.value(QStringLiteral("customers"), 60).toInt();
    wishes.seed = map.value(QStringLiteral("seed"), 1).toULongLong();
  } else if (value.toString() == QLatin1String("none")) {
    wishes.garage = StartWishes::Garage::kNone;
  } else if (value.toString() == QLatin1String("empty")) {
    wishes.garage = StartWishes::Garage::kEmpty;
  } else if (value.toString() != QLatin1String("small")) {
    throw ScenarioError(QStringLiteral("There is no garage \"%1\".").arg(value.toString()));
  }
}

// What stands behind a switch of the command line.
QString SwitchValue(const QString& commandLine, const QString& name) {
  const QRegularExpression pattern(QStringLiteral("/%1:\\s*([^\\s/]+)").arg(name),
                                   QRegularExpression::CaseInsensitiveOption);
  return pattern.match(commandLine).captured(1);
}

}  // namespace

QString EditionFile(const QString& edition) {
  static const QHash<QString, QString> kFiles = {{QStringLiteral("garage"), QString()},
                                                 {QStringLiteral("vehicleSales"), QStringLiteral("QBX_DA.EXE")},
                                                 {QStringLiteral("commercialVehicle"), QStringLiteral("WEMANAGER.EXE")},
                                                 {QStringLiteral("parts"), QStringLiteral("QBXTESSOR.EXE")},
                                                 {QStringLiteral("boat"), QStringLiteral("QBXMARNEX.EXE")},
                                                 {QStringLiteral("truck"), QStringLiteral("QBXHOVLIN.EXE")}};
  if (!kFiles.contains(edition)) throw ScenarioError(QStringLiteral("There is no edition \"%1\".").arg(edition));
  return kFiles.value(edition);
}

StartWishes StartWishes::Read(const QVariantMap& options) {
  for (auto option = options.begin(); option != options.end(); ++option) {
    if (!KnownNames().contains(option.key()))
      throw ScenarioError(QStringLiteral("start does not know \"%1\".").arg(option.key()));
  }
  const auto text = [&options](const char* name, const QString& missing = {}) {
    return options.value(QLatin1String(name), missing).toString();
  };
  const auto map = [&options](const char* name) { return options.value(QLatin1String(name)).toMap(); };
  StartWishes wishes;
  ReadGarage(options.value(QStringLiteral("garage")), wishes);
  wishes.edition = text("edition", QStringLiteral("garage"));
  wishes.user = text("user", wishes.user);
  wishes.commandLine = options.contains(QStringLiteral("commandLine"))
                           ? text("commandLine")
                           : QStringLiteral("/userid:\"%1\"").arg(wishes.user);
  wishes.database = text("database");
  wishes.ini = map("ini");
  wishes.registry = map("registry");
  wishes.options = map("options");
  wishes.userOptions = map("userOptions");
  wishes.services = map("services");
  wishes.files = options.value(QStringLiteral("files"));
  wishes.sandbox = options.value(QStringLiteral("sandbox"));
  wishes.clock = text("clock");
  wishes.realPauses = options.value(QStringLiteral("realPauses")).toBool();
  wishes.reachable = options.value(QStringLiteral("reachable"), true).toBool();
  return wishes;
}

EditionNames StartWishes::Names(const QString& programFolder) const {
  EditionFlags flags = DetectEdition(programFolder);
  ApplyEditionCode(
      flags, IniFile(programFolder + QStringLiteral("/QBX.INI")).Read(QStringLiteral("App"), QStringLiteral("Name")));
  const QString suffix = SwitchValue(commandLine, QStringLiteral("database"));
  EditionNames names = EditionNamesFor(flags, SwitchValue(commandLine, QStringLiteral("instance")).toUpper(),
                                       suffix.isEmpty() ? QString() : QLatin1Char('_') + suffix);
  if (!database.isEmpty()) names.databaseName = database;
  return names;
}

}  // namespace qbx::scenario
