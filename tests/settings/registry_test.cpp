// The registry class and the values kept through it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registry/file_registry_store.h"
#include "settings/registry_values.h"
#include "support/memory_registry_store.h"
#include "test_services.h"

namespace qbx::test {
namespace {

using testing::HasSubstr;
using testing::Not;

struct RegistryTest : testing::Test, TestServices {
  MemoryRegistryStore store;
  RegistryFailures failures;
  RegistryServices services{store, diagnostics, failures};
  StartupValues startup;
  RegistryValues values{services, startup};

  RegistryTest() {
    startup.ProductKey = QStringLiteral("SOFTWARE\\Korvel Manager\\");
    startup.user = QStringLiteral("Jo");
  }
  CRegistry Key(const char* path) {
    CRegistry registry(services);
    registry.key = QString::fromLatin1(path);
    return registry;
  }
};

TEST_F(RegistryTest, MakesAllKeysAboveAndReadsByNameInAnyCaseAndByPosition) {
  CRegistry registry = Key("SOFTWARE\\Korvel Manager\\Grid\\");
  registry.AutoCreate = true;
  EXPECT_TRUE(registry.SetValue(QStringLiteral("Width"), QStringLiteral("120"), RegistryType::kNumber));
  EXPECT_TRUE(registry.SetDefault(QStringLiteral("layout")));
  EXPECT_EQ(registry.GetValue(QStringLiteral("WIDTH")), QStringLiteral("120"));
  EXPECT_EQ(registry.GetType(QStringLiteral("width")), RegistryType::kNumber);
  EXPECT_EQ(registry.Default(), QStringLiteral("layout"));
  EXPECT_EQ(registry.ValueCount(), 2);
  EXPECT_EQ(registry.GetName(0), QStringLiteral("Width"));
  EXPECT_EQ(registry.GetValue(2), QString());
}

TEST_F(RegistryTest, AMissingKeyIsNotMadeAndReportedOnce) {
  CRegistry registry = Key("SOFTWARE\\None");
  registry.DebugQueryValue = QStringLiteral("grid widths");
  EXPECT_EQ(registry.GetValue(QStringLiteral("x")), QString());
  EXPECT_FALSE(registry.Refresh());
  EXPECT_EQ(ui.Messages().size(), 1U);
  EXPECT_TRUE(registry.IsMissing());
  EXPECT_EQ(Log().count(QStringLiteral("Error on Key: SOFTWARE\\None")), 2);
  EXPECT_EQ(Log().count(QStringLiteral("Registry - DebugQueryValue: grid widths")), 2);
  EXPECT_THAT(Log().toStdString(), HasSubstr("(in cRegistry.cls)"));
}

TEST_F(RegistryTest, NoErrorsMeansNoBox) {
  CRegistry registry = Key("SOFTWARE\\None");
  registry.bNoErrors = true;
  EXPECT_FALSE(registry.Refresh());
  EXPECT_FALSE(registry.SetValue(QStringLiteral("x"), QStringLiteral("1")));
  EXPECT_TRUE(ui.Messages().empty());
}

TEST_F(RegistryTest, AKeyThatCannotBeMadeIsLoggedAndItsValueRefused) {
  store.writeError = QStringLiteral("no permission");
  EXPECT_FALSE(
      values.sysSaveValueToRegistry(QStringLiteral("Export"), QStringLiteral("Open"), QStringLiteral("Yes"), false));
  EXPECT_FALSE(
      values.sysSaveValueToRegistry(QStringLiteral("Export"), QStringLiteral("Open"), QStringLiteral("Yes"), false));
  EXPECT_THAT(ui.MessageTexts(), testing::ElementsAre(QStringLiteral("Could not set value")));
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("Error on Create Registry Key: SOFTWARE,  Err: Unknown Error: no permission"));
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("sufficient Windows permissionsError at 4824 Creating Key:SOFTWARE, Err: "));
}

TEST_F(RegistryTest, AValueThatCannotBeWrittenHasItsOwnMessage) {
  store.Put(RegistryHive::kCurrentUser, QStringLiteral("K"), QStringLiteral("a"), QStringLiteral("1"));
  store.writeError = QStringLiteral("disk full");
  EXPECT_FALSE(Key("K").SetValue(QStringLiteral("a"), QStringLiteral("2")));
  EXPECT_THAT(ui.MessageTexts(), testing::ElementsAre(QStringLiteral("Couldn't write new value.")));
}

TEST_F(RegistryTest, DeletesAKeyWithAllBelowIt) {
  store.Put(RegistryHive::kCurrentUser, QStringLiteral("K\\a\\b"), QStringLiteral("v"), QStringLiteral("1"));
  EXPECT_TRUE(Key("K").DeleteKey());
  EXPECT_FALSE(store.KeyExists(RegistryHive::kCurrentUser, QStringLiteral("K")));
}

