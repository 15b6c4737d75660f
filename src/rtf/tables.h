// The tables at the start of an RTF text: fonts, colours, lists. For use in this folder only.

#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextListFormat>
#include <optional>

namespace qbx {

struct RtfFont {
  QString name = {};  ///< unchanged, with all its blanks
  int codePage = 0;   ///< 0 for the code page of the letter
};

class RtfFonts {
 public:
  void Word(QStringView name, int number);
  void Text(QStringView text);
  /// \return an unnamed font for a number that the table lacks
  [[nodiscard]] const RtfFont& Find(int number) const;
  /// The code page of the font names that are being read.
  [[nodiscard]] int CodePage() const { return Find(current_).codePage; }

 private:
  QHash<int, RtfFont> fonts_;
  int current_ = 0;
  bool named_ = false;  ///< whether the name's semicolon was read
};

class RtfColours {
 public:
  void Word(QStringView name, int number);
  void Text(QStringView text);
  /// \return an invalid colour, which means the colour of the surroundings, for a number that the table lacks
  [[nodiscard]] QColor Find(int number) const { return colours_.value(number); }

 private:
  QList<QColor> colours_;
  QColor current_;
};

class RtfLists {
 public:
  void TableWord(QStringView name, int number);
  void OverrideWord(QStringView name, int number);
  void LevelText(QStringView text);
  /// How the items of a list are marked.
  /// \return nothing when the list is unknown or has no marks at this level
  [[nodiscard]] std::optional<QTextListFormat> Find(int list, int level) const;

 private:
  struct Level {
    int numbering = 0;
    QString text = {};  ///< its length, the text before the number, a code below 9 for the number, the text after it
  };
  [[nodiscard]] static QTextListFormat FormatOf(const Level& level);

  QList<Level> current_;
  QHash<int, QList<Level>> lists_;  ///< by list ID
  QHash<int, int> overrides_;       ///< from \ls to list ID
  int overridden_ = 0;
};

}  // namespace qbx
