#include "util/base64_value.h"

#include <gtest/gtest.h>

#include <QStringList>

namespace qbx {
namespace {

TEST(Base64Value, ReadsBackWhatItWrote) {
  QByteArray bytes;
  for (int length = 0; length < 300; ++length) {
    const QString encoded = cBase64::BASE64_EncodeEx(bytes);
    EXPECT_EQ(cBase64::BASE64_DecodeEx(encoded), bytes);
    for (const QString& line : encoded.split("\r\n"))
      EXPECT_LE(line.size(), 76);
    bytes += static_cast<char>(length);
  }
  const QString text = "Größe £5 \U0001F697";
  EXPECT_EQ(cBase64::BASE64_Decode(cBase64::BASE64_Encode(text)), text);
  EXPECT_EQ(ReadBase64Value(MakeBase64Value(text)), text);
}

TEST(Base64Value, RefusesWhatIsNoBase64) {
  for (const char* input : {"QQ", "QQ=", "Q===", "QQ==QQ==", "Q Q=*", "QR==", "QUJD=", "=", "QUJ\xe9"})
    EXPECT_EQ(cBase64::BASE64_DecodeEx(QString::fromLatin1(input)), std::nullopt) << input;
  EXPECT_EQ(cBase64::BASE64_Decode("//4="), std::nullopt) << "no UTF-8 inside";
}

TEST(Base64Value, OnlyTheMarkerMakesAnEncodedValue) {
  EXPECT_EQ(ReadBase64Value("b64!YWJj"), "abc");
  EXPECT_EQ(ReadBase64Value("YWJj"), "YWJj");
  EXPECT_EQ(ReadBase64Value("b64!"), QString());
  EXPECT_EQ(ReadBase64Value("b64!not base64"), std::nullopt);
}

}  // namespace
}  // namespace qbx
