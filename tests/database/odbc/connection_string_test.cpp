#include "database/odbc/connection_string.h"

#include <gtest/gtest.h>

namespace qbx {
namespace {

OdbcConnectionString Compose(const char* driver, bool encrypt, const char* password) {
  return ComposeConnectionString({QStringLiteral("pc1"), {}, 1500}, QStringLiteral("My}Base"),
                                 {QStringLiteral("u;x=y"), QString::fromUtf8(password)},
                                 {.driver = QString::fromUtf8(driver), .encrypt = encrypt});
}

TEST(ConnectionString, HasTheFormOfEachDriver) {
  EXPECT_EQ(
      Compose("FreeTDS", false, "a}b}").text.toStdString(),
      "Driver={FreeTDS};Server=pc1;Port=1500;TDS_Version=7.4;ClientCharset=UTF-8;Encryption=request;PacketSize=32767;Language=us_english;Database={My}Base};UID={u;x=y};PWD={a}b}};");
  EXPECT_EQ(
      Compose("ODBC Driver 18 for SQL Server", true, "a};b").text.toStdString(),
      "Driver={ODBC Driver 18 for SQL Server};Server=tcp:pc1,1500;Encrypt=yes;TrustServerCertificate=no;ConnectRetryCount=0;Language=us_english;Database={My}}Base};UID={u;x=y};PWD={a}};b};");
  const OdbcConnectionString encrypted = Compose("FreeTDS", true, "secret");
  EXPECT_EQ(
      encrypted.text.toStdString(),
      "Driver={FreeTDS};Servername=sqlserver.invalid;TDS_Version=7.4;ClientCharset=UTF-8;Encryption=require;Language=us_english;Database={My}Base};UID={u;x=y};PWD={secret};");
  EXPECT_TRUE(encrypted.freeTdsFile.startsWith(QLatin1String("[sqlserver.invalid]\nhost = pc1\nport = 1500\n")));
  // The driver would take "a" for the password, and the rest for a keyword of the string.
  EXPECT_THROW((void)Compose("FreeTDS", false, "a};Encryption=off"), DatabaseError);
}

}  // namespace
}  // namespace qbx
