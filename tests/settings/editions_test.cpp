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
      folder.Write(file, "");
    EXPECT_EQ(DetectEdition(folder.Path()), c.expected) << testing::PrintToString(c.files);
  }
  EXPECT_EQ(DetectEdition("/no/such/folder"), EditionFlags());
}

TEST(Editions, TheIniCodeOnlyTurnsFlagsOn) {
  EditionFlags edition = {.boat = true};
  ApplyEditionCode(edition, "KO");
  EXPECT_EQ(edition, (EditionFlags{.boat = true}));
  ApplyEditionCode(edition, " ho ");
  EXPECT_EQ(edition, (EditionFlags{.truck = true, .boat = true}));
}

TEST(Editions, TheLastEditionThatAppliesGivesTheNames) {
  const EditionNames both = EditionNamesFor({.truck = true, .boat = true}, "TWO", "_North");
  EXPECT_EQ(both.productKey, "SOFTWARE\\QBX Marnex Manager TWO\\");
  EXPECT_EQ(both.databaseName, "QBXMarnexManager_North");
  const EditionNames garage = EditionNamesFor({}, {}, {});
  EXPECT_EQ(garage.productKey, "SOFTWARE\\Korvel Manager\\");
  EXPECT_EQ(garage.databaseName, "QBXKorvelManager");
}

}  // namespace
}  // namespace qbx::test
