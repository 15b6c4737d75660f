// The fonts of a letter that this computer does not have.

#pragma once

#include <QList>
#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>

namespace qbx {

struct MissingFont {
  QString name;     ///< as the letter has it and keeps it
  QString shownAs;  ///< the font that stands for it here
};

/// In the order in which the letter uses them. Text without a font has the document's own. Needs a QGuiApplication, which knows the fonts.
/// \param typedNext  the look of what is typed next, whose font comes last
[[nodiscard]] QList<MissingFont> MissingFonts(const QTextDocument& document, const QTextCharFormat& typedNext = {});

}  // namespace qbx
