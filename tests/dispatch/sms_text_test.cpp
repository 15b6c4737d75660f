// Numbers, encodings, costs and replies of texts.

#include "dispatch/sms_text.h"

#include <gtest/gtest.h>

#include "dispatch/row_survey.h"
#include "dispatch/sms_credits.h"
#include "dispatch/sms_reply.h"
#include "dispatch/url_encode.h"
#include "results/mobile_number.h"
#include "settings/sms_sender.h"
#include "support/printing.h"

namespace qbx {
namespace {

TEST(SmsText, CostsACreditForEachSegment) {
  const std::pair<int, int> cases[] = {{0, 1}, {160, 1}, {161, 2}, {306, 2}, {307, 3}, {459, 3}, {460, 4}, {918, 6}};
  for (const auto& [length, credits] : cases) {
    EXPECT_EQ(SMSCreditsFor(length, 1), credits) << length;
    EXPECT_EQ(SMSCreditsFor(length, 3), credits * 3) << length;
  }
}

TEST(SmsText, GoesOutWithWholeLineBreaks) {
  EXPECT_EQ(SmsText("a\nb\rc\r\nd\n\r"), "a\r\nb\r\nc\r\nd\r\n\r\n");
  EXPECT_EQ(SmsText(QString(917, u'x') + "\n"), QString(917, u'x') + "\r");
  EXPECT_EQ(SmsCounterText(QString(159, u'x') + "\n"), "Chars: 161 / 918 max, approx. 2 Credit(s)");
  EXPECT_EQ(SmsAsSent(QString::fromUtf8(" \u00a3 \u65e5\U0001F600 ")), QString::fromUtf8("\u00a3 ??"));
}

TEST(SmsText, IsCheckedBeforeItIsSent) {
  const QString text = QString::fromUtf8("?\u65e5 \u2019n\u2019 \U0001F600\u65e5 \u20ac{\u00e9\u00ea}\r\n\u03a9");
  EXPECT_EQ(CharactersNotSent(text), QString::fromUtf8("\u65e5\U0001F600\u03a9"));
  EXPECT_EQ(CharactersOutsideGsm(text), QString::fromUtf8("\u2019\u00ea"));
  const std::pair<const char*, bool> stops[] = {
      {"Text STOP to end", true}, {"opt-out: reply", true}, {"Opt out", true},   {"unsubscribe here", true},
      {"Stop by today", false},   {"non-stop fun", false},  {"stopping", false}, {"", false}};
  for (const auto& [words, tells] : stops)
    EXPECT_EQ(TellsHowToStop(words), tells) << words;
  const std::pair<const char*, bool> senders[] = {
      {"Hill Garage", true},       {"Hill Garages", false},  {"", true}, {"+447700900123", true}, {"Caf\u00e9", false},
      {"1234567890123456", false}, {"123456789012345", true}};
  for (const auto& [sender, fits] : senders)
    EXPECT_EQ(IsSmsSender(QString::fromUtf8(sender)), fits) << sender;
  for (const char* mobile : {"07700 900123", "+44 7700 900123 mob", "0044 7700900123", "+44 (0)7700 900123/home"})
    EXPECT_EQ(PhoneOf(mobile), "07700900123") << mobile;
}

TEST(SmsText, CleansNumbersAsPeopleTypeThem) {
  const char* const kNone = "none";
  const std::pair<const char*, const char*> cases[] = {{"07700900123", "07700900123"},
                                                       {"07700 900123/wife", "07700900123"},
                                                       {"07700900123;07700900124", "07700900123"},
                                                       {"07700900123, 2nd", "07700900123"},
                                                       {"07700 900123 (work)", "07700900123"},
                                                       {"(07700) 900123", "(07700)900123"},
                                                       {"0770(0)900123", "0770(0)900123"},
                                                       {"07700(0)900123", kNone},
                                                       {"+44 7700 900123 mob", "+447700900123"},
                                                       {"12345", kNone},
                                                       {"123456", "123456"},
                                                       {"123 45 home", kNone},
                                                       {"/07700900123", kNone},
                                                       {"", kNone}};
  for (const auto& [typed, cleaned] : cases)
    EXPECT_EQ(CleanMobileNumber(typed).value_or(kNone), cleaned) << typed;
}

TEST(SmsText, EncodesAsTheGatewayReads) {
  const std::pair<const char*, const char*> cases[] = {{"Az09", "Az09"},
                                                       {"  a b ", "a%20b"},
                                                       {"a\r\nb\r\n", "a%0D%0Ab%0D%0A"},
                                                       {"\u00a35 off", "%A35%20off"},
                                                       {"caf\u00e9", "caf%E9"},
                                                       {"\u20ac9", "%809"},
                                                       {"\u65e5\U0001F600x", "%3F%3Fx"},
                                                       {"a+b&c=d%-._~", "a%2Bb%26c%3Dd%25%2D%2E%5F%7E"},
                                                       {"", ""}};
  for (const auto& [value, encoded] : cases)
    EXPECT_EQ(URLEncode(value), encoded) << value;
}

TEST(SmsText, ReadsRepliesToASend) {
  struct Case {
    const char* body;
    double balance;
    int messageId;
    int code;
  };
  const Case cases[] = {{R"("1"|"96"|"1001"|"0"|)", 96, 1001, 0},
                        {R"("1"|"96.5"|"1001"|"1"|"more"|)", 96.5, 1001, 1},
                        {R"("1"|"-3"|"0"|"33"|)", -3, 0, 33},
                        {R"('1'|'7'|'8'|'2'|)", 7, 8, 2},
                        {R"("0"|"5"|"9"|"0"|)", 5, 9, 1000},
                        {R"("2"|"0"|"0"|"31"|)", 0, 0, 1002},
                        {"\"1\"|\"96\"|\"1001\"|22", 96, 1001, 22},  // the fourth and last field is not wrapped
                        {"||||", 0, 0, 1000},
                        {R"("1"|"many"|"x"|"y"|)", 0, 0, 0}};
  for (const Case& c : cases) {
    const std::optional<SmsReply> reply = ParseSmsReply(c.body);
    ASSERT_TRUE(reply) << c.body;
    EXPECT_EQ(reply->balance, c.balance) << c.body;
    EXPECT_EQ(reply->messageId, c.messageId) << c.body;
    EXPECT_EQ(reply->code, c.code) << c.body;
    EXPECT_EQ(reply->Accepted(), c.code < 2) << c.body;
  }
  for (const char* body : {"", R"("1")", R"("1"|"96"|"1001")", "<html>|"})
    EXPECT_FALSE(ParseSmsReply(body)) << body;
}

TEST(SmsText, ReadsRepliesToACreditQuery) {
  const std::pair<const char*, double> cases[] = {
      {R"("1"|"96.5"|)", 96.5}, {R"("2"|"3"|)", 3}, {R"("0"|"5"|)", 0}, {R"("1"|7)", 7}};
  for (const auto& [body, balance] : cases)
    EXPECT_EQ(ParseCreditReply(body).value().balance, balance) << body;
  EXPECT_FALSE(ParseCreditReply("\"1\""));
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
      {77, "SMS Gateway reported error code 77", "SMS Provider reported error code 77"}};
  for (const Case& c : cases) {
    EXPECT_EQ(SendRefusalReason(c.code, "0770"), c.sending);
    EXPECT_EQ(TestRefusalReason(c.code), c.testing);
  }
}

}  // namespace
}  // namespace qbx
