// Reading the company's and the user's options.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "fake_host.h"
#include "settings/options_loader.h"
#include "settings/user_options.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString kRowA = QStringLiteral("proc_selp__Option('A')");
const QString kReadError = QStringLiteral("Error reading all settings data. The database may need updating.");

/// A row in which every key is NULL.
FakeRow NullRow() {
  FakeRow row;
  for (const OptionKey& key : OptionKeys())
    row.Set(QString::fromLatin1(key.name), Value::Null());
  return row;
}

struct OptionsTest : testing::Test, HostFixture {
  QString iniPath = folder.Write(QStringLiteral("QBX.INI"), "[App]\r\nCustomer=old\r\n");
  IniFile ini{iniPath};
  HostCipher cipher{folder.File(QStringLiteral("QBX.KEY")), log};
  StartupValues startup;
  Options options;
  OptionsLoader loader{statements, ini, cipher, startup, context, options, diagnostics};

  OptionsTest() {
    startup.title = QStringLiteral("QBX Marketing & Reporting Module");
    SetVersions(75, kModuleSchemaLevel);
    host.answers[kRowA] = NullRow();
    Connect();
  }
  void SetVersions(int database, int module) {
    FakeRow row;
    row.Set(QStringLiteral("Version"), database);
    row.Set(QStringLiteral("Marketing_Version"), module);
    host.answers[QStringLiteral("proc__OptionVersion")] = row;
  }
  void Set(const char* name, const Value& value, const QString& row = kRowA) {
    host.answers[row].Set(QString::fromLatin1(name), value);
  }
};

TEST_F(OptionsTest, NullKeysGetTheirDefaults) {
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(options.Timeout, 15);
  EXPECT_EQ(options.Reminder_From_SMS, QStringLiteral("The Garage"));
  EXPECT_EQ(options.MOT_Reminder_Name, QStringLiteral("MOT"));
  EXPECT_EQ(options.RemindersFont, QStringLiteral("Tahoma"));
  EXPECT_EQ(options.RemindersFontSize, 10);
  EXPECT_EQ(context.DatabaseVersion, 75);
  EXPECT_FALSE(options.SMS);
  EXPECT_EQ(options.SMTP_Port, QString());
}

TEST_F(OptionsTest, TheConnectionTakesTheTimeOutButNeverLessThanThreeSeconds) {
  for (const auto& [stored, used] : {std::pair(0, 15), {2, 15}, {-5, 15}, {3, 3}, {90, 90}}) {
    Set("Timeout", stored);
    ASSERT_TRUE(loader.LoadOptions());
    EXPECT_EQ(connection.CommandTimeout(), used) << stored;
  }
}

TEST_F(OptionsTest, TheSenderOfTextsIsNeverBlank) {
  struct Case {
    const char* from;
    const char* senderId;
    const char* resolved;
  };
  for (const Case& c : {Case{"", "ABC Motors", "ABC Motors"},
                        {"", "", "The Garage"},
                        {"The Garage", "ABC", "ABC"},
                        {"The Garage", "  ", "The Garage"},
                        {"Smith's", "ABC", "Smith's"},
                        {"  ", "ABC", "The Garage"}}) {
    Set("Reminder_From_SMS", QString::fromLatin1(c.from));
    Set("SMS_Sender_ID", QString::fromLatin1(c.senderId));
    ASSERT_TRUE(loader.LoadOptions());
    EXPECT_EQ(options.Reminder_From_SMS, QString::fromLatin1(c.resolved)) << c.from << "|" << c.senderId;
  }
}

TEST_F(OptionsTest, OnlyAMarkedMailPasswordIsDeciphered) {
  QString error;
  ASSERT_EQ(HostCipher::CreateKeyFile(cipher.KeyFile()), QString());
  const QString enciphered = *cipher.Encipher(QStringLiteral("s3cret £"), &error);
  for (const auto& [stored, used] : {std::pair(QStringLiteral("b64!/") + enciphered, QStringLiteral("s3cret £")),
                                     {enciphered, enciphered},
                                     {QStringLiteral("plain"), QStringLiteral("plain")},
                                     {QStringLiteral("b64!/nonsense"), QString()}}) {
    Set("SMTP_Password", stored);
    ASSERT_TRUE(loader.LoadOptions());
    EXPECT_EQ(options.SMTP_Password, used);
  }
  EXPECT_THAT(Log().toStdString(), HasSubstr("option SMTP_Password could not be deciphered"));
  EXPECT_THAT(Log().toStdString(), testing::Not(HasSubstr("nonsense")));
}

