#include "network/curl_http_client.h"

#include <gtest/gtest.h>

#include "script_server.h"

namespace qbx {
namespace {

using test::Peer;
using test::ScriptServer;

QString UrlOf(const ScriptServer& server) {
  return QString("http://127.0.0.1:%1/sms?ClientAuth=s3cret").arg(server.Port());
}

/// The answer of a server that says the same to everyone.
HttpReply GetFrom(const QByteArray& answer, const HttpLimits& limits = {}) {
  ScriptServer server([&](Peer& peer, int) {
    peer.ReadTo("\r\n\r\n");
    peer.Write(answer);
  });
  CurlHttpClient client({}, limits);
  return client.Get(UrlOf(server));
}

TEST(CurlHttpClient, DecodesTheBodyByItsCharset) {
  const QByteArray head = "HTTP/1.1 200 OK\r\nContent-Type: text/plain";
  EXPECT_EQ(GetFrom(head + "\r\nContent-Length: 3\r\n\r\n\xA3"
                           "5\x80")
                .body,
            "£5€");
  EXPECT_EQ(GetFrom(head + "; Charset=UTF-8\r\nContent-Length: 3\r\n\r\n\xC2\xA3"
                           "5")
                .body,
            "£5");
  EXPECT_EQ(GetFrom(head + "\r\nContent-Length: 0\r\n\r\n").body, QString());
  EXPECT_EQ(GetFrom(head + "\r\nConnection: close\r\n\r\nto the end").body, "to the end");
}

TEST(CurlHttpClient, TellsRefusalsFromRequestsInDoubt) {
  struct Case {
    const char* answer;
    bool inDoubt;
    const char* part;
  };
  const Case cases[] = {
      {"HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\n\r\n", false, "404"},
      {"HTTP/1.1 500 Oh\r\nContent-Length: 2\r\n\r\nno", true, "500"},
      {"HTTP/1.1 503 Oh\r\nContent-Length: 2\r\n\r\nno", false, "503"},
      {"HTTP/1.1 302 Found\r\nLocation: /else\r\nContent-Length: 0\r\n\r\n", false, "302"},
      {"HTTP/1.1 200 OK\r\nContent-Length: 20\r\n\r\nbroken of", true, "did not answer completely"},
      {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nbroke", true, "did not answer completely"},
      {"", true, "did not answer completely"},
      {"no HTTP at all\r\n\r\n", true, "did not answer completely"},
      {"HTTP/1.1 200 OK\r\nContent-Length: 60\r\n\r\n123456789 123456789 123456789 123456789 123456789 123456789 ",
       true, "more than 50"},
  };
  for (const Case& c : cases) {
    const HttpReply reply = GetFrom(c.answer, {.bodyBytes = 50});
    EXPECT_FALSE(reply.body.has_value()) << c.answer;
    EXPECT_EQ(reply.inDoubt, c.inDoubt) << c.answer;
    EXPECT_TRUE(reply.error.contains(c.part)) << reply.error.toStdString();
    EXPECT_FALSE(reply.error.contains("s3cret")) << reply.error.toStdString();
  }
}

TEST(CurlHttpClient, SendsNothingTwice) {
  // The second request goes out over the kept connection, and the server drops it unanswered.
  std::atomic<int> requests = 0;
  ScriptServer server([&](Peer& peer, int) {
    while (!peer.ReadTo("\r\n\r\n").isEmpty()) {
      if (++requests == 2) return;
      peer.Write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
    }
  });
  CurlHttpClient client;
  EXPECT_EQ(client.Get(UrlOf(server)).body, "ok");
  const HttpReply dropped = client.Get(UrlOf(server));
  EXPECT_FALSE(dropped.body.has_value());
  EXPECT_TRUE(dropped.inDoubt);
  EXPECT_EQ(requests, 2);
  EXPECT_EQ(client.Get(UrlOf(server)).body, "ok");
}

TEST(CurlHttpClient, ReplacesAConnectionThatWasClosedBetweenRequests) {
  ScriptServer server([](Peer& peer, int) {
    peer.ReadTo("\r\n\r\n");
    peer.Write("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\nok");
  });
  CurlHttpClient client;
  EXPECT_EQ(client.Get(UrlOf(server)).body, "ok");
  server.WaitForClosed(1);
  EXPECT_EQ(client.Get(UrlOf(server)).body, "ok");
}

TEST(CurlHttpClient, RefusesWhatIsNoWebAddress) {
  CurlHttpClient client;
  for (const char* url :
       {"", "sms/send_sms.asp?ClientAuth=s3cret", "http:///sms?ClientAuth=s3cret", "file:///etc/passwd",
        "http://host/a b?ClientAuth=s3cret", "http://host/\r\nX: y", "http//garage:s3cret@host/sms"}) {
    const HttpReply reply = client.Get(QString::fromUtf8(url));
    EXPECT_FALSE(reply.body.has_value()) << url;
    EXPECT_FALSE(reply.inDoubt) << url;
    EXPECT_FALSE(reply.error.contains("s3cret")) << url;
  }
}

TEST(CurlHttpClient, AClosedPortIsNoDoubt) {
  QString url;
  {
    const ScriptServer gone([](Peer&, int) {});
    url = UrlOf(gone);
  }
  CurlHttpClient client;
  const HttpReply reply = client.Get(url);
  EXPECT_FALSE(reply.inDoubt);
  EXPECT_TRUE(reply.error.contains("could not be reached")) << reply.error.toStdString();
}

TEST(CurlHttpClient, IsGivenUpWhenTold) {
  ScriptServer server([](Peer& peer, int) { peer.ReadToEnd(); });
  int pumped = 0;
  CurlHttpClient client([&] { return ++pumped < 3; }, {.totalSeconds = 20});
  EXPECT_TRUE(client.Get(UrlOf(server)).inDoubt);
  EXPECT_EQ(pumped, 3);
}

}  // namespace
}  // namespace qbx
