#include "settings/edition_names.h"

#include <array>

#include "platform/file_names.h"
#include "util/text.h"

namespace qbx {
namespace {

struct EditionRow {
  bool EditionFlags::*flag;  ///< null for the garage edition, which always applies
  const char* registryKey;
  const char* databaseBaseName;
};

// A later row that applies overrides an earlier one.
constexpr auto kEditions = std::to_array<EditionRow>({
    {nullptr, R"(SOFTWARE\Korvel Manager)", "QBXKorvelManager"},
    {&EditionFlags::vehicleSales, R"(SOFTWARE\Dastra Manager)", "QBXDastraManager"},
    {&EditionFlags::truck, R"(SOFTWARE\QBX Hovlin Manager)", "QBXHovlinManager"},
    {&EditionFlags::boat, R"(SOFTWARE\QBX Marnex Manager)", "QBXMarnexManager"},
    {&EditionFlags::parts, R"(SOFTWARE\QBX Tessor Manager)", "QBXTessorManager"},
    {&EditionFlags::commercialVehicle, R"(SOFTWARE\QBX Wendal Manager)", "QBXWendalManager"},
});

}  // namespace

EditionNames EditionNamesFor(const EditionFlags& edition, const QString& instance, const QString& databaseSuffix) {
  EditionNames names;
  for (const EditionRow& row : kEditions) {
    if (row.flag != nullptr && !(edition.*row.flag)) continue;
    names.productKey = QString::fromLatin1(row.registryKey);
    names.databaseName = QString::fromLatin1(row.databaseBaseName);
  }
  if (!instance.isEmpty()) names.productKey += QLatin1Char(' ') + instance;
  names.productKey += QLatin1Char('\\');
  names.databaseName += databaseSuffix;
  return names;
}

void WorkOutEditionNames(StartupValues& startup) {
  const EditionNames names = EditionNamesFor(startup.edition, startup.instance, startup.DatabaseSuffix);
  startup.ProductKey = names.productKey;
  startup.databaseName = names.databaseName;
  startup.title = QString::fromLatin1(kProgramTitle);
}

EditionFlags DetectEdition(const QString& programFolder) {
  const auto present = [&](const char* file) {
    return FindFileNoCase(programFolder, QString::fromLatin1(file)).has_value();
  };
  EditionFlags edition;
  edition.vehicleSales = present("QBX_DA.EXE");
  edition.commercialVehicle = present("WEMANAGER.EXE");
  // Each of these editions replaces those before it, but never vehicle sales, which combines with any edition.
  const bool vehicleSales = edition.vehicleSales;
  if (present("QBXTESSOR.EXE")) edition = {.vehicleSales = vehicleSales, .parts = true};
  if (present("QBXMARNEX.EXE")) edition = {.vehicleSales = vehicleSales, .boat = true};
  if (present("QBXHOVLIN.EXE")) edition = {.vehicleSales = vehicleSales, .truck = true};
  if (present("KORVEL.EXE")) edition = {.vehicleSales = vehicleSales};
  return edition;
}

EditionFlags EditionOfFolder(const QString& programFolder, const IniFile& ini) {
  EditionFlags edition = DetectEdition(programFolder);
  ApplyEditionCode(edition, ini.Read(QStringLiteral("App"), QStringLiteral("Name"), QStringLiteral("KO")));
  return edition;
}

void ApplyEditionCode(EditionFlags& edition, const QString& code) {
  const QString upper = TrimBlanks(code).toUpper();
  if (upper == QStringLiteral("DA")) edition.vehicleSales = true;
  if (upper == QStringLiteral("HO")) edition.truck = true;
  if (upper == QStringLiteral("MX")) edition.boat = true;
}

}  // namespace qbx
