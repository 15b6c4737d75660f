// The registry class and the values kept through it.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "registry/file_registry_store.h"
#include "settings/registry_values.h"
#include "support/memory_registry_store.h"
#include "support/test_services.h"

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
    startup.ProductKey = "SOFTWARE\\Korvel Manager\\";
    startup.user = "Jo";
  }
  CRegistry Key(const char* path) {
    CRegistry registry(services);
    registry.key = path;
    return registry;
  }
};

TEST_F(RegistryTest, MakesAllKeysAboveAndReadsByNameInAnyCaseAndByPosition) {
  CRegistry registry = Key("SOFTWARE\\Korvel Manager\\Grid\\");
  registry.AutoCreate = true;
  EXPECT_TRUE(registry.SetValue("Width", "120", RegistryType::kNumber));
  EXPECT_TRUE(registry.SetDefault("layout"));
  EXPECT_EQ(registry.GetValue("WIDTH"), "120");
  EXPECT_EQ(registry.GetType("width"), RegistryType::kNumber);
  EXPECT_EQ(registry.Default(), "layout");
  EXPECT_EQ(registry.ValueCount(), 2);
  EXPECT_EQ(registry.GetName(0), "Width");
  EXPECT_EQ(registry.GetValue(2), QString());
}

TEST_F(RegistryTest, AMissingKeyIsNotMadeAndReportedOnce) {
  CRegistry registry = Key("SOFTWARE\\None");
  registry.DebugQueryValue = "grid widths";
  EXPECT_EQ(registry.GetValue("x"), QString());
  EXPECT_FALSE(registry.Refresh());
  EXPECT_EQ(ui.Messages().size(), 1U);
  EXPECT_TRUE(registry.IsMissing());
  EXPECT_EQ(Log().count("Error on Key: SOFTWARE\\None"), 2);
  EXPECT_EQ(Log().count("Registry - DebugQueryValue: grid widths"), 2);
  EXPECT_THAT(Log().toStdString(), HasSubstr("(in cRegistry.cls)"));
}

TEST_F(RegistryTest, NoErrorsMeansNoBox) {
  CRegistry registry = Key("SOFTWARE\\None");
  registry.bNoErrors = true;
  EXPECT_FALSE(registry.Refresh());
  EXPECT_FALSE(registry.SetValue("x", "1"));
  EXPECT_TRUE(ui.Messages().empty());
}

TEST_F(RegistryTest, AKeyThatCannotBeMadeIsLoggedAndItsValueRefused) {
  store.writeError = "no permission";
  EXPECT_FALSE(values.sysSaveValueToRegistry("Export", "Open", "Yes", false));
  EXPECT_FALSE(values.sysSaveValueToRegistry("Export", "Open", "Yes", false));
  EXPECT_THAT(ui.MessageTexts(), testing::ElementsAre("Could not set value"));
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("Error on Create Registry Key: SOFTWARE,  Err: Unknown Error: no permission"));
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("sufficient Windows permissionsError at 4824 Creating Key:SOFTWARE, Err: "));
}

TEST_F(RegistryTest, AValueThatCannotBeWrittenHasItsOwnMessage) {
  store.Put(RegistryHive::kCurrentUser, "K", "a", "1");
  store.writeError = "disk full";
  EXPECT_FALSE(Key("K").SetValue("a", "2"));
  EXPECT_THAT(ui.MessageTexts(), testing::ElementsAre("Couldn't write new value."));
}

TEST_F(RegistryTest, DeletesAKeyWithAllBelowIt) {
  store.Put(RegistryHive::kCurrentUser, "K\\a\\b", "v", "1");
  EXPECT_TRUE(Key("K").DeleteKey());
  EXPECT_FALSE(store.KeyExists(RegistryHive::kCurrentUser, "K"));
}

TEST_F(RegistryTest, ValuesStandBelowTheProductOrTheUser) {
  startup.debug = true;
  EXPECT_TRUE(values.sysSaveValueToRegistry("Export", "Open", "Yes", true));
  EXPECT_EQ(store.Get(RegistryHive::kCurrentUser, "SOFTWARE\\Korvel Manager\\Jo\\Export", "Open"), "Yes");
  EXPECT_THAT(Log().toStdString(),
              HasSubstr("SaveReg Local folder: SOFTWARE\\Korvel Manager\\Jo\\Export, Key: Open, Val: Yes"));
  const auto load = [this](const RegistryRead& how) { return values.sysLoadValueFromRegistry("Export", "Open", how); };
  EXPECT_EQ(load({.perUser = true}), "Yes");
  EXPECT_EQ(load({}), QString());
  EXPECT_EQ(load({.emptyAsFalse = true}), "False");
  EXPECT_EQ(load({.emptyAsFalse = true, .defaultValue = "No"}), "No");
  EXPECT_EQ(load({.baseKey = "SOFTWARE\\Korvel Manager\\Jo\\"}), "Yes");
  EXPECT_EQ(load({.perUser = true, .machineHive = true}), QString());
  EXPECT_TRUE(ui.Messages().empty()) << "a value that was never stored is no failure";
  EXPECT_THAT(Log().toStdString(), Not(HasSubstr("Error on Key")));
}

TEST(WindowPositions, AreReadWithLimits) {
  const auto read = [](const char* text) { return ParseWindowPosition(text); };
  EXPECT_EQ(read("10, 20, 3000, 2000"), (WindowPosition{10, 20, 3000, 2000}));
  EXPECT_EQ(read("-15,-30,3000,5"), (WindowPosition{0, -30, 3000, 1200}));
  for (const char* text : {"", "1, 2, 3", "1, 2, 3, 4, 5", "1, 2, x, 4", "1, 2, 3.5, 4", "99999999999, 1, 1, 1"}) {
    EXPECT_FALSE(read(text).has_value()) << text;
  }
}

TEST_F(RegistryTest, OnlyANormalWindowIsStored) {
  const QString form = "frmMain";
  values.SaveWindowPosition(form, {1, 2, 3, 1400}, false);
  values.SaveWindowPosition(form, {0, 0, 9, 9999}, true);
  EXPECT_EQ(store.Get(RegistryHive::kCurrentUser, "SOFTWARE\\Korvel Manager\\Jo\\frmMain", "WinPos"), "1, 2, 3, 1400");
  EXPECT_EQ(values.LoadWindowPosition(form), (WindowPosition{1, 2, 3, 1400}));
}

TEST_F(RegistryTest, ListColumnsComeBackWholeOrNotAtAll) {
  const QString list = "lvCampaigns";
  const std::vector<ListViewColumn> columns = {{1, 120}, {0, 80}, {2, 0}};
  values.sysSaveListViewPos(list, columns);
  EXPECT_EQ(values.sysLoadListViewPos(list, 3), columns);
  EXPECT_FALSE(values.sysLoadListViewPos(list, 4).has_value());
  store.Put(RegistryHive::kCurrentUser, "SOFTWARE\\Korvel Manager\\Jo\\lvCampaigns", "View02", "1, 80");
  EXPECT_FALSE(values.sysLoadListViewPos(list, 3).has_value()) << "two columns in one place";
}

}  // namespace
}  // namespace qbx::test
