// A mailshot whose process is killed at every step of every message, and the run after it.

#include <QProcess>
#include <csignal>

#include "mailshot_fixture.h"

namespace qbx::test {
namespace {

using testing::UnorderedElementsAreArray;

/// What is true when the process dies at a point.
struct Death {
  const char* name;
  MailshotPoint point;
  bool wentOut;  ///< the message reached its server
  bool inDoubt;  ///< nobody can tell from the database whether it did
};

void PrintTo(const Death& death, std::ostream* stream) {
  *stream << death.name;
}

class MailshotCrashTest : public testing::TestWithParam<Death> {
 protected:
  /// Starts a run in a process of its own. \return its exit code, or minus the signal that ended it
  int RunChild(const SendingDesk& desk, int nth) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedChannels);
    child.start(QStringLiteral(QBX_MAILSHOT_CRASH),
                {desk.host.home, QString::number(sandbox.HttpPort()), QString::number(sandbox.SmtpPort()),
                 QString::number(static_cast<int>(GetParam().point)), QString::number(nth)});
    EXPECT_TRUE(child.waitForFinished(60'000));
    return child.exitStatus() == QProcess::CrashExit ? -SIGKILL : child.exitCode();
  }

  SandboxProcess sandbox;
  FakeHostInfo computer;
};

TEST_P(MailshotCrashTest, SendsNothingTwiceAndLosesNothing) {
  // In sending order; the first two belong to one row.
  const QStringList messages = {"07700900101", "a@x.test", "07700900102", "c@x.test"};
  for (int dies = 1; dies <= messages.size(); ++dies) {
    SCOPED_TRACE(dies);
    sandbox.Steer("{}");
    const QStringList before = Reached(sandbox);
    SendingDesk desk(sandbox.HttpPort(), sandbox.SmtpPort(), computer);
    desk.AddRow(101, messages[0], messages[1]);
    desk.AddRow(102, messages[2], "");
    desk.AddRow(103, "", messages[3]);
    ASSERT_EQ(RunChild(desk, dies), -SIGKILL);
    ASSERT_EQ(RunChild(desk, 0), 0);

    QStringList expected = messages;
    QStringList processed = {"101", "102", "103"};
    if (GetParam().inDoubt) {
      // The row waits for a person: nothing more of it goes out.
      if (dies == 1) expected.removeOne(messages[1]);
      if (!GetParam().wentOut) expected.removeOne(messages[dies - 1]);
      processed.removeAt(dies < 3 ? 0 : dies - 2);
    }
    QStringList reached = Reached(sandbox);
    for (const QString& earlier : before)
      reached.removeOne(earlier);
    EXPECT_THAT(reached, UnorderedElementsAreArray(expected));
    EXPECT_EQ(desk.Processed(), processed);
    EXPECT_EQ(desk.host.Rows("proc_selp_Send_Journal_Doubt (12)").size(), GetParam().inDoubt ? 1 : 0);
    const qint64 recorded = desk.host.Ask("SELECT (SELECT count(*) FROM SMS) + (SELECT count(*) FROM Emails)").ToInt();
    EXPECT_EQ(recorded, expected.size() - (GetParam().inDoubt && GetParam().wentOut ? 1 : 0));
  }
}

INSTANTIATE_TEST_SUITE_P(At, MailshotCrashTest,
                         testing::Values(Death{"BeforeJournal", MailshotPoint::kBeforeJournal, false, false},
                                         Death{"AfterJournal", MailshotPoint::kAfterJournal, false, true},
                                         Death{"AfterSend", MailshotPoint::kAfterSend, true, true},
                                         Death{"BeforeCommit", MailshotPoint::kBeforeCommit, true, true},
                                         Death{"AfterCommit", MailshotPoint::kAfterCommit, true, false}),
                         [](const auto& death) { return death.param.name; });

}  // namespace
}  // namespace qbx::test
