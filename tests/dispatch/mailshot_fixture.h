// A desk, its servers on loopback, and a user who sends, and goes on after failures.

#pragma once

#include <gmock/gmock.h>

#include "received.h"
#include "sending_desk.h"
#include "support/fakes.h"

namespace qbx::test {

class MailshotFixture : public testing::Test {
 protected:
  MailshotFixture() {
    desk.host.ui.OnMessage([this](const Message& message) -> std::optional<MessageAnswer> {
      EXPECT_FALSE(desk.host.connection.InTransaction()) << "other desks wait behind: " << message.text.toStdString();
      if (message.question == Question::kSmsCredits) return aboutCredits;
      if (message.question == Question::kRepeatDelivered) return aboutDelivered;
      const bool isAboutFailures =
          message.question == Question::kCancelQueuedEmails || message.question == Question::kGoOnSending;
      return isAboutFailures ? std::optional(MessageAnswer::kNo) : std::nullopt;
    });
  }

  /// The texts of boxes that only inform.
  QStringList Told() const {
    QStringList texts;
    for (const Message& message : desk.host.ui.Messages())
      if (message.question == Question::kOther) texts += message.text;
    return texts;
  }
  /// Flips the Processed flag of a row, as the results grid does.
  void ToggleProcessed(qint64 record) {
    EXPECT_TRUE(desk.host.statements.dbRunCommandWithParameters("proc_updp_Marketing_ToggleCheckbox",
                                                                {record, QString("Processed")}));
  }
  QStringList Journal() {
    return desk.host.Rows(
        "SELECT r.Customer, j.Channel, j.State FROM Send_Journal j JOIN [Campaign Results] r ON r.RecordID = "
        "j.RecordID "
        "ORDER BY r.Customer, j.Channel");
  }

  SandboxProcess sandbox;
  FakeHostInfo computer;
  SendingDesk desk{sandbox.HttpPort(), sandbox.SmtpPort(), computer};
  MessageAnswer aboutCredits = MessageAnswer::kYes;
  std::optional<MessageAnswer> aboutDelivered = {};  ///< the question fails a test that does not expect it
};

/// Does something at a step of a run, and writes its progress down.
class AtPoint final : public MailshotObserver {
 public:
  AtPoint(MailshotPoint point, std::function<void(qint64)> action) : point_(point), action_(std::move(action)) {}
  void At(MailshotPoint point, qint64 recordId) override {
    if (point == point_) action_(recordId);
  }
  void Progress(int done, int total) override { progress += QString("%1/%2").arg(done).arg(total); }

  QStringList progress;

 private:
  MailshotPoint point_;
  std::function<void(qint64)> action_;
};

}  // namespace qbx::test
