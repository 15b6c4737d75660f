// Reading the company's and the user's options from a host database.

#include <gmock/gmock.h>

#include "settings/options_loader.h"
#include "settings/user_options.h"
#include "support/embedded_host.h"
#include "util/text.h"

namespace qbx::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

const QString kReadError = "Error reading all settings data. The database may need updating.";

struct OptionsTest : testing::Test, EmbeddedHost {
  using EmbeddedHost::Run;

  IniFile ini{folder.Write("QBX.INI", "[App]\r\nCustomer=old\r\n")};
  HostCipher cipher{folder.File("QBX.KEY"), log};
  StartupValues startup;
  Options options;
  OptionsLoader loader{statements, ini, cipher, startup, context, options, diagnostics};

  OptionsTest() { startup.title = "QBX Marketing & Reporting Module"; }
  /// Changes the row of company "A": a new empty one has NULL for every key.
  void Set(const char* name, const QString& text) {
    Run(QString("UPDATE _Options SET %1 = %2").arg(name, SqlQuoted(text)));
  }
  void Drop(const char* key) { Run(QString("ALTER TABLE _Options DROP COLUMN ") + key); }
};

TEST_F(OptionsTest, NullKeysGetTheirDefaults) {
  Run("UPDATE _Version SET Version = 75");
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(options.Timeout, 15);
  EXPECT_EQ(options.Reminder_From_SMS, "The Garage");
  EXPECT_EQ(options.MOT_Reminder_Name, "MOT");
  EXPECT_EQ(options.RemindersFont, "Tahoma");
  EXPECT_EQ(options.RemindersFontSize, 10);
  EXPECT_EQ(context.DatabaseVersion, 75);
  EXPECT_FALSE(options.SMS);
  EXPECT_EQ(options.SMTP_Port, QString());
}

TEST_F(OptionsTest, TheConnectionTakesTheTimeOutButNeverLessThanThreeSeconds) {
  for (const auto& [stored, used] : {std::pair(0, 15), {2, 15}, {-5, 15}, {3, 3}, {90, 90}}) {
    Set("Timeout", QString::number(stored));
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
    Set("Reminder_From_SMS", c.from);
    Set("SMS_Sender_ID", c.senderId);
    ASSERT_TRUE(loader.LoadOptions());
    EXPECT_EQ(options.Reminder_From_SMS, c.resolved) << c.from << "|" << c.senderId;
  }
}

TEST_F(OptionsTest, OnlyAMarkedMailPasswordIsDeciphered) {
  QString error;
  ASSERT_EQ(HostCipher::CreateKeyFile(cipher.KeyFile()), QString());
  const QString enciphered = *cipher.Encipher("s3cret £", &error);
  for (const auto& [stored, used] : {std::pair<QString, QString>("b64!/" + enciphered, "s3cret £"),
                                     {enciphered, enciphered},
                                     {"plain", "plain"},
                                     {"b64!/nonsense", QString()}}) {
    Set("SMTP_Password", stored);
    ASSERT_TRUE(loader.LoadOptions());
    EXPECT_EQ(options.SMTP_Password, used);
  }
  EXPECT_THAT(Log().toStdString(), HasSubstr("option SMTP_Password could not be deciphered"));
  EXPECT_THAT(Log().toStdString(), testing::Not(HasSubstr("nonsense")));
}

TEST_F(OptionsTest, AnotherCompanyReadsItsOwnRowAndInheritsNothing) {
  startup.companyCode = "B'1";
  Run("INSERT INTO _Options (Options_Company, CoTelNo, Using_Vrelo) VALUES ('B''1', '02 of B', 0); "
      "UPDATE _Options SET CoTelNo = '01 of A', Using_Vrelo = 1, SMS_Server = 'a.example' WHERE Options_Company = 'A'");
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_EQ(options.SMS_Server, QString());
  EXPECT_EQ(options.CoTelNo, "02 of B");
  EXPECT_TRUE(options.Using_Vrelo) << "read from company A whoever logs in";
}

