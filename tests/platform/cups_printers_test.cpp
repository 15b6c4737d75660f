// The printers of a real print service, which the test starts for itself. Its only queue keeps what it prints.

#include "platform/cups_printers.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <thread>

#include "platform/safe_file.h"
#include "support/printing.h"

namespace qbx::test {
namespace {

/// Runs until it goes out of scope. The client library is told of it by the environment, so one a process.
class PrintService {
 public:
  PrintService() {
    for (const char* name : {"spool", "cache", "state", "bin/backend", "bin/filter", "bin/notifier", "kept"})
      QDir(folder_.path()).mkpath(name);
    QFile::setPermissions(folder_.path(), QFile::Permissions(0x7755));
    QFile::setPermissions(folder_.filePath("kept"), QFile::Permissions(0x7777));
    QFile::link("/usr/lib/cups/daemon", folder_.filePath("bin/daemon"));
    Write(
        "bin/backend/keep",
        "#!/bin/sh\n[ $# -eq 0 ] && exit 0\ncat ${6:+\"$6\"} >\"${DEVICE_URI#keep:}/printed.pdf\"\necho \"$4 $5\" >\"${DEVICE_URI#keep:}/options\"\nchmod 644 \"${DEVICE_URI#keep:}\"/*\n");
    QFile::setPermissions(folder_.filePath("bin/backend/keep"), QFile::Permissions(0x7755));
    Write(
        "cupsd.conf",
        "Listen %1/socket\nBrowsing No\nDefaultAuthType None\n<Location />\nAllow all\n</Location>\n<Policy default>\n<Limit All>\nOrder deny,allow\n</Limit>\n</Policy>\n");
    Write(
        "cups-files.conf",
        "ServerRoot %1\nServerBin %1/bin\nRequestRoot %1/spool\nCacheDir %1/cache\nStateDir %1/state\nAccessLog %1/access\nErrorLog %1/error\nPageLog %1/page\nSystemGroup root\n");
    qputenv("CUPS_SERVER", folder_.filePath("socket").toUtf8());
    service_.start("/usr/sbin/cupsd",
                   {"-f", "-c", folder_.filePath("cupsd.conf"), "-s", folder_.filePath("cups-files.conf")});
    EXPECT_TRUE(WaitForFile("socket")) << "cupsd (package cups-daemon) does not run";
  }
  ~PrintService() { Stop(); }

  void AddQueue(const QString& name) {
    EXPECT_EQ(QProcess::execute("/usr/sbin/lpadmin", {"-p", name, "-D", "The office", "-E", "-v",
                                                      QString("keep:") + folder_.filePath("kept"), "-m", "raw"}),
              0);
    QProcess::execute("/usr/sbin/lpadmin", {"-d", name});
  }
  void Stop() {
    service_.terminate();
    service_.waitForFinished();
  }
  [[nodiscard]] QByteArray Printed(const QString& name) {
    return WaitForFile("kept/options") ? ReadWholeFile(folder_.filePath(QString("kept/") + name)).value_or(QByteArray())
                                       : QByteArray();
  }
  void Write(const char* name, const QString& text) {
    EXPECT_EQ(ReplaceFile(folder_.filePath(name), QString(text).replace("%1", folder_.path()).toUtf8()), QString());
  }
  [[nodiscard]] QString File(const char* name) { return folder_.filePath(name); }

 private:
  bool WaitForFile(const QString& name) {
    for (int tries = 0; tries < 300 && !QFile::exists(folder_.filePath(name)); ++tries)
      QThread::msleep(50);
    return QFile::exists(folder_.filePath(name));
  }

  QTemporaryDir folder_;  // no blank in its name, which a queue could not have
  QProcess service_;
};

TEST(CupsPrinters, ListAndPrint) {
  PrintService service;
  service.AddQueue("office");
  service.Write("report.pdf", "%PDF-1.4 a report");
  CupsPrinters printers;
  const std::stop_token stop;
  const std::vector<Printer> list = printers.List(stop);
  ASSERT_EQ(list.size(), 1U);
  EXPECT_EQ(list[0].deviceId, "office");
  EXPECT_EQ(list[0].name, "The office");
  EXPECT_TRUE(list[0].isDefault);

  const PrintJob job{
      .file = service.File("report.pdf"), .title = "Letters", .copies = 2, .bothSides = true, .paper = {210, 297}};
  EXPECT_THROW(printers.Print("attic", job, stop), PrinterError);
  printers.Print("office", job, stop);
  EXPECT_EQ(service.Printed("printed.pdf"), QByteArray("%PDF-1.4 a report"));
  const QByteArray options = service.Printed("options");
  for (const char* option : {"sides=two-sided-long-edge", "print-scaling=none", "media=iso_a4_210x297mm"})
    EXPECT_TRUE(options.startsWith("2 ") && options.contains(option)) << options.constData();

  EXPECT_EQ(QProcess::execute("/usr/sbin/lpadmin", {"-x", "office"}), 0);
  EXPECT_TRUE(printers.List(stop).empty()) << "no printer is no failure";
  service.Stop();
  EXPECT_THROW(static_cast<void>(printers.List(stop)), PrinterError);
  EXPECT_THROW(printers.Print("office", job, stop), PrinterError);
}

TEST(CupsPrinters, AServiceThatDoesNotAnswerIsGivenUpWhenTold) {
  const QTemporaryDir folder;
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  qstrncpy(address.sun_path, qPrintable(folder.filePath("silent")), sizeof address.sun_path);
  const int listening = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listening, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  ASSERT_EQ(listen(listening, 1), 0);
  qputenv("CUPS_SERVER", address.sun_path);
  std::jthread caller(
      [](const std::stop_token& stop) { EXPECT_THROW(static_cast<void>(CupsPrinters().List(stop)), PrinterError); });
  const int caught = accept(listening, nullptr, nullptr);  // it waits for an answer from now on
  caller.request_stop();
  caller.join();
  close(caught);
  close(listening);
}

}  // namespace
}  // namespace qbx::test
