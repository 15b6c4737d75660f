// Which login the registry and the INI file give.

#include <gtest/gtest.h>

#include "started_application.h"

namespace qbx::test {
namespace {

struct LoginTest : testing::Test, StartedApplication {
  QString error;
  ServiceSettings service{.builtInPassword = "old", .builtInPassword2 = "new"};

  LoginTest() {
    (void)HostCipher::CreateKeyFile(folder.File("QBX.KEY"));
    Make();
    application->startup.ProductKey = "SOFTWARE\\Korvel Manager\\";
  }
  void Login(const char* name, const QString& text) { PutMachine("\\Login", name, text); }
  [[nodiscard]] QString Enciphered(const char* text) { return *application->cipher.Encipher(text, &error); }
  [[nodiscard]] LoginSettings Read() {
    return ReadLoginSettings(application->registry, application->ini, folder.Path(), service, application->cipher);
  }
  void Expect(const char* user, const char* password) {
    const LoginSettings settings = Read();
    EXPECT_EQ(settings.login.user, user);
    EXPECT_EQ(settings.login.password, password);
  }
};

TEST_F(LoginTest, AnEmptyRegistryGivesDefaults) {
  const LoginSettings settings = Read();
  EXPECT_EQ(settings.companyCode, "A");
  EXPECT_EQ(settings.server, QString());
  EXPECT_FALSE(settings.settingsVersion2);
  Expect("sa", "old");
}

TEST_F(LoginTest, TheUsersServerCountsWhenTheMachineHasNone) {
  registry.Put(RegistryHive::kCurrentUser, "SOFTWARE\\Korvel Manager\\Login", "Server", "USERPC");
  EXPECT_EQ(Read().server, "USERPC");
  Login("Server", "PC1\\QBX");
  EXPECT_EQ(Read().server, "PC1\\QBX");
}

TEST_F(LoginTest, TheFirstPasswordThatIsThereIsUsed) {
  Login("DBUsername", "garage");
  Expect("garage", "old");
  Login("DBPassword", Enciphered("db pw"));
  Expect("garage", "db pw");
  Login("SQLLoginUser", "login");
  Login("SQLLoginPassword", Enciphered("login pw"));
  Expect("login", "login pw");
  Login("SQLLoginPassword", "not enciphered");
  Expect("login", "");
}

TEST_F(LoginTest, TheProductsOwnUserBecomesTheAdministrator) {
  Login("DBUsername", " qbx ");
  Login("DBPassword", Enciphered("ignored"));
  Expect("sa", "new");
}

TEST_F(LoginTest, SettingsVersionTwoChangesTheBuiltInPasswordUnlessOverridden) {
  folder.Write("Qbx_DbConfig.exe", "");
  EXPECT_TRUE(Read().settingsVersion2);
  Expect("sa", "new");
  Login("OverrideAutomaticSettings", "Y");
  Expect("sa", "old");
  for (const auto& [stored, isTwo] : {std::pair("1", false), {"2", true}, {"3", false}, {"0", true}, {"x", true}}) {
    folder.Write("QBX.INI", QByteArray("[Database]\r\nDatabaseSettingsVersion=") + stored + "\r\n");
    EXPECT_EQ(Read().settingsVersion2, isTwo) << stored;
  }
}

}  // namespace
}  // namespace qbx::test
