#include "util/tagged_string.h"

#include <gtest/gtest.h>

#include <array>

namespace qbx {
namespace {

TEST(TaggedString, Reads) {
  const std::array<const char*, 3> cases[] = {
      {"SZ:10,PR:5", "pr", "5"},
      {"SZ:10,PR:5", "PR:", "5"},
      {"SZ:10", "SZ", "10"},
      {"SZ:", "SZ", ""},
      {"", "SZ", ""},
      {"SZ:10", "MW", ""},
      {"AMSG:tail,MSG:own", "MSG", "tail"},
      {"MSG:a:b,X:1", "MSG", "a:b"},
      {"MSG:cut, here", "MSG", "cut"},
  };
  for (const auto& [tagged, key, value] : cases)
    EXPECT_EQ(strGetTag(tagged, key), value) << tagged << " / " << key;
}

TEST(TaggedString, Writes) {
  const std::array<const char*, 4> cases[] = {
      {"", "MSG", "x", "MSG:x"},    {"A:1,B:2", "a", "9", "a:9,B:2"},         {"A:1,B:2", "B:", "", "A:1,B:"},
      {"A:1", "C", "3", "A:1,C:3"}, {"AMSG:1,B:2", "MSG", "x", "AMSG:x,B:2"},
  };
  for (const auto& [tagged, key, value, result] : cases) {
    EXPECT_EQ(strSetTag(tagged, key, value), result) << tagged << " / " << key;
  }
}

TEST(TaggedString, WritesToTheChosenPropertyOnly) {
  TaggedObject object;
  strSetTag(object, "K", "1", true, true);
  strSetTag(object, "K", "2", false, true);
  strSetTag(object, "K", "3", false, false);
  EXPECT_EQ(object.Caption, "K:1");
  EXPECT_EQ(object.TagVariant, "K:2");
  EXPECT_EQ(object.Tag, "K:3");
}

}  // namespace
}  // namespace qbx
