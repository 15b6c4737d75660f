// Measures how a large letter is loaded into a document and stored.
//
//   rtf_bench [ROUNDS [KIB]]
//
// Prints medians. Needs no display. The letter has KIB kibibytes (default 1024). It repeats a dozen paragraphs of
// different looks. A second letter has list items only, a third one a single large picture. The comparison puts the
// same text without its looks into a document, with the library alone. The two sides run in turn.

#include <QGuiApplication>
#include <QTextDocument>
#include <array>

#include "rtf/rtf_reader.h"
#include "rtf/rtf_writer.h"
#include "support/rounds.h"

namespace {

using namespace qbx;
using namespace qbx::bench;

QString Letter(const QString& paragraphs, qsizetype size) {
  QString letter =
      u"{\\rtf1\\ansi\\deff0{\\fonttbl{\\f0 Tahoma;}{\\f1 Arial;}}{\\colortbl;\\red255;\\blue128;}"
      u"{\\*\\listtable{\\list{\\listlevel\\levelnfc23{\\leveltext\\'01\\'b7;}}\\listid1}}"
      u"{\\*\\listoverridetable{\\listoverride\\listid1\\ls1}}\\pard\\fs20 "_qs;
  while (letter.size() < size)
    letter += paragraphs;
  return letter + u'}';
}

const QString kMixed =
    u"\\pard\\qc\\b\\fs28\\cf1 Your {\\i car} is due\\b0\\fs20\\cf0\\par\r\n"
    u"\\pard\\sa120\\tx1440\\tx2880 Dear \\{contact\\},\\par\r\n"
    u"Your \\b\\{make\\} \\{model\\}\\b0  with Rego No {\\f1\\ul \\{regno\\}} is due on \\{duedate\\}. It\\rquote s "
    u"\\'a340 for the test, caf\\'e9 included \\u8211 - and we keep it short.\\par\r\n"
    u"\\pard\\fi-360\\li720\\ls1 Brakes\\par Tyres, {\\strike lights}\\par\r\n"
    u"\\pard\\qj A paragraph of some length follows, as letters have them, in which nothing changes at all for a while.\\par "_qs;

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  const int rounds = argc > 1 ? std::max(1, std::atoi(argv[1])) : 9;
  const qsizetype size = 1024 * (argc > 2 ? std::max(1, std::atoi(argv[2])) : 1024);
  const QString mixed = Letter(kMixed, size);
  const std::array<QString, 2> others{
      Letter(u"\\pard\\fi-360\\li720\\ls1 Item\\par "_qs, size),
      Letter(u"{\\pict\\pngblip\\picwgoal300\\pichgoal300 "_qs + u"89504e47"_qs.repeated(size / 8) + u'}', size)};

  QTextDocument document;
  ReadRtf(mixed, document);
  const QString plain = document.toPlainText();
  const QString written = WriteRtf(document);
  QTextDocument again;
  ReadRtf(written, again);
  if (again.toPlainText() != plain) Fail("What was written is not what was read.");

  std::array<std::vector<double>, 5> times;
  for (int round = 0; round < rounds; ++round) {
    times[0].push_back(Milliseconds([&] { document.setPlainText(plain); }));
    times[1].push_back(Milliseconds([&] { ReadRtf(mixed, document); }));
    times[2].push_back(Milliseconds([&] {
      if (WriteRtf(document) != written) Fail("The second writing differs.");
    }));
    for (std::size_t i = 0; i < others.size(); ++i)
      times[3 + i].push_back(Milliseconds([&] { ReadRtf(others[i], document); }));
  }
  constexpr std::array<const char*, 5> kNames{"its text, by the library alone", "letter read", "letter written",
                                              "list items read", "picture read"};
  std::printf("%lld KiB of RTF, %lld characters of text, median of %d rounds\n", static_cast<long long>(size / 1024),
              static_cast<long long>(plain.size()), rounds);
  for (std::size_t i = 0; i < kNames.size(); ++i)
    std::printf("%-32s %8.1f ms\n", kNames[i], Median(times[i]));
  return 0;
}
