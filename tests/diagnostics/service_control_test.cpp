#include "diagnostics/service_control.h"

#include <gtest/gtest.h>

#include "support/fakes.h"
#include "support/test_services.h"

namespace qbx {
namespace {

class ServiceControlTest : public testing::Test, protected test::TestServices {
 protected:
  [[nodiscard]] QStringList LogLines() const {
    return Log().split("\r\n", Qt::SkipEmptyParts).replaceInStrings("10:20:30  ", QString());
  }

  const QString name_ = "mssql$qbx";
  test::FakeServices services_;
  ServiceControl control_{services_, log};
};

TEST_F(ServiceControlTest, AMissingServiceIsNoFailure) {
  EXPECT_FALSE(control_.ServiceExists(name_));
  EXPECT_FALSE(control_.ServiceExists2(name_));
  EXPECT_EQ(control_.ServiceStatusText(name_), QString());
  EXPECT_TRUE(LogLines().isEmpty());
  EXPECT_FALSE(control_.ServiceStartStop(name_, 0));
  EXPECT_EQ(LogLines(), QStringList{"Service Start/Stop - could not open Service."});
}

TEST_F(ServiceControlTest, WithoutAManagerEveryQuestionIsALogLine) {
  services_.states.insert(name_, ServiceState::kRunning);
  services_.available = false;
  services_.listingError = "no bus";
  EXPECT_FALSE(control_.ServiceExists(name_));
  EXPECT_FALSE(control_.ServiceExists2(name_));
  EXPECT_FALSE(control_.ServiceStartStop(name_, 1));
  EXPECT_EQ(control_.ServiceStatusText(name_), QString());
  EXPECT_EQ(LogLines(),
            (QStringList{"Service Exists - could not open Service Control Manager", "Error in ServiceExists2: no bus",
                         "Service Start/Stop - could not open Service Control Manager"}));
  EXPECT_TRUE(services_.requests.isEmpty());
}

TEST_F(ServiceControlTest, SendsRequestsAndRefusesUnknownActions) {
  services_.states.insert(name_, ServiceState::kStopped);
  EXPECT_TRUE(control_.ServiceStartStop(name_, 0));
  EXPECT_TRUE(control_.ServiceStartStop(name_, 3));
  services_.accept = false;
  EXPECT_FALSE(control_.ServiceStartStop(name_, 1));
  EXPECT_EQ(services_.requests, (QStringList{name_ + ":0", name_ + ":3", name_ + ":1"}));
  EXPECT_THROW(control_.ServiceStartStop(name_, 4), std::invalid_argument);
  EXPECT_THROW(control_.ServiceStartStop(name_, -1), std::invalid_argument);
}

TEST_F(ServiceControlTest, WordsTheState) {
  services_.states.insert(name_, ServiceState::kContinuePending);
  EXPECT_EQ(control_.ServiceStatusText(name_), "Coninue Pending");
}

}  // namespace
}  // namespace qbx
