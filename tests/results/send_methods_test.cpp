#include "results/send_methods.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/options.h"

namespace qbx {
namespace {

using testing::ElementsAre;

Options OptionsWith(bool usingVrelo, bool onlyOptedIn) {
  Options options;
  options.Using_Vrelo = usingVrelo;
  options.Only_Send_Comms_When_Opted_In = onlyOptedIn;
  return options;
}

// A rule a line: what the list shows, and its batch for campaign 12 where consent is asked for.
constexpr char16_t kRules[] =
    uR"(All Customers with a Mobile No: UPDATE [Campaign Results] SET Send_SMS = 1 WHERE (Mobile <> '') AND (Len(Mobile) > 5) AND CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1
No Customers: UPDATE [Campaign Results] SET Send_SMS = 0 WHERE  CampaignID = 12
All except when Letter or Email: UPDATE [Campaign Results] SET Send_SMS = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1; UPDATE [Campaign Results] SET Send_SMS = 0 WHERE (Send_Letter = 1 OR Send_Email = 1) AND CampaignID = 12
All except when Letter: UPDATE [Campaign Results] SET Send_SMS = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1; UPDATE [Campaign Results] SET Send_SMS = 0 WHERE (Send_Letter = 1) AND CampaignID = 12
All except when Email: UPDATE [Campaign Results] SET Send_SMS = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1; UPDATE [Campaign Results] SET Send_SMS = 0 WHERE (Send_Email = 1) AND CampaignID = 12
All customers without an Email Address: UPDATE [Campaign Results] SET Send_SMS = 1 WHERE  ((Email = '') OR (LEN(Email) < 6) OR (CHARINDEX('@', Email) < 2)) AND (Mobile <> '') AND CampaignID = 12 AND IsNull(Can_Send_SMS, 0) = 1
All Customers with an Email Address: UPDATE [Campaign Results] SET Send_Email = 1 WHERE (Email <> '') AND (CharIndex('@', Email) > 1) AND CampaignID = 12 AND IsNull(Can_Send_Email, 0) = 1
No Customers: UPDATE [Campaign Results] SET Send_Email = 0 WHERE  CampaignID = 12
All except when Letter or SMS: UPDATE [Campaign Results] SET Send_Email = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Email, 0) = 1; UPDATE [Campaign Results] SET Send_Email = 0 WHERE (Send_Letter = 1 OR Send_SMS = 1) AND CampaignID = 12
All except when Letter: UPDATE [Campaign Results] SET Send_Email = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Email, 0) = 1; UPDATE [Campaign Results] SET Send_Email = 0 WHERE (Send_Letter = 1) AND CampaignID = 12
All except when SMS: UPDATE [Campaign Results] SET Send_Email = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Email, 0) = 1; UPDATE [Campaign Results] SET Send_Email = 0 WHERE (Send_SMS = 1) AND CampaignID = 12
All Customers: UPDATE [Campaign Results] SET Send_Letter = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Letter, 0) = 1
No Customers: UPDATE [Campaign Results] SET Send_Letter = 0 WHERE  CampaignID = 12
All except when Email or SMS: UPDATE [Campaign Results] SET Send_Letter = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Letter, 0) = 1; UPDATE [Campaign Results] SET Send_Letter = 0 WHERE (Send_Email = 1 OR Send_SMS = 1) AND CampaignID = 12
All except when Email: UPDATE [Campaign Results] SET Send_Letter = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Letter, 0) = 1; UPDATE [Campaign Results] SET Send_Letter = 0 WHERE (Send_Email = 1) AND CampaignID = 12
All except when SMS: UPDATE [Campaign Results] SET Send_Letter = 1 WHERE  CampaignID = 12 AND IsNull(Can_Send_Letter, 0) = 1; UPDATE [Campaign Results] SET Send_Letter = 0 WHERE (Send_SMS = 1) AND CampaignID = 12)";

TEST(SendMethodsTest, EveryRuleIsWrittenAsItsStatement) {
  QStringList lines;
  const auto add = [&](const QStringList& captions, int SendMethods::*channel) {
    for (int rule = 0; rule < captions.size(); ++rule) {
      SendMethods methods;
      methods.*channel = rule;
      lines += captions[rule] + u": "_qs + SendMethodBatches(methods, 12, OptionsWith(true, true)).join(u'\n');
    }
  };
  add(SmsRules(), &SendMethods::sms);
  add(EmailRules(), &SendMethods::email);
  add(LetterRules(), &SendMethods::letter);
  const QStringList expected = QString::fromUtf16(kRules).split(u'\n');
  ASSERT_EQ(lines.size(), expected.size());
  for (int i = 0; i < lines.size(); ++i)
    EXPECT_EQ(lines[i].toStdString(), expected[i].toStdString());
}

TEST(SendMethodsTest, ConsentIsAskedForAsTheSettingsSay) {
  const SendMethods all{.sms = 0, .email = 0, .letter = 0};
  const auto asks = [&](bool usingVrelo, bool onlyOptedIn) {
    QStringList channels;
    for (const QString& batch : SendMethodBatches(all, 1, OptionsWith(usingVrelo, onlyOptedIn))) {
      channels += batch.contains(u"IsNull(Can_Send_"_qs) ? u"yes"_qs : u"no"_qs;
    }
    return channels.join(u' ');
  };
  EXPECT_EQ(asks(false, false), u"no no no"_qs);
  EXPECT_EQ(asks(false, true), u"no no no"_qs);
  EXPECT_EQ(asks(true, false), u"no no yes"_qs);
  EXPECT_EQ(asks(true, true), u"yes yes yes"_qs);
}

TEST(SendMethodsTest, PositionsThatAListDoesNotHaveAreLeftAlone) {
  EXPECT_TRUE(SendMethodBatches({}, 1, {}).isEmpty());
  EXPECT_TRUE(SendMethodBatches({.sms = 6, .email = 5, .letter = 5}, 1, {}).isEmpty());
  EXPECT_THAT(SendMethodBatches({.sms = 1, .letter = 1}, -7, {}),
              ElementsAre(u"UPDATE [Campaign Results] SET Send_SMS = 0 WHERE  CampaignID = -7"_qs,
                          u"UPDATE [Campaign Results] SET Send_Letter = 0 WHERE  CampaignID = -7"_qs));
}

}  // namespace
}  // namespace qbx
