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
  LogFile log(clock, folder.File(QStringLiteral("MARKETING.LOG")));
  log.WriteLog(QStringLiteral("one é"));
  log.SetPath(folder.File(QStringLiteral("other.log")));
  log.WriteLog(QStringLiteral("two"));
  log.SetPath({});
  clock.AdvanceSeconds(4 * 3600);
  log.WriteLog(QStringLiteral("three"));
  EXPECT_EQ(folder.Read(QStringLiteral("MARKETING.LOG")), QByteArray("09:05:07  one \xc3\xa9\r\n13:05:07  three\r\n"));
  EXPECT_EQ(folder.Read(QStringLiteral("other.log")), QByteArray("09:05:07  two\r\n"));
}

TEST(LogFile, LosesALineThatCannotBeWritten) {
  const test::TempFolder folder;
  const test::FixedClock clock;
  const LogFile log(clock, folder.File(QStringLiteral("missing/MARKETING.LOG")));
  log.WriteLog(QStringLiteral("lost"));
  EXPECT_TRUE(folder.Names().isEmpty());
}

}  // namespace
}  // namespace qbx
