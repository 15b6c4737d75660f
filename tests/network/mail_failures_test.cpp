// The mail transport against servers that misbehave.

#include <gtest/gtest.h>

#include "network/curl_mail_transport.h"
#include "network/smtp_dialogue.h"
#include "script_server.h"

namespace qbx {
namespace {

using test::Peer;
using test::ScriptServer;

const QByteArray kMessage = "Subject: x\r\n\r\nHello\r\n";

MailResult SendTo(const ScriptServer& server, CurlMailTransport& transport, const QByteArray& message = kMessage,
                  bool useTls = false) {
  const MailServer settings = {.host = "127.0.0.1", .port = server.Port(), .useTls = useTls};
  return transport.Send(settings, {"garage@example.org", {"ann@example.org"}, message}, {});
}

void Answer(Peer& peer, const QByteArray& command, const QByteArray& answer) {
  EXPECT_TRUE(peer.ReadTo("\r\n").startsWith(command)) << command.toStdString();
  peer.Write(answer);
}

void Greet(Peer& peer) {
  peer.Write("220 here\r\n");
  Answer(peer, "EHLO", "250-here\r\n250 SIZE 100000000\r\n");
}

/// Takes a message up to the question of whether it was taken.
void TakeMessage(Peer& peer) {
  Answer(peer, "MAIL", "250 ok\r\n");
  Answer(peer, "RCPT", "250 ok\r\n");
  Answer(peer, "DATA", "354 go\r\n");
  EXPECT_TRUE(peer.ReadTo("\r\n.\r\n").endsWith("Hello\r\n.\r\n"));
}

TEST(MailFailures, AKeptConnectionThatTheServerDroppedIsReplacedOnce) {
  const std::function<void(Peer&)> waysToGo[] = {
      [](Peer&) {},                                             // closed in silence
      [](Peer& peer) { peer.Write("421 idle too long\r\n"); },  // closed with a word
      [](Peer& peer) { peer.ReadTo("\r\n"); },                  // closed at MAIL
      [](Peer& peer) { Answer(peer, "MAIL", "421 closing\r\n"); },
      [](Peer& peer) {
        Answer(peer, "MAIL", "250 ok\r\n");
        Answer(peer, "RCPT", "250 ok\r\n");
        peer.ReadTo("DATA\r\n");
      },
  };
  for (const auto& leave : waysToGo) {
    ScriptServer server([&leave](Peer& peer, int number) {
      Greet(peer);
      TakeMessage(peer);
      peer.Write("250 taken\r\n");
      if (number == 1) leave(peer);
      if (number == 2) Answer(peer, "QUIT", "221 bye\r\n");
    });
    CurlMailTransport transport;
    EXPECT_EQ(SendTo(server, transport).outcome, MailOutcome::kSent);
    const MailResult second = SendTo(server, transport);
    EXPECT_EQ(second.outcome, MailOutcome::kSent) << second.error.toStdString();
    EXPECT_EQ(server.Connections(), 2);
    EXPECT_TRUE(transport.Close());
  }
}

TEST(MailFailures, NothingIsRepeatedOnceTheMessageWasInvited) {
  ScriptServer server([](Peer& peer, int) {
    Greet(peer);
    TakeMessage(peer);
    peer.Write("250 taken\r\n");
    TakeMessage(peer);
  });
  CurlMailTransport transport;
  EXPECT_EQ(SendTo(server, transport).outcome, MailOutcome::kSent);
  const MailResult dropped = SendTo(server, transport);
  EXPECT_EQ(dropped.outcome, MailOutcome::kUncertain) << dropped.error.toStdString();
  EXPECT_TRUE(dropped.transport);
  EXPECT_EQ(server.Connections(), 1);
}

TEST(MailFailures, OnlyACompleteAnswerSettlesAMessage) {
  struct Case {
    const char* answer;
    MailOutcome outcome;
    bool transport;
  };
  const Case cases[] = {
      {"250-partly\r\n", MailOutcome::kUncertain, true},    {"25", MailOutcome::kUncertain, true},
      {"250-all\r\n250 ok\r\n", MailOutcome::kSent, false}, {"554-no\r\n554 never\r\n", MailOutcome::kRefused, false},
      {"421 closing\r\n", MailOutcome::kRefused, true},     {"452 full\r\n", MailOutcome::kRefused, false},
  };
  for (const Case& c : cases) {
    ScriptServer server([&c](Peer& peer, int) {
      Greet(peer);
      TakeMessage(peer);
      peer.Write(c.answer);
    });
    CurlMailTransport transport;
    const MailResult result = SendTo(server, transport);
    EXPECT_EQ(result.outcome, c.outcome) << c.answer << ": " << result.error.toStdString();
    EXPECT_EQ(result.transport, c.transport) << c.answer << ": " << result.error.toStdString();
  }
}

TEST(MailFailures, AMessageCutOffInTheMiddleDidNotGoOut) {
  ScriptServer server([](Peer& peer, int) {
    Greet(peer);
    Answer(peer, "MAIL", "250 ok\r\n");
    Answer(peer, "RCPT", "250 ok\r\n");
    Answer(peer, "DATA", "354 go\r\n");
    peer.ReadTo("Subject");
  });
  CurlMailTransport transport;
  const MailResult result = SendTo(server, transport, "Subject: big\r\n\r\n" + QByteArray(50 << 20, 'x') + "\r\n");
  EXPECT_EQ(result.outcome, MailOutcome::kRefused) << result.error.toStdString();
  EXPECT_TRUE(result.transport);
}

TEST(MailFailures, SilenceEndsInATimeOut) {
  const auto silent = [](bool takeMessage) {
    return [takeMessage](Peer& peer, int) {
      Greet(peer);
      if (takeMessage) TakeMessage(peer);
      peer.ReadToEnd();
    };
  };
  CurlMailTransport transport({}, {.connectSeconds = 5, .replySeconds = 1, .totalSeconds = 5});
  ScriptServer atMail(silent(false));
  const MailResult early = SendTo(atMail, transport);
  EXPECT_EQ(early.outcome, MailOutcome::kRefused);
  EXPECT_TRUE(early.transport);
  EXPECT_FALSE(early.unreachable);
  EXPECT_TRUE(early.error.contains("did not answer in time")) << early.error.toStdString();
  ScriptServer atEnd(silent(true));
  const MailResult late = SendTo(atEnd, transport);
  EXPECT_EQ(late.outcome, MailOutcome::kUncertain);
  EXPECT_TRUE(late.transport);
}

TEST(MailFailures, NobodyWaitsForAServerThatDoesNotAnswerQuit) {
  QByteArrayList afterTheLast;
  int pumps = 0;
  {
    ScriptServer server([&afterTheLast](Peer& peer, int number) {
      Greet(peer);
      Answer(peer, "MAIL", "250 ok\r\n");
      if (number < 3) Answer(peer, "RCPT", "550 no such user\r\n");
      if (number == 3) {
        Answer(peer, "RCPT", "250 ok\r\n");
        Answer(peer, "DATA", "354 go\r\n");
        peer.ReadTo("\r\n.\r\n");
        peer.Write("250 taken\r\n");
      }
      afterTheLast.append(peer.ReadToEnd());
    });
    // With these limits whoever waits for an answer waits until the test is ended from outside.
    CurlMailTransport transport({}, {.replySeconds = 3600, .totalSeconds = 3600, .leaveSeconds = 1}, [&] { ++pumps; });
    for (int row = 0; row < 2; ++row) {
      const MailResult result = SendTo(server, transport);
      EXPECT_FALSE(result.transport || result.unreachable);
      EXPECT_TRUE(result.error.contains("550 no such user")) << result.error.toStdString();
      EXPECT_TRUE(transport.Close());
      EXPECT_EQ(pumps, 0);
    }
    EXPECT_EQ(SendTo(server, transport).outcome, MailOutcome::kSent);
    EXPECT_FALSE(transport.Close());
  }
  EXPECT_GT(pumps, 0);
  EXPECT_EQ(afterTheLast, (QByteArrayList{"QUIT\r\n", "QUIT\r\n", "QUIT\r\n"}));
}

TEST(MailFailures, NothingIsSentInTheClearWhereTlsIsAskedFor) {
  QByteArray heard;
  {
    ScriptServer server([&heard](Peer& peer, int) {
      Greet(peer);
      heard = peer.ReadToEnd();
    });
    CurlMailTransport transport;
    const MailResult result = SendTo(server, transport, kMessage, true);
    EXPECT_EQ(result.outcome, MailOutcome::kRefused);
    EXPECT_TRUE(result.transport && result.unreachable);
    EXPECT_TRUE(result.error.contains("No secure connection")) << result.error.toStdString();
  }
  EXPECT_FALSE(heard.contains("MAIL")) << heard.toStdString();
}

TEST(MailFailures, AServerThatDoesNotServeIsATransportFailure) {
  struct Case {
    const char* greeting;
    const char* mailAnswer;
    const char* part;
  };
  const Case cases[] = {{"554 go away\r\n", "", "554 go away"},
                        {"220 here\r\n", "530 5.7.0 Log in first\r\n", "530 5.7.0 Log in first"}};
  for (const Case& c : cases) {
    ScriptServer server([&c](Peer& peer, int) {
      peer.Write(c.greeting);
      peer.ReadTo("\r\n");
      peer.Write("250 here\r\n");
      peer.ReadTo("\r\n");
      peer.Write(c.mailAnswer);
    });
    CurlMailTransport transport;
    const MailResult result = SendTo(server, transport);
    EXPECT_EQ(result.outcome, MailOutcome::kRefused);
    EXPECT_TRUE(result.transport && result.unreachable) << c.part;
    EXPECT_TRUE(result.error.contains(c.part)) << result.error.toStdString();
  }
}

TEST(SmtpDialogueTest, ACodedLogInIsNeverTakenForACommand) {
  for (const char* line : {"QUITabcd", "MAILbGF0", "RCPTeHh4", "EHLOd29y", "DATAbGF0"}) {
    SmtpDialogue dialogue;
    dialogue.ClientSaid("EHLO desk\r\n");
    dialogue.ClientSaid(QByteArray(line) + "\r\n");
    dialogue.ServerSaid("535 no\r\n");
    EXPECT_EQ(dialogue.LastStep(), SmtpDialogue::Step::kLogin) << line;
    EXPECT_EQ(dialogue.Code(), 535) << line;
  }
}

}  // namespace
}  // namespace qbx
