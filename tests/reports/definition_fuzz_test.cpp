// Damaged definitions: nothing may crash or hang, and what is read can be laid out.
//
// QBX_REPORT_FUZZ_ROUNDS says how many (default: for a second or two), QBX_REPORT_FUZZ_SEED where to begin.

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <random>

#include "held_rows.h"

namespace qbx::test {
namespace {

class Damage {
 public:
  explicit Damage(unsigned seed) : random_(seed) {
    const QDir folder(QStringLiteral(QBX_DEFINITIONS));
    for (const QString& name : folder.entryList({"*.rpt"})) {
      QFile file(folder.filePath(name));
      if (file.open(QIODevice::ReadOnly)) whole_ += file.readAll();
    }
  }

  QByteArray Definition() {
    QByteArray bytes = Any(whole_);
    for (qsizetype changes = 1 + Below(5); changes > 0; --changes)
      Change(bytes);
    return bytes;
  }

 private:
  qsizetype Below(qsizetype limit) { return static_cast<qsizetype>(random_() % static_cast<unsigned>(limit)); }
  const QByteArray& Any(const QByteArrayList& list) { return list[Below(list.size())]; }
  /// Where a line or a value begins, so that more than a few definitions stay XML.
  qsizetype Place(const QByteArray& bytes, char mark) { return bytes.indexOf(mark, Below(bytes.size() + 1)) + 1; }

  void Change(QByteArray& bytes) {
    static const QByteArrayList kValues{"0",   "2000",  "-2000",    "400",   "yes",      "x",    "",
                                        "1e9", "@Name", "LetterID", "first", "&#xFDD0;", "&amp;"};
    static const QByteArrayList kPieces{"<pages/>",
                                        "<groupPages/>",
                                        "<br/>",
                                        "<!DOCTYPE r>",
                                        "&a;",
                                        "]]>",
                                        "<detail height='3'/>",
                                        "<group field='LetterID' drillDown='yes'><header height='3'/></group>",
                                        "\0"};
    const qsizetype line = Place(bytes, '\n');
    const qsizetype value = Place(bytes, '"');
    const QByteArray& other = Any(whole_);
    const qsizetype from = Place(other, '\n');
    switch (Below(6)) {
      case 0:
        bytes.replace(value, std::max<qsizetype>(0, bytes.indexOf('"', value) - value), Any(kValues));
        break;
      case 1:
        bytes.insert(line, other.mid(from, other.indexOf('\n', from) - from + 1));
        break;
      case 2:
        bytes.remove(line, bytes.indexOf('\n', line) - line + 1);
        break;
      case 3:
        bytes.insert(Place(bytes, '>'), Any(kPieces));
        break;
      case 4:
        bytes.remove(Below(bytes.size() + 1), Below(30));
        break;
      default:
        bytes.insert(Below(bytes.size() + 1), static_cast<char>(Below(256)));
    }
  }

  QByteArrayList whole_;
  std::mt19937 random_;
};

TEST(DefinitionFuzzTest, DamagedDefinitionsAreRefusedOrLaidOut) {
  bool given = false;
  const int rounds = qEnvironmentVariableIntValue("QBX_REPORT_FUZZ_ROUNDS", &given);
  Damage damage(static_cast<unsigned>(qEnvironmentVariableIntValue("QBX_REPORT_FUZZ_SEED")));
  const TempFolder folder;
  HeldRows rows;
  HeldRows::Table& table = rows.tables["SELECT"] = {{"LetterID", "Letter", "NameAddress"}, {}};
  for (int i = 0; i < 5; ++i)
    table.rows.push_back({Value(i),
                          Value(QString("{\\rtf1 ") + QString("a line\\par ").repeated(qsizetype{60} * i) + "}"),
                          Value(QString("A\nB"))});
  int read = 0;
  for (int round = 0; round < (given ? rounds : 200); ++round) {
    const QString path = folder.Write("test.rpt", damage.Definition());
    try {
      const Report report = Report::Open(path);
      const auto pager = report.LayOut(rows);
      int pages = 0;
      while (pager->Next())
        ASSERT_LT(++pages, 1000) << "round " << round;
      ++read;
    } catch (const ReportError& error) {
      ASSERT_FALSE(error.text.isEmpty()) << "round " << round;
    }
  }
  EXPECT_GT(read, 0) << "every round was refused: the test damages too much";
}

}  // namespace
}  // namespace qbx::test
