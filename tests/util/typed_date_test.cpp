#include "util/typed_date.h"

#include <gtest/gtest.h>

#include "support/printing.h"

namespace qbx {
namespace {

TEST(TypedDate, ReadsWhatPeopleType) {
  const QDate expected(2026, 3, 4);
  for (const char* text :
       {"04/03/2026", "4/3/26", " 4.3.2026 ", "4-3-2026", "4 3 2026", "04032026", "040326", "2026-03-04"}) {
    EXPECT_EQ(ParseTypedDate(text), expected) << text;
  }
  EXPECT_EQ(ParseTypedDate("1/1/90"), QDate(1990, 1, 1));
  EXPECT_EQ(ParseTypedDate("31/12/2099"), kLatestTypedDate);
}

TEST(TypedDate, RefusesWhatIsNoDate) {
  for (const char* text :
       {"", "  ", "31/02/2026", "13", "4/3", "4/3/202", "1/1/2100", "a/b/c", "-4/3/2026x", "4/3/2026/1"}) {
    EXPECT_FALSE(ParseTypedDate(QString::fromLatin1(text)).isValid()) << text;
  }
}

}  // namespace
}  // namespace qbx
