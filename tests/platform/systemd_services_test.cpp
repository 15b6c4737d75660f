#include "platform/systemd_services.h"

#include <gtest/gtest.h>

#include <QProcess>

#include "support/temp_folder.h"

namespace qbx {
namespace {

using test::TempFolder;

/// A program that runs beside the test until the test ends; it is ready once it has said something.
class Companion {
 public:
  Companion(const QString& program, const QStringList& arguments) {
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start(program, arguments);
    for (int tries = 0; tries < 30 && !process_.canReadLine() && process_.state() != QProcess::NotRunning; ++tries) {
      process_.waitForReadyRead(1000);
    }
    EXPECT_TRUE(process_.canReadLine()) << program.toStdString();
  }
  ~Companion() {
    process_.kill();
    process_.waitForFinished();
  }

 private:
  QProcess process_;
};

// One test, since the library behind the bus reads the bus's address once a process.
TEST(SystemdServices, AsksAndSteersUnits) {
  const TempFolder folder;
  const QString address = QString("unix:path=%1/bus").arg(folder.Path().replace(u' ', "%20"));
  qputenv("DBUS_SYSTEM_BUS_ADDRESS", address.toLocal8Bit());
  const Companion daemon("dbus-daemon", {"--session", "--nofork", "--print-address", QString("--address=") + address});
  const auto unitOf = [](const QString& service) -> QString {
    if (service == "ENGINE$GARAGE") return "engine@garage";
    return service.contains(u'$') ? QString() : service;
  };
  SystemdServices services(unitOf);
  EXPECT_FALSE(services.Available());
  EXPECT_FALSE(services.Exists("running"));
  QString error;
  EXPECT_FALSE(services.FindByListing("running", &error).has_value());
  EXPECT_FALSE(error.isEmpty());

  const Companion systemd("/usr/bin/python3", {QStringLiteral(QBX_TEST_FOLDER "/mock_systemd.py")});
  EXPECT_TRUE(services.Available());
  struct Case {
    const char* service;
    std::optional<ServiceState> state;
  };
  const Case cases[] = {{"running", ServiceState::kRunning},
                        {"running.service", ServiceState::kRunning},
                        {"stopped", ServiceState::kStopped},
                        {"failed", ServiceState::kStopped},
                        {"starting", ServiceState::kStartPending},
                        {"stopping", ServiceState::kStopPending},
                        {"ENGINE$GARAGE", ServiceState::kStopped},
                        {"ENGINE$OTHER", std::nullopt},
                        {"unheard of", std::nullopt}};
  for (const Case& c : cases) {
    const QString service = c.service;
    EXPECT_EQ(services.State(service), c.state) << c.service;
    EXPECT_EQ(services.Exists(service), c.state.has_value()) << c.service;
    EXPECT_EQ(services.FindByListing(service, &error), c.state.has_value()) << c.service;
  }
  const auto request = [&](const char* service, ServiceAction action) { return services.Request(service, action); };
  EXPECT_FALSE(request("running", ServiceAction::kStart)) << "it runs already";
  EXPECT_FALSE(request("stopped", ServiceAction::kStop)) << "it is stopped already";
  EXPECT_FALSE(request("running", ServiceAction::kPause));
  EXPECT_FALSE(request("running", ServiceAction::kContinue));
  EXPECT_FALSE(request("unheard of", ServiceAction::kStart));
  EXPECT_FALSE(request("failed", ServiceAction::kStart)) << "systemd refuses";
  EXPECT_TRUE(request("ENGINE$GARAGE", ServiceAction::kStart));
  EXPECT_EQ(services.State("ENGINE$GARAGE"), ServiceState::kRunning);
  EXPECT_TRUE(request("running", ServiceAction::kStop));
  EXPECT_EQ(services.State("running"), ServiceState::kStopped);
}

}  // namespace
}  // namespace qbx