TEST_F(RegistryTest, ValuesStandBelowTheProductOrTheUser) {
  startup.debug = true;
  EXPECT_TRUE(
      values.sysSaveValueToRegistry(QStringLiteral("Export"), QStringLiteral("Open"), QStringLiteral("Yes"), true));
  EXPECT_EQ(store.Get(RegistryHive::kCurrentUser, QStringLiteral("SOFTWARE\\Korvel Manager\\Jo\\Export"),
                      QStringLiteral("Open")),
            QStringLiteral("Yes"));
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("SaveReg Local folder: SOFTWARE\\Korvel Manager\\Jo\\Export, Key: Open, Val: Yes"));
  const auto load = [this](const RegistryRead& how) {
    return values.sysLoadValueFromRegistry(QStringLiteral("Export"), QStringLiteral("Open"), how);
  };
  EXPECT_EQ(load({.perUser = true}), QStringLiteral("Yes"));
  EXPECT_EQ(load({}), QString());
  EXPECT_EQ(load({.emptyAsFalse = true}), QStringLiteral("False"));
  EXPECT_EQ(load({.emptyAsFalse = true, .defaultValue = QStringLiteral("No")}), QStringLiteral("No"));
  EXPECT_EQ(load({.baseKey = QStringLiteral("SOFTWARE\\Korvel Manager\\Jo\\")}), QStringLiteral("Yes"));
  EXPECT_EQ(load({.perUser = true, .machineHive = true}), QString());
  EXPECT_TRUE(ui.Messages().empty()) << "a value that was never stored is no failure";
  EXPECT_THAT(Log().toStdString(), Not(HasSubstr("Error on Key")));
}

TEST_F(RegistryTest, ADamagedHiveGivesDefaultsIsToldOnceAndKept) {
  const QByteArray damaged =
      "Windows Registry Editor Version 5.00\r\n\r\n[HKEY_LOCAL_MACHINE\\SOFTWARE\r\n\"Server\"=oops\r\n";
  folder.Write(QStringLiteral("registry/machine.reg"), damaged);
  FileRegistryStore files(folder.File(QStringLiteral("registry")));
  RegistryValues broken({files, diagnostics, failures}, startup);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(
        broken.sysLoadValueFromLocalMachine(QStringLiteral("Login"), QStringLiteral("Company"), QStringLiteral("A")),
        QStringLiteral("A"));
  }
  EXPECT_FALSE(broken.SaveValueToLocalMachine(QStringLiteral("Login"), QStringLiteral("FConfig"), QStringLiteral("Y")));
  ASSERT_EQ(ui.Messages().size(), 1U);
  EXPECT_THAT(ui.Messages().front().text.toStdString(), HasSubstr("machine.reg"));
  EXPECT_EQ(folder.Read(QStringLiteral("registry/machine.reg")), damaged);
}

TEST(WindowPositions, AreReadWithLimits) {
  const auto read = [](const char* text) { return ParseWindowPosition(QString::fromLatin1(text)); };
  EXPECT_EQ(read("10, 20, 3000, 2000"), (WindowPosition{10, 20, 3000, 2000}));
  EXPECT_EQ(read("-15,-30,3000,5"), (WindowPosition{0, -30, 3000, 1200}));
  for (const char* text : {"", "1, 2, 3", "1, 2, 3, 4, 5", "1, 2, x, 4", "1, 2, 3.5, 4", "99999999999, 1, 1, 1"}) {
    EXPECT_FALSE(read(text).has_value()) << text;
  }
}

TEST_F(RegistryTest, OnlyANormalWindowIsStored) {
  const QString form = QStringLiteral("frmMain");
  values.SaveWindowPosition(form, {1, 2, 3, 1400}, false);
  values.SaveWindowPosition(form, {0, 0, 9, 9999}, true);
  EXPECT_EQ(store.Get(RegistryHive::kCurrentUser, QStringLiteral("SOFTWARE\\Korvel Manager\\Jo\\frmMain"),
                      QStringLiteral("WinPos")),
            QStringLiteral("1, 2, 3, 1400"));
  EXPECT_EQ(values.LoadWindowPosition(form), (WindowPosition{1, 2, 3, 1400}));
}

TEST_F(RegistryTest, ListColumnsComeBackWholeOrNotAtAll) {
  const QString list = QStringLiteral("lvCampaigns");
  const std::vector<ListViewColumn> columns = {{1, 120}, {0, 80}, {2, 0}};
  values.sysSaveListViewPos(list, columns);
  EXPECT_EQ(values.sysLoadListViewPos(list, 3), columns);
  EXPECT_FALSE(values.sysLoadListViewPos(list, 4).has_value());
  store.Put(RegistryHive::kCurrentUser, QStringLiteral("SOFTWARE\\Korvel Manager\\Jo\\lvCampaigns"),
            QStringLiteral("View02"), QStringLiteral("1, 80"));
  EXPECT_FALSE(values.sysLoadListViewPos(list, 3).has_value()) << "two columns in one place";
}

}  // namespace
}  // namespace qbx::test