TEST_F(OptionsTest, AnotherCompanyReadsItsOwnRowAndInheritsNothing) {
  startup.companyCode = QStringLiteral("B'1");
  const QString ownRow = QStringLiteral("proc_selp__Option('B''1')");
  host.answers[ownRow] = NullRow();
  Set("SMS_Server", QStringLiteral("a.example"));
  Set("CoTelNo", QStringLiteral("01 of A"));
  Set("Using_Vrelo", true);
  Set("Using_Vrelo", false, ownRow);
  Set("CoTelNo", QStringLiteral("02 of B"), ownRow);
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_EQ(options.SMS_Server, QString());
  EXPECT_EQ(options.CoTelNo, QStringLiteral("02 of B"));
  EXPECT_TRUE(options.Using_Vrelo) << "read from company A whoever logs in";
}

TEST_F(OptionsTest, TheFaxMarkerTurnsVehicleSalesOnAndTheNamesFollow) {
  startup.databaseName = QStringLiteral("FromRegistry");
  Set("CoFaxNo", QStringLiteral("vrm"));
  Set("Accounts_Export", true);
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(startup.edition.vehicleSales);
  EXPECT_FALSE(options.Accounts_Export);
  EXPECT_EQ(startup.databaseName, QStringLiteral("QBXDastraManager"));
  EXPECT_EQ(startup.ProductKey, QStringLiteral("SOFTWARE\\Dastra Manager\\"));
}

TEST_F(OptionsTest, AChangedCustomerCodeIsWrittenToTheIniFile) {
  Set("Customer", QStringLiteral("New12"));
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_EQ(options.Customer, QStringLiteral("new12"));
  EXPECT_EQ(startup.customerCode, QStringLiteral("new12"));
  EXPECT_EQ(ini.Read(QStringLiteral("App"), QStringLiteral("Customer")), QStringLiteral("new12"));
}

TEST_F(OptionsTest, AFailedReadKeepsWhatWasReadBefore) {
  Set("SMS_ClientID", QStringLiteral("garage7"));
  Set("SMS_Sender_ID", QStringLiteral("ABC"));
  options.SMTP_Server = QStringLiteral("kept.example");
  startup.databaseName = QStringLiteral("FromRegistry");
  host.answers[kRowA].Remove(QStringLiteral("Reminder_From_Name"));
  EXPECT_FALSE(loader.LoadOptions());
  EXPECT_THAT(ui.MessageTexts(), ElementsAre(kReadError));
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kExclamation);
  EXPECT_EQ(options.SMS_ClientID, QStringLiteral("garage7"));
  EXPECT_EQ(options.SMTP_Server, QStringLiteral("kept.example"));
  EXPECT_EQ(startup.databaseName, QStringLiteral("FromRegistry"));
}

TEST_F(OptionsTest, MissingReportKeysAreNoFault) {
  for (const OptionKey& key : OptionKeys()) {
    if (key.mayBeMissing) host.answers[kRowA].Remove(QString::fromLatin1(key.name));
  }
  EXPECT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(options.RemindersFont, QStringLiteral("Tahoma"));
}

TEST_F(OptionsTest, ACompanyWithoutARowIsAFailure) {
  host.answers[kRowA].isEmpty = true;
  EXPECT_FALSE(loader.LoadOptions());
  EXPECT_THAT(ui.MessageTexts(), ElementsAre(kReadError));
}

TEST_F(OptionsTest, AnotherModuleLevelIsToldAndLoadingGoesOn) {
  SetVersions(75, 5);
  Set("SMS", true);
  EXPECT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(options.SMS);
  ASSERT_THAT(
      ui.MessageTexts(),
      ElementsAre(QStringLiteral("The QBX Marketing & Reporting Module needs to be updated!\r\r"
                                 "At least one existing system, and the server database has been updated.\r\r"
                                 "If you continue to use the program, unexpected errors may occur.\r\r"
                                 "Choose Check for Program Updates from the main QBX Management system Help menu.\r\r"
                                 "Update Codes: P-6, DB-5")));
  EXPECT_THAT(Log().toStdString(), HasSubstr("04/03/2026Marketing Module Update Required. Update Codes: P-6, DB-5"));
}

