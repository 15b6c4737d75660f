// The tables at the head of an RTF text: fonts, colours, lists. Used inside this folder only.

#pragma once

#include <QColor>
#include <QHash>
#include <QList>
#include <QString>
#include <QTextListFormat>
#include <optional>

namespace qbx {

struct RtfFont {
  QString name = {};  ///< as it stands there, blanks and all
  int codePage = 0;   ///< 0: that of the letter
};

class RtfFonts {
 public:
  void Word(QStringView name, int number);
  void Text(QStringView text);
  /// \return an unnamed font for a number that the table does not have
  [[nodiscard]] const RtfFont& Find(int number) const;
  /// The code page of the names that are being read.
  [[nodiscard]] int CodePage() const { return Find(current_).codePage; }

 private:
  QHash<int, RtfFont> fonts_;
  int current_ = 0;
  bool named_ = false;  ///< the semicolon came
};

class RtfColours {
 public:
  void Word(QStringView name, int number);
  void Text(QStringView text);
  /// \return an invalid colour where the table has none, which means the colour of the surroundings
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
  /// \return nothing where the list is unknown or has no marks at this level
  [[nodiscard]] std::optional<QTextListFormat> Find(int list, int level) const;

 private:
  struct Level {
    int numbering = 0;
    QString text =
        {};  ///< its length, what stands before the number, a code below 9 for the number, what stands behind
  };
  [[nodiscard]] static QTextListFormat FormatOf(const Level& level);

  QList<Level> current_;
  QHash<int, QList<Level>> lists_;  ///< by list ID
  QHash<int, int> overrides_;       ///< \ls to list ID
  int overridden_ = 0;
};

}  // namespace qbx