TEST_F(OptionsTest, TheFaxMarkerTurnsVehicleSalesOnAndTheNamesFollow) {
  startup.databaseName = "FromRegistry";
  Set("CoFaxNo", "vrm");
  Set("Accounts_Export", "1");
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(startup.edition.vehicleSales);
  EXPECT_FALSE(options.Accounts_Export);
  EXPECT_EQ(startup.databaseName, "QBXDastraManager");
  EXPECT_EQ(startup.ProductKey, "SOFTWARE\\Dastra Manager\\");
}

TEST_F(OptionsTest, AChangedCustomerCodeIsWrittenToTheIniFile) {
  Set("Customer", "New12");
  ASSERT_TRUE(loader.LoadOptions());
  EXPECT_EQ(options.Customer, "new12");
  EXPECT_EQ(startup.customerCode, "new12");
  EXPECT_EQ(ini.Read("App", "Customer"), "new12");
}

TEST_F(OptionsTest, AFailedReadKeepsWhatWasReadBefore) {
  Set("SMS_ClientID", "garage7");
  Set("SMS_Sender_ID", "ABC");
  options.SMTP_Server = "kept.example";
  startup.databaseName = "FromRegistry";
  Drop("Reminder_From_Name");
  EXPECT_FALSE(loader.LoadOptions());
  EXPECT_THAT(ui.MessageTexts(), ElementsAre(kReadError));
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kExclamation);
  EXPECT_EQ(options.SMS_ClientID, "garage7");
  EXPECT_EQ(options.SMTP_Server, "kept.example");
  EXPECT_EQ(startup.databaseName, "FromRegistry");
}

TEST_F(OptionsTest, MissingReportKeysAreNoFault) {
  for (const OptionKey& key : OptionKeys()) {
    if (key.mayBeMissing) Drop(key.name);
  }
  EXPECT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(ui.Messages().empty());
  EXPECT_EQ(options.RemindersFont, "Tahoma");
}

TEST_F(OptionsTest, AnotherModuleLevelIsToldAndLoadingGoesOn) {
  Run("UPDATE _Version SET Marketing_Version = 5");
  Set("SMS", "1");
  EXPECT_TRUE(loader.LoadOptions());
  EXPECT_TRUE(options.SMS);
  ASSERT_THAT(ui.MessageTexts(),
              ElementsAre("The QBX Marketing & Reporting Module needs to be updated!\r\r"
                          "At least one existing system, and the server database has been updated.\r\r"
                          "If you continue to use the program, unexpected errors may occur.\r\r"
                          "Choose Check for Program Updates from the main QBX Management system Help menu.\r\r"
                          "Update Codes: P-6, DB-5"));
  EXPECT_THAT(Log().toStdString(), HasSubstr("04/03/2026Marketing Module Update Required. Update Codes: P-6, DB-5"));
}

struct UserOptionsTest : testing::Test, EmbeddedHost {
  using EmbeddedHost::Run;

  UserOptions options;

  bool Load() { return sysLoadUserInfo(statements, diagnostics, "O'Neil", options); }
};

TEST_F(UserOptionsTest, ANewUserGetsARow) {
  EXPECT_TRUE(Load());
  EXPECT_EQ(options.GRID_ODD_BACKCOLOUR, 0xFFFFFF);
  Run("UPDATE _OptionsUser SET GRID_ODD_BACKCOLOUR = 5 WHERE UserId = 'O''Neil'");
  EXPECT_TRUE(Load());
  EXPECT_EQ(options.GRID_ODD_BACKCOLOUR, 5);
}

TEST_F(UserOptionsTest, AFailureIsToldAndChangesNothing) {
  options.GRID_LINEFONT = "Kept";
  Run("ALTER TABLE _OptionsUser DROP COLUMN DISPLAY_TOOLBAR_CAPTIONS");
  EXPECT_FALSE(Load());
  EXPECT_EQ(options.GRID_LINEFONT, "Kept");
  EXPECT_THAT(ui.MessageTexts(), ElementsAre("The user options could not be read."));
}

}  // namespace
}  // namespace qbx::test
