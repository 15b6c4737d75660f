// Which edition the files and the INI code make, and the names that follow.

#include <gtest/gtest.h>

#include "settings/edition_names.h"
#include "support/temp_folder.h"

namespace qbx::test {
namespace {

struct FilesCase {
  std::vector<const char*> files;
  EditionFlags expected;
};

TEST(Editions, AreFoundByFilesInAnyCase) {
  const std::vector<FilesCase> cases = {
      {{}, {}},
      {{"qbx_da.exe"}, {.vehicleSales = true}},
      {{"WeManager.exe"}, {.commercialVehicle = true}},
      {{"WEMANAGER.EXE", "QBXTESSOR.EXE"}, {.parts = true}},
      {{"QBXTESSOR.EXE", "QBXMARNEX.EXE"}, {.boat = true}},
      {{"QBXHOVLIN.EXE", "QBXMARNEX.EXE"}, {.truck = true}},
      {{"QBXHOVLIN.EXE", "QBXMARNEX.EXE", "KORVEL.EXE"}, {}},
      {{"QBX_DA.EXE", "KORVEL.EXE", "WEMANAGER.EXE"}, {.vehicleSales = true}},
  };
  for (const FilesCase& c : cases) {
    TempFolder folder;
    for (const char* file : c.files)
      folder.Write(QString::fromLatin1(file), "");
    EXPECT_EQ(DetectEdition(folder.Path()), c.expected) << testing::PrintToString(c.files);
  }
  EXPECT_EQ(DetectEdition(QStringLiteral("/no/such/folder")), EditionFlags());
}

TEST(Editions, TheIniCodeOnlyTurnsFlagsOn) {
  EditionFlags edition = {.boat = true};
  ApplyEditionCode(edition, QStringLiteral("KO"));
  EXPECT_EQ(edition, (EditionFlags{.boat = true}));
  ApplyEditionCode(edition, QStringLiteral(" ho "));
  EXPECT_EQ(edition, (EditionFlags{.truck = true, .boat = true}));
}

TEST(Editions, TheLastEditionThatAppliesGivesTheNames) {
  const EditionNames both =
      EditionNamesFor({.truck = true, .boat = true}, QStringLiteral("TWO"), QStringLiteral("_North"));
  EXPECT_EQ(both.productKey, QStringLiteral("SOFTWARE\\QBX Marnex Manager TWO\\"));
  EXPECT_EQ(both.databaseName, QStringLiteral("QBXMarnexManager_North"));
  const EditionNames garage = EditionNamesFor({}, {}, {});
  EXPECT_EQ(garage.productKey, QStringLiteral("SOFTWARE\\Korvel Manager\\"));
  EXPECT_EQ(garage.databaseName, QStringLiteral("QBXKorvelManager"));
}

}  // namespace
}  // namespace qbx::test
