// The fonts of a letter that this computer does not have.

#pragma once

#include <QList>
#include <QString>
#include <QTextDocument>

namespace qbx {

struct MissingFont {
  QString name;     ///< as the letter has it and keeps it
  QString shownAs;  ///< the font that stands for it here
};

/// In the order in which the letter uses them. Needs a QGuiApplication, which knows the fonts.
[[nodiscard]] QList<MissingFont> MissingFonts(const QTextDocument& document);

}  // namespace qbx
