// The checks before a run: what they refuse, and in which words.

#include "dispatch/mailshot_checks.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace qbx {
namespace {

const MailshotTemplates kTemplates{"Hello", "Subject", "Dear customer"};

/// An icon and a text, empty when nothing is refused.
QString Shown(const std::optional<Message>& message) {
  if (!message) return {};
  return QString(message->icon == MessageIcon::kExclamation ? "! " : "i ") + message->text;
}

TEST(MailshotChecks, AskForTemplates) {
  const char* const kNoSms = "! You haven't entered an SMS Text Message Template on the Letter Templates Tab.";
  const char* const kNoEmail = "! You haven't entered an Email Message Template on the Letter Templates Tab.";
  struct Case {
    CounterValues counters;
    MailshotTemplates templates;
    const char* refusal;
  };
  const Case cases[] = {
      {{.sms = 1, .emails = 1}, kTemplates, ""},
      {{.sms = 1}, {" abcd ", "", ""}, kNoSms},
      {{.sms = 1}, {"abcde", "", ""}, ""},
      {{.emails = 1}, {"", "", "abcd\r\n"}, kNoEmail},
      {{.emails = 1}, {"", "", "abcde"}, ""},
      {{.sms = 1, .emails = 1}, {}, kNoSms},
      {{.letters = 3},
       kTemplates,
       "i No SMS or Emails to process. No customers in the results list are selected to receive a SMS Text Message or "
       "Email."},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Shown(CheckTemplates(c.counters, c.templates)), c.refusal);
}

TEST(MailshotChecks, AskAboutTemplatesThatTheRunUses) {
  const MailshotTemplates doubtful{"Hi {contakt}", " ", "Dear {name}, {contakt}"};
  EXPECT_EQ(Shown(TemplateQuestion(kTemplates, true, true)), "");
  EXPECT_EQ(Shown(TemplateQuestion(doubtful, false, false)), "");
  EXPECT_EQ(Shown(TemplateQuestion(doubtful, true, false)),
            "! {contakt} is no merge field and goes out as it stands.\r\rSend all the same?");
  const std::optional<Message> both = TemplateQuestion(doubtful, true, true);
  EXPECT_EQ(Shown(both),
            "! The e-mail has no subject.\r{contakt}, {name} are no merge fields and go out as they "
            "stand.\r\rSend all the same?");
  EXPECT_EQ(both->question, Question::kEmptySubject);
  EXPECT_EQ(both->defaultAnswer, MessageAnswer::kNo);
}

TEST(MailshotChecks, NoticeThatNothingIsLeft) {
  EXPECT_EQ(Shown(CheckOutstanding({.sms = 2, .smsSent = 2, .emails = 1, .emailsSent = 1})),
            "i No results left to process. You can manually untick the Processed flag on the Results Tab if you want "
            "to send any particular message again.");
  EXPECT_EQ(Shown(CheckOutstanding({.sms = 2, .smsSent = 2, .emails = 1})), "");
}

TEST(MailshotChecks, AskForASenderAndAnAccount) {
  const char* const kNoSender =
      "! E-Mails cannot be sent because your Email address has not been specified on the QBX System Settings screen / "
      "E-Reminders Tab.\r\rPlease configure the Email Send Settings or adjust the Send Method to remove Emails and "
      "perhaps send SMS or Letters instead.";
  const char* const kNoAccount =
      "! The SMS Account Username or Password have not been set in the QBX System Settings screen / Communications "
      "Tab.\r\rPlease configure the SMS Settings or adjust the Send Method to remove SMS and perhaps send Emails or "
      "Letters instead.";
  struct Case {
    CounterValues counters;
    const char* from;
    const char* account;
    const char* password;
    const char* refusal;
  };
  const Case cases[] = {
      {{.sms = 1, .emails = 1}, "a@b", "id", "pw", ""},
      {{.sms = 1, .emails = 1}, "  ", " ", "pw", kNoSender},
      {{.sms = 1, .emails = 1}, "a@b", "  ", "pw", kNoAccount},
      {{.sms = 1}, "", "id", " ", kNoAccount},
      {{.sms = 1}, "", "id", "pw", ""},
      {{.sms = 1, .smsSent = 1, .emails = 1}, "a@b", "", "", ""},
      {{.sms = 1, .emails = 1, .emailsSent = 1}, "", "id", "pw", ""},
  };
  for (const Case& c : cases) {
    Options options;
    options.Reminder_From_Email = c.from;
    options.SMS_ClientID = c.account;
    options.SMS_ClientPassword = c.password;
    EXPECT_EQ(Shown(CheckAccounts(c.counters, options)), c.refusal);
  }
}

TEST(MailshotChecks, SpeakOfCredits) {
  EXPECT_EQ(
      Shown(CreditsUnknownMessage("01234")),
      "! Unable to determine the amount of SMS Text Message credits available on your account.\r\rThere may be a "
      "technical problem with your internet connection, or with the QBX SMS Gateway Server.\r\rPlease call QBX on "
      "01234 if you require assistance.");
  const Message question = CreditsQuestion({.inAll = 7, .toGo = 7});
  EXPECT_EQ(
      question.text,
      "This campaign is going to use approximately 7 SMS credits.\r\n\r\nWould you like to proceed?\r\nNo: Send Email "
      "Only, Cancel: Cancel Sending");
  EXPECT_EQ(question.title, "SMS Credits");
  EXPECT_EQ(question.buttons, MessageButtons::kYesNoCancel);
  EXPECT_TRUE(
      CreditsQuestion({.inAll = 58, .sent = 50, .toGo = 8}).text.contains("8 SMS credits (58 in all, 50 sent)."));
  const CreditsRefusal none = NotEnoughCredits(0, {.inAll = 3, .toGo = 3});
  EXPECT_EQ(Shown(none.message),
            "! There are no Text Message credits remaining on your account. SMS Text Messages cannot be processed.");
  EXPECT_EQ(none.logLine, "Processing Stopped - no Text Messages available (0)");
  const CreditsRefusal few = NotEnoughCredits(2.5, {.inAll = 3, .toGo = 3});
  EXPECT_EQ(Shown(few.message),
            "! There is not enough Text Message credits on your account to process all SMS message in the results "
            "list.\r\r2.5 available, but require: 3");
  EXPECT_TRUE(
      NotEnoughCredits(4, {.inAll = 58, .toGo = 8}).message.text.endsWith("4 available, but require: 8 (58 in all)"));
  EXPECT_EQ(few.logLine, "Processing Stopped - not enough Text Messages available (2.5)");
}

TEST(MailshotChecks, AskAboutWhatWasDeliveredBefore) {
  EXPECT_EQ(
      DeliveredQuestion(2).text,
      "2 customers already got their text or e-mail of this campaign; only the other half failed.\r\rSend them again what they already got?");
  EXPECT_TRUE(DeliveredQuestion(1).text.startsWith("1 customer already got its text or e-mail"));
  EXPECT_EQ(DeliveredQuestion(1).defaultAnswer, MessageAnswer::kNo);
}

}  // namespace
}  // namespace qbx
