// The tables that a written letter needs, filled while its text is written. Used inside this folder only.

#pragma once

#include <QByteArray>
#include <QColor>
#include <QHash>
#include <QList>
#include <QStringList>
#include <QTextList>

namespace qbx {

/// A text in the middle of RTF: escaped, and beyond ASCII as \u.
[[nodiscard]] QByteArray EscapedRtf(QStringView text);

class WriterTables {
 public:
  WriterTables();

  [[nodiscard]] qsizetype Font(const QString& name);
  /// \return 0 for an invalid colour, which means that of the surroundings
  [[nodiscard]] qsizetype Colour(const QColor& colour);
  /// The number of a list, from 1.
  [[nodiscard]] qsizetype List(const QTextList* list);
  /// The font of bullets.
  [[nodiscard]] static qsizetype SymbolFont() { return 0; }

  /// Font, colour and list tables with all that was asked for.
  [[nodiscard]] QByteArray Written() const;

 private:
  [[nodiscard]] QByteArray WrittenLists() const;

  QStringList fonts_;
  QList<QColor> colours_;  ///< from number 1
  QList<QTextListFormat> lists_;
  QHash<QString, qsizetype> fontNumbers_;
  QHash<QRgb, qsizetype> colourNumbers_;
  QHash<const QTextList*, qsizetype> listNumbers_;
};

/// The bullet of a list as text, empty for a list of numbers.
[[nodiscard]] QString BulletOf(const QTextListFormat& format);

}  // namespace qbx
