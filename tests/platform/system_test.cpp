// The shell and the host information of the computer that runs the tests.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>

#include "platform/system_host_info.h"
#include "platform/system_shell.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::TempFolder;

TEST(SystemShell, AddressesGetAPrefix) {
  EXPECT_EQ(WithHttpPrefix("www.example.org"), "http://www.example.org");
  EXPECT_EQ(WithHttpPrefix("HTTPS://example.org"), "HTTPS://example.org");
  EXPECT_EQ(WithHttpPrefix(QString()), "http://");
}

TEST(SystemShell, RunsCommandsToTheirEnd) {
  const TempFolder folder;
  SystemShell shell;
  EXPECT_TRUE(shell.RunHidden(QString("read line; echo \"got <$line>\"; echo done > '%1'").arg(folder.File("out"))));
  EXPECT_EQ(folder.Read("out"), "done\n");
  EXPECT_FALSE(shell.RunHidden("exit 3"));
  EXPECT_FALSE(shell.RunHidden("no-such-command-here"));
}

TEST(SystemShell, EndsACommandThatTakesTooLongWithAllItStarted) {
  const TempFolder folder;
  SystemShell shell(200);
  EXPECT_FALSE(shell.RunHidden(QString("sleep 600 & echo $! > '%1'; wait").arg(folder.File("pid"))));
  const QString stat = QString("/proc/%1/stat").arg(folder.Read("pid").trimmed().toInt());
  const auto ended = [&stat] {
    QFile file(stat);
    return !file.open(QIODevice::ReadOnly) || file.readAll().contains(") Z ");
  };
  for (int tries = 0; tries < 500 && !ended(); ++tries)
    ::usleep(10000);
  EXPECT_TRUE(ended());
}

TEST(SystemShell, OpensWithTheDesktopsProgram) {
  const TempFolder folder;
  const QString opener = folder.Write(
      "bin/xdg-open", "#!/bin/sh\necho \"$#:$1\" > '" + folder.File("new").toLocal8Bit() + "'\nmv '" +
                          folder.File("new").toLocal8Bit() + "' '" + folder.File("opened").toLocal8Bit() + "'\n");
  ASSERT_EQ(::chmod(QFile::encodeName(opener).constData(), 0755), 0);
  const QByteArray path = qgetenv("PATH");
  qputenv("PATH", folder.File("bin").toLocal8Bit() + ":" + path);
  SystemShell shell;
  EXPECT_TRUE(shell.Open("http://example.org/a b&c"));
  for (int tries = 0; tries < 500 && !QFile::exists(folder.File("opened")); ++tries)
    ::usleep(10000);
  EXPECT_EQ(folder.Read("opened"), "1:http://example.org/a b&c\n");
  qputenv("PATH", folder.File("nowhere").toLocal8Bit());
  EXPECT_FALSE(shell.Open("http://example.org"));
  qputenv("PATH", path);
}

TEST(SystemHostInfo, TellsProcessesApart) {
  const SystemHostInfo host;
  EXPECT_EQ(host.ComputerName(), host.ComputerName().toUpper());
  EXPECT_FALSE(host.ComputerName().isEmpty());
  EXPECT_EQ(host.ProcessId(), ::getpid());
  const qint64 own = host.ProcessStart(host.ProcessId());
  EXPECT_GT(own, 0);
  EXPECT_GE(own, host.ProcessStart(::getppid()));
  EXPECT_EQ(host.ProcessStart(0), 0);
  EXPECT_EQ(host.ProcessStart(-1), 0);
  EXPECT_EQ(host.ProcessStart(qint64(1) << 40), 0);
}

}  // namespace
}  // namespace qbx
