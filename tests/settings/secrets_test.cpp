// Stored passwords and section "Service".

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QFileInfo>

#include "settings/service_settings.h"
#include "support/test_services.h"

namespace qbx::test {
namespace {

using testing::HasSubstr;

struct SecretsTest : testing::Test, TestServices {
  QString keyFile = folder.File("QBX.KEY");
  HostCipher cipher{keyFile, log};
  QString error;
};

TEST_F(SecretsTest, WhatIsEncipheredComesBackAndDiffersEachTime) {
  ASSERT_EQ(HostCipher::CreateKeyFile(keyFile), QString());
  for (const QString& text : QStringList{"pa55", QString(), "Zoë £€ 🚗", QString(200, u'x')}) {
    const auto first = cipher.Encipher(text, &error);
    const auto second = cipher.Encipher(text, &error);
    ASSERT_TRUE(first && second);
    EXPECT_NE(*first, *second);
    EXPECT_EQ(cipher.Decipher(*first, "x"), text);
  }
  EXPECT_EQ(Log(), QString());
  EXPECT_LE(cipher.Encipher(QString(100, u'x'), &error)->size(), 255) << "must fit an INI value";
}

TEST_F(SecretsTest, AnythingElseReadsAsEmptyWithOneLogLineEach) {
  ASSERT_EQ(HostCipher::CreateKeyFile(keyFile), QString());
  QString changed = *cipher.Encipher("pa55word", &error);
  changed[40] = changed[40] == u'A' ? u'B' : u'A';
  const QStringList bad = {changed, "pa55word", "%%%", "AAAA"};
  for (const QString& text : bad)
    EXPECT_EQ(cipher.Decipher(text, "value Password"), QString());
  EXPECT_EQ(Log().count("value Password could not be deciphered"), bad.size());
  EXPECT_FALSE(Log().contains("pa55word"));
}

TEST_F(SecretsTest, AKeyFileThatCannotBeUsedSaysSo) {
  EXPECT_FALSE(cipher.Encipher("x", &error).has_value());
  EXPECT_THAT(error.toStdString(), HasSubstr("QBX.KEY could not be read"));
  EXPECT_FALSE(HostCipher({}, log).Encipher("x", &error).has_value());
  EXPECT_THAT(error.toStdString(), HasSubstr("KeyFile in section Service"));
  for (const QByteArray& content : {QByteArray("12ab"), QByteArray(64, 'z'), QByteArray(66, 'a')}) {
    folder.Write("QBX.KEY", content);
    EXPECT_FALSE(cipher.Encipher("x", &error).has_value()) << content.toStdString();
  }
}

TEST_F(SecretsTest, AKeyFileIsPrivateAndNeverReplaced) {
  ASSERT_EQ(HostCipher::CreateKeyFile(keyFile), QString());
  const QByteArray key = folder.Read("QBX.KEY");
  EXPECT_FALSE(QFileInfo(keyFile).permissions() & (QFileDevice::ReadGroup | QFileDevice::ReadOther));
  EXPECT_NE(HostCipher::CreateKeyFile(keyFile), QString());
  EXPECT_EQ(folder.Read("QBX.KEY"), key);
}

TEST_F(SecretsTest, TheServiceSectionHasDefaultsAndDeciphersItsPasswords) {
  ASSERT_EQ(HostCipher::CreateKeyFile(keyFile), QString());
  const QString password = *cipher.Encipher("mail pw", &error);
  const IniFile ini(folder.Write(
      "QBX.INI", "[service]\r\nMailPassword=" + password.toLatin1() +
                     "\r\nImplicitTlsPort=x\r\nHttpTimeout=7\r\nCaFile=certs/ca.pem\r\nBuiltInPassword=clear\r\n"));
  const ServiceSettings service = ReadServiceSettings(ini, folder.Path(), cipher);
  EXPECT_EQ(service.mailPassword, "mail pw");
  EXPECT_EQ(service.builtInPassword, QString());
  EXPECT_EQ(service.implicitTlsPort, 465);
  EXPECT_EQ(service.httpTimeout, 7);
  EXPECT_EQ(service.caFile, folder.File("certs/ca.pem"));
  EXPECT_EQ(service.keyFile, keyFile);
  EXPECT_EQ(Log().count(QLatin1Char('\n')), 1) << "one line, for the password in the clear";
}

}  // namespace
}  // namespace qbx::test
