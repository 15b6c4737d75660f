// Damaged letters: nothing may crash, the caps hold, and what was read is written and read again the same.
//
// QBX_RTF_FUZZ_ROUNDS says how many (default: for a second or two), QBX_RTF_FUZZ_SEED where to begin.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <random>

#include "rtf/rtf_reader.h"
#include "rtf/rtf_writer.h"
#include "support/printing.h"
#include "util/windows1252.h"

namespace qbx {
namespace {

QStringList Corpus() {
  QStringList texts;
  const QDir folder(QStringLiteral(QBX_RTF_CORPUS));
  for (const QString& name : folder.entryList(QDir::Files)) {
    QFile file(folder.filePath(name));
    if (file.open(QIODevice::ReadOnly)) texts << FromFileBytes(file.readAll());
  }
  return texts;
}

class Mutator {
 public:
  Mutator(const QStringList& corpus, unsigned seed) : corpus_(corpus), random_(seed) {}

  QString Text() {
    QString text = Any(corpus_);
    for (qsizetype changes = 1 + Below(8); changes > 0; --changes)
      Change(text);
    return text.startsWith(u"{\\rtf"_qs) ? text : u"{\\rtf1 "_qs + text;
  }

 private:
  qsizetype Below(qsizetype limit) { return static_cast<qsizetype>(random_() % static_cast<unsigned>(limit)); }
  const QString& Any(const QStringList& list) { return list[Below(list.size())]; }
  QString Piece(const QString& text) {
    const qsizetype start = Below(text.size() + 1);
    return text.mid(start, Below(60));
  }

  void Change(QString& text) {
    static const QStringList kPieces{u"{"_qs,
                                     u"}"_qs,
                                     u"\\"_qs,
                                     u"\\'"_qs,
                                     u"\\*"_qs,
                                     u"\\u-1 ?"_qs,
                                     u"\\bin7 "_qs,
                                     u"\\pict"_qs,
                                     u"\\par "_qs,
                                     u"\\page"_qs,
                                     u"\\cell"_qs,
                                     u"\\row"_qs,
                                     u"\\ls1"_qs,
                                     u"\\ilvl8"_qs,
                                     u"\\fs0"_qs,
                                     u"\\tx-5"_qs,
                                     u"\\pn\\pndec"_qs,
                                     u"\\fonttbl"_qs,
                                     u"\\uc0"_qs,
                                     u"\\listtable"_qs,
                                     u"\\pard"_qs,
                                     u"-2147483649"_qs,
                                     u"\\sl-9"_qs,
                                     u"\\fi-300"_qs,
                                     u"\\colortbl;;;"_qs,
                                     u"\uFFFC\uFDD0"_qs,
                                     u"\U0001F697"_qs,
                                     u"\\v"_qs,
                                     u"\\leveltext"_qs,
                                     u"\\pnlvlblt"_qs};
    const qsizetype at = Below(text.size() + 1);
    switch (Below(4)) {
      case 0:
        text.insert(at, Any(kPieces));
        break;
      case 1:
        text.remove(at, Below(40));
        break;
      case 2:
        text.insert(at, Piece(Any(corpus_)));
        break;
      default:
        text.replace(at, 1, QChar(static_cast<char16_t>(Below(Below(2) ? 0x80 : 0x10000))));
    }
  }

  const QStringList& corpus_;
  std::mt19937 random_;
};

TEST(RtfFuzzTest, DamagedLettersAreReadAndKept) {
  const QStringList corpus = Corpus();
  ASSERT_FALSE(corpus.isEmpty());
  bool given = false;
  const int rounds = qEnvironmentVariableIntValue("QBX_RTF_FUZZ_ROUNDS", &given);
  const int seed = qEnvironmentVariableIntValue("QBX_RTF_FUZZ_SEED");
  Mutator mutate(corpus, static_cast<unsigned>(seed));
  for (int round = 0; round < (given ? rounds : 1500); ++round) {
    const QString text = mutate.Text();
    QTextDocument read;
    ReadRtf(text, read);
    ASSERT_LE(read.characterCount(), text.size() + 2);
    const QString written = WriteRtf(read);
    QTextDocument again;
    ReadRtf(written, again);
    ASSERT_EQ(again.toPlainText(), read.toPlainText()) << "round " << round << ":\n" << text.toStdString();
    ASSERT_EQ(WriteRtf(again), written) << "round " << round << ":\n" << text.toStdString();
  }
}

}  // namespace
}  // namespace qbx
