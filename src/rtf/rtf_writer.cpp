#include "rtf/rtf_writer.h"

#include <QTextBlock>
#include <QTextFrame>
#include <QTextList>
#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

#include "merge/template_fields.h"
#include "rtf/formats.h"
#include "rtf/looks.h"
#include "rtf/picture.h"
#include "rtf/writer_tables.h"

namespace qbx {
namespace {

class RtfWriter {
 public:
  explicit RtfWriter(const QTextDocument& document) : document_(document), defaultFont_(document.defaultFont()) {}

  QByteArray Write();

 private:
  /// Characters of a paragraph with one format.
  struct Run {
    qsizetype end;
    QTextCharFormat format;
  };

  void WriteParagraph(const QTextBlock& block);
  void WriteMarker(const QTextBlock& block, const RtfParagraph& look, bool first);
  void AddWords(const QByteArray& words);
  void WriteRuns(const QTextBlock& block);
  void WriteText(QStringView text, const QTextCharFormat& format);
  void ChangeLook(const QTextCharFormat& format);
  [[nodiscard]] QByteArray PageWords() const;

  const QTextDocument& document_;
  QFont defaultFont_;
  WriterTables tables_;
  QByteArray body_;
  RtfCharacter character_;
  std::optional<RtfParagraph> paragraph_;
  bool openWord_ = false;  ///< whether a control word comes last, so that text after it needs a blank
};

QByteArray RtfWriter::Write() {
  const QByteArray defaultFont = QByteArray::number(LookOf(QTextCharFormat(), defaultFont_, tables_).font);
  for (QTextBlock block = document_.begin(); block.isValid(); block = block.next())
    WriteParagraph(block);
  const double tab = document_.defaultTextOption().tabStopDistance() * kTwipsAPixel;
  // A word processor changes sequences of blanks when no generator is named.
  return "{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff" + defaultFont + "\\deftab" + QByteArray::number(std::lround(tab)) +
         "\r\n{\\*\\generator QBX Marketing;}" + tables_.Written() + PageWords() + "\\plain\r\n" + body_ + "}\r\n";
}

QByteArray RtfWriter::PageWords() const {
  QByteArray words;
  const QVariantMap page = document_.rootFrame()->frameFormat().property(kPageWords).toMap();
  for (auto word = page.begin(); word != page.end(); ++word)
    words += '\\' + word.key().toLatin1() + QByteArray::number(word.value().toInt());
  return words;
}

void RtfWriter::WriteParagraph(const QTextBlock& block) {
  const RtfParagraph look = LookOf(block, tables_);
  const bool another = paragraph_ != look;
  if (another) AddWords(WordsOf(look));
  if (block.blockFormat().pageBreakPolicy() & QTextFormat::PageBreak_AlwaysBefore) AddWords("\\page");
  if (look.list > 0) WriteMarker(block, look, another);
  paragraph_ = look;
  WriteRuns(block);
  body_ += "\\par\r\n";
  openWord_ = false;
}

/// Writes the marker as text, for readers without lists, and the list in the old syntax.
void RtfWriter::WriteMarker(const QTextBlock& block, const RtfParagraph& look, bool first) {
  const QTextListFormat format = block.textList()->format();
  const QString bullet = BulletOf(format);
  const QByteArray symbol = "\\f" + QByteArray::number(WriterTables::SymbolFont());
  const QByteArray marker = bullet.isEmpty() ? ' ' + EscapedRtf(block.textList()->itemText(block)) : symbol + "\\'b7";
  body_ += "{\\pntext" + marker + "\\tab}";
  openWord_ = false;
  if (!first) return;
  QByteArray kind = "\\pnlvlbody\\pndec";
  if (format.style() == QTextListFormat::ListUpperAlpha) kind = "\\pnlvlbody\\pnucltr";
  if (format.style() == QTextListFormat::ListLowerAlpha) kind = "\\pnlvlbody\\pnlcltr";
  if (format.style() == QTextListFormat::ListUpperRoman) kind = "\\pnlvlbody\\pnucrm";
  if (format.style() == QTextListFormat::ListLowerRoman) kind = "\\pnlvlbody\\pnlcrm";
  body_ += "{\\*\\pn" + (bullet.isEmpty() ? kind : "\\pnlvlblt\\pnf" + QByteArray::number(WriterTables::SymbolFont())) +
           "\\pnindent" + QByteArray::number(std::max(0, -look.firstLine)) +
           (bullet.isEmpty() ? "{\\pntxta.}}" : "{\\pntxtb\\'b7}}");
  // After the old syntax: a reader that knows both uses the last.
  AddWords("\\ls" + QByteArray::number(look.list) + "\\ilvl0");
}

void RtfWriter::WriteRuns(const QTextBlock& block) {
  std::vector<Run> runs;
  for (auto part = block.begin(); !part.atEnd(); ++part) {
    const QTextFragment fragment = part.fragment();
    runs.push_back({fragment.position() - block.position() + fragment.length(), fragment.charFormat()});
  }
  if (runs.empty()) ChangeLook(block.charFormat());

  const QString text = block.text();
  qsizetype at = 0;
  for (const Run& run : runs) {
    qsizetype start = at;
    while (at < run.end) {
      const qsizetype field = FieldLength(QStringView(text).sliced(at), false);
      at += std::max<qsizetype>(field, 1);
    }
    if (at > start) WriteText(QStringView(text).sliced(start, at - start), run.format);
  }
}

void RtfWriter::WriteText(QStringView text, const QTextCharFormat& format) {
  if (format.isImageFormat()) {
    const QByteArray group = PictureGroup(format.toImageFormat(), document_);
    body_ += group.repeated(text.count(QChar::ObjectReplacementCharacter));
    openWord_ = openWord_ && group.isEmpty();
    return;
  }
  ChangeLook(format);
  // A blank keeps the text, or a merged value, apart from the control word before it.
  if (openWord_) body_ += ' ';
  openWord_ = false;
  body_ += EscapedRtf(text);
}

void RtfWriter::ChangeLook(const QTextCharFormat& format) {
  const RtfCharacter look = LookOf(format, defaultFont_, tables_);
  AddWords(WordsBetween(character_, look));
  character_ = look;
}

void RtfWriter::AddWords(const QByteArray& words) {
  body_ += words;
  openWord_ = openWord_ || !words.isEmpty();
}

}  // namespace

QString WriteRtf(const QTextDocument& document) {
  return QString::fromLatin1(RtfWriter(document).Write());
}

}  // namespace qbx
