#include "util/typed_number.h"

#include <gtest/gtest.h>

namespace qbx {
namespace {

TEST(TypedNumber, DigitsInGroupsOfThreeAreOneNumber) {
  struct Case {
    const char16_t* text;
    double number;
    bool nothingElse;
  };
  for (const Case& c :
       {Case{u"80,000", 80000, true}, Case{u" -1 234 567.5", -1234567.5, true}, Case{u"80\u2009000", 80000, true},
        Case{u"80\u00a0000 miles", 80000, false}, Case{u"80,00", 80, false}, Case{u"1,0000", 1, false},
        Case{u"1000,000", 1000, false}, Case{u"1,234 567", 1234, false}, Case{u"80k", 80, false},
        Case{u"2015", 2015, true}, Case{u"", 0, false}, Case{u"eighty", 0, false}, Case{u"inf", 0, false}}) {
    const QString text = QString::fromUtf16(c.text);
    EXPECT_EQ(TypedNumber(text), c.number) << text.toStdString();
    EXPECT_EQ(IsTypedNumber(text), c.nothingElse) << text.toStdString();
  }
}

}  // namespace
}  // namespace qbx
