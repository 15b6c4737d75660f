#include "diagnostics/service_control.h"

#include <gtest/gtest.h>

#include "support/fakes.h"
#include "support/fixed_clock.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

class ServiceControlTest : public testing::Test {
 protected:
  [[nodiscard]] QStringList LogLines() const {
    if (folder_.Names().isEmpty()) return {};
    QStringList lines;
    for (const QString& line :
         QString::fromUtf8(folder_.Read(QStringLiteral("log"))).split(QStringLiteral("\r\n"), Qt::SkipEmptyParts))
      lines.append(line.mid(10));
    return lines;
  }

  const QString name_ = QStringLiteral("mssql$qbx");
  test::TempFolder folder_;
  test::FixedClock clock_;
  LogFile log_{clock_, folder_.File(QStringLiteral("log"))};
  test::FakeServices services_;
  ServiceControl control_{services_, log_};
};

TEST_F(ServiceControlTest, AMissingServiceIsNoFailure) {
  EXPECT_FALSE(control_.ServiceExists(name_));
  EXPECT_FALSE(control_.ServiceExists2(name_));
  EXPECT_EQ(control_.ServiceStatusText(name_), QString());
  EXPECT_TRUE(LogLines().isEmpty());
  EXPECT_FALSE(control_.ServiceStartStop(name_, 0));
  EXPECT_EQ(LogLines(), QStringList{QStringLiteral("Service Start/Stop - could not open Service.")});
}

TEST_F(ServiceControlTest, WithoutAManagerEveryQuestionIsALogLine) {
  services_.states.insert(name_, ServiceState::kRunning);
  services_.available = false;
  services_.listingError = QStringLiteral("no bus");
  EXPECT_FALSE(control_.ServiceExists(name_));
  EXPECT_FALSE(control_.ServiceExists2(name_));
  EXPECT_FALSE(control_.ServiceStartStop(name_, 1));
  EXPECT_EQ(control_.ServiceStatusText(name_), QString());
  EXPECT_EQ(LogLines(), (QStringList{QStringLiteral("Service Exists - could not open Service Control Manager"),
                                     QStringLiteral("Error in ServiceExists2: no bus"),
                                     QStringLiteral("Service Start/Stop - could not open Service Control Manager")}));
  EXPECT_TRUE(services_.requests.isEmpty());
}

TEST_F(ServiceControlTest, SendsRequestsAndRefusesUnknownActions) {
  services_.states.insert(name_, ServiceState::kStopped);
  EXPECT_TRUE(control_.ServiceStartStop(name_, 0));
  EXPECT_TRUE(control_.ServiceStartStop(name_, 3));
  services_.accept = false;
  EXPECT_FALSE(control_.ServiceStartStop(name_, 1));
  EXPECT_EQ(services_.requests,
            (QStringList{name_ + QLatin1String(":0"), name_ + QLatin1String(":3"), name_ + QLatin1String(":1")}));
  EXPECT_THROW(control_.ServiceStartStop(name_, 4), std::invalid_argument);
  EXPECT_THROW(control_.ServiceStartStop(name_, -1), std::invalid_argument);
}

TEST_F(ServiceControlTest, WordsTheState) {
  const std::pair<ServiceState, const char*> cases[] = {{ServiceState::kStopped, "Stopped"},
                                                        {ServiceState::kStartPending, "Start Pending"},
                                                        {ServiceState::kStopPending, "Stop Pending"},
                                                        {ServiceState::kRunning, "Running"},
                                                        {ServiceState::kContinuePending, "Coninue Pending"},
                                                        {ServiceState::kPausePending, "Pause Pending"},
                                                        {ServiceState::kPaused, "Paused"}};
  for (const auto& [state, text] : cases) {
    services_.states.insert(name_, state);
    EXPECT_EQ(control_.ServiceStatusText(name_), QLatin1String(text));
  }
}

}  // namespace
}  // namespace qbx
