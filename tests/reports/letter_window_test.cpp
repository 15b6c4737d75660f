// The program's letters in their envelope. Its window shows 20 to 100 mm from the left and 57 to 81 mm from the top.

#include <gtest/gtest.h>

#include <QRegularExpression>

#include "held_rows.h"

namespace qbx::test {
namespace {

struct Word {
  QString text;
  QRectF box;  // millimetres
};

/// The words of each page in the output of pdftotext -bbox.
std::vector<std::vector<Word>> WordsOf(const QString& boxes) {
  static const QRegularExpression word(
      QStringLiteral(R"re(<word xMin="(\S+)" yMin="(\S+)" xMax="(\S+)" yMax="(\S+)">([^<]*)</word>)re"));
  std::vector<std::vector<Word>> pages;
  for (const QString& page : boxes.split("<page ").mid(1)) {
    std::vector<Word>& words = pages.emplace_back();
    for (auto found = word.globalMatch(page); found.hasNext();) {
      const auto match = found.next();
      const auto at = [&match](int i) { return match.captured(i).toDouble() * 25.4 / 72; };
      words.push_back({match.captured(5), QRectF(QPointF(at(1), at(2)), QPointF(at(3), at(4)))});
    }
  }
  return pages;
}

TEST(MarketingLetter, OnlyTheAddressStandsInTheWindow) {
  const TempFolder folder;
  TestReport test("");
  test.report = Report::Open(QStringLiteral(QBX_DEFINITIONS "/MarketingLetter.rpt"));
  const QString lines = QString("\"A long line of the garage's own\"").replace(u' ', u'-');
  for (const char* formula : {"{@CompanyName}", "{@CompanyAddress}", "{@CompanyRegistrationDetails}"})
    test.report.SetFormulaText(formula, QStringList(6, lines).join(" + Chr(10) + "));
  HeldRows::Table& letters = test.rows.tables["Letters"] = {{"LetterID", "NameAddress", "Letter"}, {}};
  const QString body = QString("{\\rtf1 ") + QString("Dear Sir, a word \\par ").repeated(90) + "}";
  for (int count = 1; count <= 7; ++count) {
    QString address = "\r\n";
    for (int i = 1; i <= count; ++i)
      address += QString("@Line%1 Westminster Business Park,\r\n\r\n").arg(i);
    letters.rows.push_back({Value(count), Value(address), Value(count == 1 ? body : "{\\rtf1 Hello}")});
  }
  const QRectF window(20, 57, 80, 24);
  const QRectF around = window.adjusted(-5, -5, 5, 5);
  const auto pages = WordsOf(test.PdfText({"-bbox"}));
  ASSERT_EQ(pages.size(), 9U) << "the first letter has three pages, each other one page";
  for (size_t number = 0; number < pages.size(); ++number) {
    const int expected = number == 0 ? 1 : number < 3 ? 0 : static_cast<int>(number) - 1;
    int begun = 0;
    for (const auto& [text, box] : pages[number]) {
      const bool ofAddress = text.startsWith(u'@') || text == u"Westminster" || text == u"Business" || text == u"Park,";
      if (text.startsWith(u'@')) ++begun;
      if (ofAddress) {
        EXPECT_TRUE(window.adjusted(0, 0, 0, 0.3).contains(box)) << number << ": " << text.toStdString();
      } else if (expected > 0) {
        EXPECT_FALSE(around.intersects(box)) << number << ": " << text.toStdString();
      }
    }
    EXPECT_EQ(begun, expected) << "page " << number;
  }
}

}  // namespace
}  // namespace qbx::test