TEST_F(OptionsTest, WithoutADatabaseNothingIsShown) {
  Connection never{[this](const ConnectionTarget&, const Login&, int) { return std::make_unique<FakeSession>(host); }};
  Statements offline{never, interpretation, events, lastError, diagnostics};
  OptionsLoader offlineLoader{offline, ini, cipher, startup, context, options, diagnostics};
  EXPECT_FALSE(offlineLoader.LoadOptions());
  EXPECT_TRUE(ui.Messages().empty());
}

struct UserOptionsTest : testing::Test, HostFixture {
  const QString select = QStringLiteral("proc_selp__OptionsUser ( 'O''Neil' )");
  const QString add = QStringLiteral("proc_addp__OptionsUser ( 'O''Neil' )");
  UserOptions options;
  FakeRow row;

  UserOptionsTest() {
    for (const char* name : {"UserId",
                             "SORTED_COLUMN_COLOUR",
                             "FILTER_COLUMN_COLOUR",
                             "GRID_ODD_BACKCOLOUR",
                             "GRID_ODD_FORECOLOUR",
                             "GRID_EVEN_BACKCOLOUR",
                             "GRID_EVEN_FORECOLOUR",
                             "GRID_HEADFONT",
                             "GRID_HEADFONT_SIZE",
                             "GRID_HEADFONT_BOLD",
                             "GRID_HEADFONT_ITALIC",
                             "GRID_HEADFONT_UNDERLINE",
                             "GRID_LINEFONT",
                             "GRID_LINEFONT_SIZE",
                             "GRID_LINEFONT_BOLD",
                             "GRID_LINEFONT_ITALIC",
                             "GRID_LINEFONT_UNDERLINE",
                             "SYSTEM_ADMIN",
                             "SECTION_GRID_LINEFONT",
                             "SECTION_GRID_LINEFONT_SIZE",
                             "SECTION_GRID_LINEFONT_UNDERLINE",
                             "SECTION_GRID_LINEFONT_ITALIC",
                             "SECTION_GRID_LINEFONT_BOLD",
                             "SECTION_GRID_FOREGROUND",
                             "SECTION_GRID_BACKGROUND",
                             "USE_BROWSE_COLOUR",
                             "USE_REQUIRED_COLOUR",
                             "CREATE_BROWSE_BUTTONS",
                             "ALWAYS_SHOW_GRID_BROWSE_BUTTONS",
                             "SHOW_EDIT_UPDATED_MESSAGE",
                             "DISPLAY_TOOLBAR_CAPTIONS"}) {
      row.Set(QString::fromLatin1(name), Value::Null());
    }
    row.Set(QStringLiteral("GRID_ODD_BACKCOLOUR"), 0xFFEEDD);
    Connect();
  }
  bool Load() { return sysLoadUserInfo(statements, diagnostics, QStringLiteral("O'Neil"), options); }
};

TEST_F(UserOptionsTest, ANewUserGetsARow) {
  FakeRow none = row;
  none.isEmpty = true;
  host.answers[select] = none;
  host.answers[add] = {};
  host.onExecute = [this](const QString& batch) {
    if (batch == add) host.answers[select] = row;
  };
  EXPECT_TRUE(Load());
  EXPECT_EQ(options.GRID_ODD_BACKCOLOUR, 0xFFEEDD);
  EXPECT_THAT(host.executed, ElementsAre(select, add, select));
}

TEST_F(UserOptionsTest, AFailureIsToldAndChangesNothing) {
  options.GRID_LINEFONT = QStringLiteral("Kept");
  row.Remove(QStringLiteral("DISPLAY_TOOLBAR_CAPTIONS"));
  host.answers[select] = row;
  EXPECT_FALSE(Load());
  EXPECT_EQ(options.GRID_LINEFONT, QStringLiteral("Kept"));
  EXPECT_THAT(ui.MessageTexts(), ElementsAre(QStringLiteral("The user options could not be read.")));
}

}  // namespace
}  // namespace qbx::test
