// The tables of a written letter, filled while its text is written. For use in this folder only.

#pragma once

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QTextList>

namespace qbx {

/// A text in RTF: escaped, characters beyond ASCII as \u.
[[nodiscard]] QByteArray EscapedRtf(QStringView text);

class WriterTables {
 public:
  WriterTables();

  [[nodiscard]] qsizetype Font(const QString& name);
  /// \return 0, the colour of the surroundings, for an invalid colour
  [[nodiscard]] qsizetype Colour(const QColor& colour);
  /// The number of a list, from 1.
  [[nodiscard]] qsizetype List(const QTextList* list);
  /// The number of the font of bullets.
  [[nodiscard]] static qsizetype SymbolFont() { return 0; }

  /// The font, colour and list tables with everything that was asked for.
  [[nodiscard]] QByteArray Written() const;

 private:
  [[nodiscard]] QByteArray WrittenLists() const;

  QStringList fonts_;
  QList<QColor> colours_;  ///< numbered from 1
  QList<QTextListFormat> lists_;
  QHash<QString, qsizetype> fontNumbers_;
  QHash<QRgb, qsizetype> colourNumbers_;
  QHash<const QTextList*, qsizetype> listNumbers_;
};

/// The bullet of a list as text; empty for a numbered list.
[[nodiscard]] QString BulletOf(const QTextListFormat& format);

}  // namespace qbx
