// Colours that are made readable.

#include "platform/ui/look.h"

#include <gtest/gtest.h>

#include "platform/ui/contrast.h"

namespace qbx {
namespace {

TEST(Look, TextIsReadableInALightAndInADarkPalette) {
  for (const bool dark : {false, true}) {
    QPalette palette(QColor(dark ? 0x323232 : 0xEFEFEF));
    palette.setColor(QPalette::Base, QColor(dark ? 0x242424 : 0xFFFFFF));
    palette.setColor(QPalette::Highlight, QColor(0x308CC6));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette = ReadableParts(palette).resolve(palette);
    const auto colour = [&palette](QPalette::ColorRole role) { return palette.color(QPalette::Active, role); };
    EXPECT_GE(Contrast(colour(QPalette::HighlightedText), colour(QPalette::Highlight)), kTextContrast) << dark;
    for (const QPalette::ColorRole role : {QPalette::Base, QPalette::Button})
      EXPECT_GE(Contrast(colour(QPalette::PlaceholderText), colour(role)), kTextContrast) << dark << role;
  }
  const QColor mark = Readable(Qt::black, Qt::white, {Qt::black}, kMarkContrast);
  EXPECT_GE(Contrast(mark, Qt::black), kMarkContrast);
  EXPECT_LT(Contrast(mark, Qt::black), 4) << "no more than is needed";
}

}  // namespace
}  // namespace qbx
