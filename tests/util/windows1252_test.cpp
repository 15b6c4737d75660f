#include "util/windows1252.h"

#include <gtest/gtest.h>

namespace qbx {
namespace {

TEST(Windows1252, EveryByteComesBack) {
  QByteArray bytes;
  for (int code = 0; code < 256; ++code)
    bytes += static_cast<char>(code);
  EXPECT_EQ(ToWindows1252(FromWindows1252(bytes)), bytes);
}

TEST(Windows1252, KnowsItsOwnCharacters) {
  EXPECT_EQ(ToWindows1252("€é£’Ÿ"), QByteArray("\x80\xe9\xa3\x92\x9f"));
  EXPECT_EQ(FromWindows1252("\x80\x93\xa3"), "€“£");
  EXPECT_EQ(ToWindows1252("Łódź \U0001F697!"), QByteArray("?\xf3"
                                                          "d? ?!"));
}

}  // namespace
}  // namespace qbx
