#include "database/odbc/instance_port.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include "database/database_error.h"

namespace qbx {
namespace {

/// Finds the port of an instance, while a socket answers each question with all the given datagrams.
/// \return the port, or the number of the error
int Found(const std::vector<QByteArray>& answers, InstanceSearch search = {.limit = std::chrono::seconds(30)}) {
  const int server = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
  sockaddr_in address = {.sin_family = AF_INET, .sin_port = 0, .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
  socklen_t length = sizeof(address);
  auto* place = reinterpret_cast<sockaddr*>(&address);
  EXPECT_TRUE(::bind(server, place, length) == 0 && ::getsockname(server, place, &length) == 0);
  search.port = ntohs(address.sin_port);
  search.pump = [&] {  // answers from inside the search, which must call its pump
    char bytes[64];
    const ssize_t got = ::recvfrom(server, bytes, sizeof(bytes), 0, place, &length);
    if (got < 0) return;
    EXPECT_EQ(QByteArray(bytes, got), QByteArray("\4QBX\0", 5));
    for (const QByteArray& answer : answers)
      ::sendto(server, answer.constData(), static_cast<std::size_t>(answer.size()), 0, place, length);
  };
  int found = 0;
  try {
    found = LocateServer(QStringLiteral("127.0.0.1\\QBX"), search).port;
  } catch (const DatabaseError& error) {
    found = error.Number();
  }
  ::close(server);
  return found;
}

QByteArray Answer(const QByteArray& words, int missing = 0) {
  const auto length = static_cast<quint16>(words.size() + missing);
  return QByteArray(1, 5) + static_cast<char>(length & 0xFF) + static_cast<char>(length >> 8) + words;
}

QByteArray Instance(const QByteArray& name, const QByteArray& rest) {
  return "ServerName;PC1;InstanceName;" + name + ";IsClustered;No;Version;9.0;" + rest + ";;";
}

TEST(InstancePort, ComesFromTheAnswerThatListsTheInstance) {
  EXPECT_EQ(Found({Answer(Instance("A", "tcp;1") + Instance("QBX", "np;x;tcp;2") + Instance("B", "tcp;3"))}), 2);
  for (const char* rest : {"np;x", "tcp;0", "tcp;65536", "tcp;-5", "tcp;x", "tcp;"})
    EXPECT_EQ(Found({Answer(Instance("QBX", rest) + Instance("B", "tcp;3"))}), kUnspecifiedError) << rest;
  // Ignores datagrams that are no answer, are cut off, or list other instances only.
  EXPECT_EQ(Found({"", "\5", QByteArray("\5\0\0", 3), "\4\1\1x", Answer(Instance("QBX", "tcp;1"), 1),
                   Answer(QByteArray(60000, ';')), Answer(Instance("OTHER", "tcp;1")),
                   Answer(Instance("qbx", "tcp;57137;np;x"))}),
            57137);
}

TEST(InstancePort, EndsTheSearchAfterItsTimeLimitAndWhenCancelled) {
  EXPECT_EQ(Found({}, {.limit = std::chrono::milliseconds(30)}), kUnspecifiedError);
  EXPECT_EQ(Found({}, {.limit = std::chrono::hours(1), .cancelled = [] { return true; }}), kCommandCancelled);
}

TEST(InstancePort, IsReadFromTheNameWhenItIsThere) {
  const char* written[] = {"PC1",      "PC1,1433",     "tcp:PC1,1500",   "PC1,1500",         "PC1:1500\\QBX",
                           "PC1,1500", ".\\QBX, 1500", "localhost,1500", "::1\\MSSQLSERVER", "::1,1433"};
  for (std::size_t at = 0; at < std::size(written); at += 2) {
    const ServerAddress address = LocateServer(QString::fromLatin1(written[at]));
    EXPECT_EQ(address.host + QStringLiteral(",%1").arg(address.port), QLatin1String(written[at + 1]));
  }
  EXPECT_EQ(ServerAddress::Parse(QStringLiteral("PC1\\QBX\\QBX")).instance, QLatin1String("QBX"));
  for (const char* server : {"", "\\QBX", "PC1,", "PC1,70000", "np:\\\\PC1\\x", "PC1;PWD=x", "PC1\n[x]", "PC1\\a;b",
                             "PC1\\", "PC1\\\\QBX,14399"})
    EXPECT_THROW((void)ServerAddress::Parse(QString::fromLatin1(server)), DatabaseError) << server;
}

}  // namespace
}  // namespace qbx
