#include "diagnostics/log_file.h"

#include <gtest/gtest.h>

#include "support/fixed_clock.h"
#include "support/temp_folder.h"

namespace qbx {
namespace {

TEST(LogFile, AppendsStampedLines) {
  const test::TempFolder folder;
  test::FixedClock clock;
  clock.Set(QDate(2026, 3, 4), QTime(9, 5, 7));
  LogFile log(clock, folder.File("MARKETING.LOG"));
  log.WriteLog("one é");
  log.SetPath(folder.File("other.log"));
  log.WriteLog("two");
  log.SetPath({});
  clock.AdvanceSeconds(qint64{4} * 3600);
  log.WriteLog("three");
  EXPECT_EQ(folder.Read("MARKETING.LOG"), QByteArray("09:05:07  one \xc3\xa9\r\n13:05:07  three\r\n"));
  EXPECT_EQ(folder.Read("other.log"), QByteArray("09:05:07  two\r\n"));
}

TEST(LogFile, LosesALineThatCannotBeWritten) {
  const test::TempFolder folder;
  const test::FixedClock clock;
  const LogFile log(clock, folder.File("missing/MARKETING.LOG"));
  log.WriteLog("lost");
  EXPECT_TRUE(folder.Names().isEmpty());
}

}  // namespace
}  // namespace qbx
