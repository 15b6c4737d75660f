#include "rtf/writer_tables.h"

#include "rtf/formats.h"
#include "util/windows1252.h"

namespace qbx {
namespace {

bool IsSymbolFont(const QString& name) {
  static const QStringList kSymbolFonts{QStringLiteral("Symbol"),      QStringLiteral("Wingdings"),
                                        QStringLiteral("Wingdings 2"), QStringLiteral("Wingdings 3"),
                                        QStringLiteral("Webdings"),    QStringLiteral("Marlett")};
  return kSymbolFonts.contains(name, Qt::CaseInsensitive);
}

int Numbering(QTextListFormat::Style style) {
  switch (style) {
    case QTextListFormat::ListDecimal:
      return 0;
    case QTextListFormat::ListUpperRoman:
      return 1;
    case QTextListFormat::ListLowerRoman:
      return 2;
    case QTextListFormat::ListUpperAlpha:
      return 3;
    case QTextListFormat::ListLowerAlpha:
      return 4;
    default:
      return 23;
  }
}

/// The marks of a list: their length in characters, then the characters; a zero stands for the number.
QByteArray LevelText(const QTextListFormat& format) {
  const QString bullet = BulletOf(format);
  if (!bullet.isEmpty()) return "{\\leveltext\\'01" + EscapedRtf(bullet) + ";}{\\levelnumbers;}";
  const auto withoutNumbers = [](const QString& text) { return EscapedRtf(text.left(8).remove(u';')); };
  const QString suffix =
      format.hasProperty(QTextFormat::ListNumberSuffix) ? format.numberSuffix() : QStringLiteral(".");
  const QByteArray before = withoutNumbers(format.numberPrefix());
  const qsizetype prefix = format.numberPrefix().left(8).remove(u';').size();
  const qsizetype length = prefix + 1 + suffix.left(8).remove(u';').size();
  const auto hex = [](qsizetype number) { return QByteArray::number(number, 16).rightJustified(2, '0'); };
  return "{\\leveltext\\'" + hex(length) + before + "\\'00" + withoutNumbers(suffix) + ";}{\\levelnumbers\\'" +
         hex(prefix + 1) + ";}";
}

}  // namespace

QByteArray EscapedRtf(QStringView text) {
  QByteArray rtf;
  rtf.reserve(text.size());
  for (const QChar unit : text) {
    const char16_t code = unit.unicode();
    if (code == u'\\' || code == u'{' || code == u'}') {
      rtf += '\\';
      rtf += static_cast<char>(code);
    } else if (code >= 0x20 && code < 0x7F) {
      rtf += static_cast<char>(code);
    } else if (code == u'\t') {
      rtf += "\\tab ";
    } else if (code == u'\u2028') {
      rtf += "\\line ";
    } else if (code == u'\u00A0') {
      rtf += "\\~";
    } else if (code > 0x7F) {
      rtf += "\\u" + QByteArray::number(static_cast<qint16>(code));
      // Readers without Unicode know a character of a symbol font by its low byte.
      const QByteArray nearest =
          code >> 8 == 0xF0 ? QByteArray(1, static_cast<char>(code & 0xFF)) : ToWindows1252(QString(unit));
      rtf += nearest == "?" ? nearest : "\\'" + nearest.toHex();
    }
  }
  return rtf;
}

QString BulletOf(const QTextListFormat& format) {
  switch (format.style()) {
    case QTextListFormat::ListDisc:
      return QStringLiteral("\u2022");
    case QTextListFormat::ListCircle:
      return QStringLiteral("\u25E6");
    case QTextListFormat::ListSquare:
      return QStringLiteral("\u25AA");
    default:
      return {};
  }
}

WriterTables::WriterTables() {
  (void)Font(QStringLiteral("Symbol"));
}

qsizetype WriterTables::Font(const QString& name) {
  const qsizetype number = fontNumbers_.value(name, fonts_.size());
  if (number < fonts_.size()) return number;
  fontNumbers_.insert(name, number);
  fonts_.append(name);
  return number;
}

qsizetype WriterTables::Colour(const QColor& colour) {
  if (!colour.isValid()) return 0;
  qsizetype& number = colourNumbers_[colour.rgb()];
  if (number == 0) {
    colours_.append(QColor(colour.rgb()));
    number = colours_.size();
  }
  return number;
}

qsizetype WriterTables::List(const QTextList* list) {
  qsizetype& number = listNumbers_[list];
  if (number == 0) {
    lists_.append(list->format());
    number = lists_.size();
  }
  return number;
}

QByteArray WriterTables::Written() const {
  QByteArray rtf = "{\\fonttbl";
  for (qsizetype i = 0; i < fonts_.size(); ++i) {
    rtf += "{\\f" + QByteArray::number(i) + "\\fnil\\fcharset" + (IsSymbolFont(fonts_[i]) ? "2 " : "0 ") +
           EscapedRtf(fonts_[i].left(kMaxFontName).remove(u';').trimmed()) + ";}";
  }
  rtf += "}\r\n{\\colortbl ;";
  for (const QColor& colour : colours_) {
    rtf += "\\red" + QByteArray::number(colour.red()) + "\\green" + QByteArray::number(colour.green()) + "\\blue" +
           QByteArray::number(colour.blue()) + ';';
  }
  return rtf + "}\r\n" + WrittenLists();
}

QByteArray WriterTables::WrittenLists() const {
  if (lists_.isEmpty()) return {};
  QByteArray lists = "{\\*\\listtable";
  QByteArray overrides = "{\\*\\listoverridetable";
  for (qsizetype i = 0; i < lists_.size(); ++i) {
    const QByteArray number = QByteArray::number(i + 1);
    const QTextListFormat& format = lists_[i];
    lists += "\r\n{\\list\\listtemplateid" + number + "\\listsimple1{\\listlevel\\levelnfc" +
             QByteArray::number(Numbering(format.style())) + "\\leveljc0\\levelfollow0\\levelstartat1" +
             LevelText(format) + "}{\\listname ;}\\listid" + number + '}';
    overrides += "{\\listoverride\\listid" + number + "\\listoverridecount0\\ls" + number + '}';
  }
  return lists + "}\r\n" + overrides + "}\r\n";
}

}  // namespace qbx
