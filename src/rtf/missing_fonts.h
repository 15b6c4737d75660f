// The fonts of a letter that this computer lacks.

#pragma once

#include <QList>
#include <QString>
#include <QTextCharFormat>
#include <QTextDocument>

namespace qbx {

struct MissingFont {
  QString name;     ///< as the letter names it
  QString shownAs;  ///< the font that is used instead on this computer
};

/// The missing fonts in the order in which the letter uses them. Text without a font uses the document's. Needs a
/// QGuiApplication, which knows the fonts.
/// \param typedNext  the format of what is typed next; its font comes last
[[nodiscard]] QList<MissingFont> MissingFonts(const QTextDocument& document, const QTextCharFormat& typedNext = {});

}  // namespace qbx
