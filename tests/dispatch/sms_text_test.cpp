// Numbers, encodings, costs and replies of texts.

#include <gtest/gtest.h>

#include "dispatch/mobile_number.h"
#include "dispatch/sms_credits.h"
#include "dispatch/sms_reply.h"
#include "dispatch/url_encode.h"
#include "support/printing.h"

namespace qbx {
namespace {

TEST(SmsText, CostsACreditForEachSegment) {
  struct Case {
    int length;
    int credits;
  };
  for (const Case& c : {Case{0, 1}, {160, 1}, {161, 2}, {306, 2}, {307, 3}, {459, 3}, {460, 4}, {918, 6}}) {
    EXPECT_EQ(SMSCreditsFor(c.length, 1), c.credits) << c.length;
    EXPECT_EQ(SMSCreditsFor(c.length, 3), c.credits * 3) << c.length;
  }
}

TEST(SmsText, CleansNumbersAsPeopleTypeThem) {
  struct Case {
    const char* typed;
    const char* cleaned;  ///< null: no number
  };
  const Case cases[] = {
      {"07700900123", "07700900123"},
      {"  07700 900 123 ", "07700900123"},
      {"07700 900123/wife", "07700900123"},
      {"07700900123;07700900124", "07700900123"},
      {"07700900123, 2nd", "07700900123"},
      {"07700 900123 (work)", "07700900123"},
      {"(07700) 900123", "(07700)900123"},  // a bracket among the first five belongs to the number
      {"0770(0)900123", "0770(0)900123"},
      {"07700(0)900123", nullptr},  // five characters are left
      {"+44 7700 900123 mob", "+447700900123"},
      {"Tel07700900123", "07700900123"},
      {"12345", nullptr},
      {"123456", "123456"},
      {"123 45 home", nullptr},
      {"/07700900123", nullptr},
      {"no mobile", nullptr},
      {"", nullptr},
  };
  for (const Case& c : cases) {
    const std::optional<QString> cleaned = CleanMobileNumber(QString::fromUtf8(c.typed));
    EXPECT_EQ(cleaned.value_or(QStringLiteral("none")), QString::fromUtf8(c.cleaned ? c.cleaned : "none")) << c.typed;
  }
}

TEST(SmsText, EncodesAsTheGatewayReads) {
  struct Case {
    const char* value;
    const char* encoded;
  };
  const Case cases[] = {
      {"Az09", "Az09"},
      {"  a b \r\n", "a%20b"},
      {"a\r\nb", "a%0D%0Ab"},
      {"\u00a35 off", "%A35%20off"},
      {"caf\u00e9", "caf%E9"},
      {"\u20ac9", "%809"},
      {"\u65e5\U0001F600x", "%3F%3Fx"},
      {"a+b&c=d%-._~", "a%2Bb%26c%3Dd%25%2D%2E%5F%7E"},
      {"", ""},
  };
  for (const Case& c : cases)
    EXPECT_EQ(URLEncode(QString::fromUtf8(c.value)), QString::fromLatin1(c.encoded)) << c.value;
}

TEST(SmsText, ReadsRepliesToASend) {
  struct Case {
    const char* body;
    double balance;
    int messageId;
    int code;
  };
  const Case cases[] = {
      {R"("1"|"96"|"1001"|"0"|)", 96, 1001, 0},
      {R"("1"|"96.5"|"1001"|"1"|"more"|)", 96.5, 1001, 1},
      {R"("1"|"-3"|"0"|"33"|)", -3, 0, 33},
      {R"('1'|'7'|'8'|'2'|)", 7, 8, 2},
      {R"("0"|"5"|"9"|"0"|)", 5, 9, 1000},
      {R"("2"|"0"|"0"|"31"|)", 0, 0, 1002},
      {"\"1\"|\"96\"|\"1001\"|22", 96, 1001, 22},  // the fourth and last field is not wrapped
      {"||||", 0, 0, 1000},
      {R"("1"|"many"|"x"|"y"|)", 0, 0, 0},
  };
  for (const Case& c : cases) {
    const std::optional<SmsReply> reply = ParseSmsReply(QString::fromLatin1(c.body));
    ASSERT_TRUE(reply) << c.body;
    EXPECT_EQ(reply->balance, c.balance) << c.body;
    EXPECT_EQ(reply->messageId, c.messageId) << c.body;
    EXPECT_EQ(reply->code, c.code) << c.body;
    EXPECT_EQ(reply->Accepted(), c.code < 2) << c.body;
  }
  for (const char* body : {"", R"("1")", R"("1"|"96"|"1001")", "<html>|"})
    EXPECT_FALSE(ParseSmsReply(QString::fromLatin1(body))) << body;
}

TEST(SmsText, ReadsRepliesToACreditQuery) {
  struct Case {
    const char* body;
    double balance;
  };
  for (const Case& c : {Case{R"("1"|"96.5"|)", 96.5}, {R"("2"|"3"|)", 3}, {R"("0"|"5"|)", 0}, {R"("1"|7)", 7}})
    EXPECT_EQ(ParseCreditReply(QString::fromLatin1(c.body)).value().balance, c.balance) << c.body;
  EXPECT_FALSE(ParseCreditReply(QStringLiteral("\"1\"")));
  EXPECT_FALSE(ParseCreditReply(QString()));
}

TEST(SmsText, NamesTheReasonOfARefusal) {
  struct Case {
    int code;
    const char* sending;
    const char* testing;
  };
  const Case cases[] = {
      {2, "SMS Gateway reported Authentication failed.", "SMS Provider reported Authentication failed."},
      {3, "SMS Gateway reported SMS failed.", "SMS Provider reported SMS failed."},
      {22, "SMS Gateway reported Authentication refused.", "SMS Provider reported Authentication refused."},
      {31, "SMS Gateway reported Insufficient Credits.", "SMS Provider reported error code 31"},
      {33, "SMS Gateway reported Invalid Number Format.\r\rNumber may be invalid: 0770",
       "SMS Provider reported Insufficient Credits."},
      {1000, "Message not sent because the SMS Client Username or Password is not valid.",
       "Message not sent because the SMS Account Username or Password is not valid."},
      {1002, "Message not sent because your SMS Text account has insufficient credits.",
       "Message not sent because your SMS Text account has insufficient credits."},
      {77, "SMS Gateway reported error code 77", "SMS Provider reported error code 77"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(SendRefusalReason(c.code, QStringLiteral("0770")), QString::fromLatin1(c.sending));
    EXPECT_EQ(TestRefusalReason(c.code), QString::fromLatin1(c.testing));
  }
}

}  // namespace
}  // namespace qbx
