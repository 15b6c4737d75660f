#include "merge/merge_fields.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "merge/compiled_template.h"
#include "merge/sample_customer.h"

namespace qbx {
namespace {

const QDate kToday(2026, 11, 16);

QString Compiled(const QString& text, const MergeValues& values) {
  CompiledTemplate compiled(text);
  QString merged = u"left over from the row before"_qs;
  compiled.Merge(values, kToday, merged);
  return merged;
}

// The product's own description of the replacing, step by step and slowly: what both real ways are measured against.
QString Lower(QString text) {
  for (QChar& unit : text)
    unit = QChar(static_cast<char16_t>(QChar::toLower(char32_t{unit.unicode()})));
  return text;
}

QString SlowReplace(QString text, const QString& find, const QString& replacement) {
  qsizetype position = 0;
  while ((position = Lower(text).indexOf(Lower(find), position)) >= 0) {
    text = text.left(position) + replacement + text.mid(position + find.size());
    position += replacement.size();
  }
  return text;
}

QString SlowMerge(const QString& text, const MergeValues& v) {
  const QString escape = Lower(text).contains(u"{\\rtf"_qs) ? u"\\"_qs : QString();
  QString merged = text;
  const std::pair<const char16_t*, QString> fields[] = {
      {u"contact", v.contact},     {u"make", v.make},
      {u"model", v.model},         {u"regno", v.regno},
      {u"duedate", v.duedate},     {u"title", v.title},
      {u"firstname", v.firstname}, {u"lastname", v.lastname},
      {u"duetime", v.duetime},     {u"currentdate", u"16/11/2026"_qs}};
  for (const auto& [word, value] : fields) {
    merged = SlowReplace(merged, escape + u'{' + QString::fromUtf16(word) + escape + u'}', value);
  }
  return merged;
}

struct MergeCase {
  const char* what;
  QString text;
  MergeValues values;
  QString expected;
};

TEST(MergeFieldsTest, ReplacesWhatItKnowsAndLeavesTheRest) {
  const MergeValues sample = SampleMergeValues();
  const std::vector<MergeCase> cases{
      {"every field",
       u"{title}|{firstname}|{lastname}|{contact}|{make}|{model}|{regno}|{duedate}|{duetime}|{currentdate}"_qs, sample,
       u"Mr|Alan|Hartley|Mr Hartley|Vauxhall|Vectra|AB12 CDE|27/03/2009||16/11/2026"_qs},
      {"any case, twice",
       u"Dear {CONTACT}, {Contact}"_qs,
       {.contact = u"Mrs Jones"_qs},
       u"Dear Mrs Jones, Mrs Jones"_qs},
      {"rich text", u"{\\rtf1 \\{RegNo\\} {regno}}"_qs, sample, u"{\\rtf1 AB12 CDE {regno}}"_qs},
      {"rich text in capitals", u"{\\RTF1 \\{make\\}}"_qs, sample, u"{\\RTF1 Vauxhall}"_qs},
      {"escaped in plain text", u"rtf \\{regno\\}"_qs, sample, u"rtf \\{regno\\}"_qs},
      {"unknown fields", u"{name} {year} {sales rep} { make } {} {make"_qs, sample,
       u"{name} {year} {sales rep} { make } {} {make"_qs},
      {"own field in a value", u"{contact}!"_qs, {.contact = u"{contact}"_qs}, u"{contact}!"_qs},
      {"later field in a value",
       u"{contact}"_qs,
       {.lastname = u"Ray"_qs, .contact = u"Mr {lastname}"_qs},
       u"Mr Ray"_qs},
      {"earlier field in a value",
       u"{lastname}"_qs,
       {.lastname = u"{contact}"_qs, .contact = u"X"_qs},
       u"{contact}"_qs},
      {"field made around a value", u"{mo{make}}"_qs, {.make = u"del"_qs, .model = u"X"_qs}, u"X"_qs},
      {"field made by an empty value", u"{mod{contact}el}"_qs, {.model = u"X"_qs}, u"X"_qs},
      {"rich text escape made by an empty value",
       u"{\\rtf \\\\{contact\\}{make\\}}"_qs,
       {.make = u"X"_qs},
       u"{\\rtf X}"_qs},
      {"rich text escape made by a value",
       u"{\\rtf \\{make\\}{model\\}}"_qs,
       {.make = u"\\"_qs, .model = u"X"_qs},
       u"{\\rtf X}"_qs},
      {"rich text field made around a value",
       u"{\\rtf \\{mo\\{make\\}\\}}"_qs,
       {.make = u"del"_qs, .model = u"X"_qs},
       u"{\\rtf X}"_qs},
      {"closing brace in a value", u"{make}del} {model}"_qs, {.make = u"}"_qs, .model = u"X"_qs}, u"}del} X"_qs},
      {"no rich text by a value",
       u"{contact} \\{make\\}"_qs,
       {.contact = u"{\\rtf"_qs, .make = u"X"_qs},
       u"{\\rtf \\{make\\}"_qs},
      {"nothing at all", u""_qs, sample, u""_qs},
  };
  for (const MergeCase& merge : cases) {
    const MergeValues& v = merge.values;
    EXPECT_EQ(MergeFields(merge.text, v.title, v.firstname, v.lastname, v.contact, v.make, v.model, v.regno, v.duedate,
                          v.duetime, kToday),
              merge.expected)
        << merge.what;
    EXPECT_EQ(Compiled(merge.text, v), merge.expected) << merge.what << ", compiled";
  }
}

TEST(MergeFieldsTest, FoldingKeepsLengths) {
  // The lower case of the dotted capital I is two units; a text folded as a whole would shift what is found behind it.
  QString text = u"\u0130\u0130 STRASSE \u1E9E stra\u00DFe X"_qs;
  EXPECT_EQ(ReplaceNoCase(text, u"x"_qs, u"yx"_qs), u"\u0130\u0130 STRASSE \u1E9E stra\u00DFe yx"_qs);
  EXPECT_EQ(ReplaceNoCase(text, u"STRA\u00DFE"_qs, u"-"_qs), u"\u0130\u0130 STRASSE \u1E9E - yx"_qs);
  QString accents = u"\u00C9t\u00E9 \u0391\u03B1"_qs;
  EXPECT_EQ(ReplaceNoCase(accents, u"\u00E9"_qs, u"e"_qs), u"ete \u0391\u03B1"_qs);
  EXPECT_EQ(ReplaceNoCase(accents, u"\u0391"_qs, u""_qs), u"ete "_qs);
}

// Texts out of pieces that are likely to make, break and nest fields.
class PieceWriter {
 public:
  explicit PieceWriter(unsigned seed) : random_(seed) {}

  unsigned Below(unsigned limit) { return static_cast<unsigned>(random_()) % limit; }

  /// \param wild  false: only pieces that hold no brace and no backslash
  QString Text(unsigned pieces, bool wild) {
    static const std::vector<QString> kTame{u"mo"_qs,
                                            u"del"_qs,
                                            u"ma"_qs,
                                            u"KE"_qs,
                                            u"due"_qs,
                                            u"date"_qs,
                                            u"time"_qs,
                                            u"current"_qs,
                                            u"con"_qs,
                                            u"tact"_qs,
                                            u"model"_qs,
                                            u"a"_qs,
                                            u" "_qs,
                                            u"rtf"_qs,
                                            u"\u0130"_qs,
                                            u"\u0131"_qs,
                                            u"\u00DF"_qs,
                                            u"ma\u212Ae"_qs,
                                            u"\u017F"_qs,
                                            QString(QChar(0xD83D)),
                                            QString(QChar(0xDE97)),
                                            u"Zo\u00EB"_qs,
                                            QString(QChar(0))};
    static const std::vector<QString> kWild{u"{"_qs,
                                            u"}"_qs,
                                            u"\\"_qs,
                                            u"\\{"_qs,
                                            u"\\}"_qs,
                                            u"{contact}"_qs,
                                            u"{Make}"_qs,
                                            u"{model}"_qs,
                                            u"{duetime}"_qs,
                                            u"{currentdate}"_qs,
                                            u"{LASTNAME}"_qs,
                                            u"\\{contact\\}"_qs,
                                            u"\\{make\\}"_qs,
                                            u"\\{Model\\}"_qs,
                                            u"\\{duedate\\}"_qs,
                                            u"{\\rtf1 "_qs,
                                            u"{mo"_qs,
                                            u"del}"_qs,
                                            u"\\{mo"_qs,
                                            u"del\\}"_qs,
                                            u"{name}"_qs,
                                            u"{title}"_qs,
                                            u"{firstname}"_qs,
                                            u"{regno}"_qs};
    QString text;
    for (; pieces > 0; --pieces) {
      const std::vector<QString>& list = wild && Below(3) > 0 ? kWild : kTame;
      text += list[Below(static_cast<unsigned>(list.size()))];
    }
    return text;
  }

 private:
  std::mt19937 random_;
};

TEST(MergeFieldsTest, BothWaysGiveTheTextOfTheDescriptionForAnything) {
  PieceWriter write(20261116);
  for (int round = 0; round < 8000; ++round) {
    const QString text = (write.Below(2) ? u"{\\rtf1 "_qs : QString()) + write.Text(1 + write.Below(9), true);
    CompiledTemplate compiled(text);
    QString merged;
    for (int row = 0; row < 3; ++row) {
      const bool wildValues = write.Below(4) == 0;
      MergeValues values;
      for (QString* value : {&values.title, &values.firstname, &values.lastname, &values.contact, &values.make,
                             &values.model, &values.regno, &values.duedate, &values.duetime}) {
        *value = write.Text(write.Below(3), wildValues);
      }
      const QString expected = SlowMerge(text, values);
      compiled.Merge(values, kToday, merged);
      ASSERT_EQ(merged, expected) << "template: " << text.toStdString() << ", round " << round;
      ASSERT_EQ(MergeFields(text, values, kToday), expected)
          << "template: " << text.toStdString() << ", round " << round;
    }
  }
}

TEST(MergeFieldsTest, LargeTextsKeepTheirSizeAndOrder) {
  const QString block(100'000, u'x');
  const QString openBraces(100'000, u'{');
  const QString fields = u"{make}"_qs.repeated(17'000);
  EXPECT_EQ(Compiled(block + u"{make}"_qs + block, {.make = block}), block.repeated(3));
  EXPECT_EQ(Compiled(openBraces + u"make}"_qs, {.make = u"y"_qs}), openBraces.chopped(1) + u'y');
  EXPECT_EQ(Compiled(fields, {.make = u"{"_qs}), QString(17'000, u'{'));
  EXPECT_EQ(Compiled(fields, {.make = u"{model}"_qs, .model = u"ab"_qs}), u"ab"_qs.repeated(17'000));
}

TEST(MergeFieldsTest, TheDateOfACompiledTemplateFollowsTheDay) {
  CompiledTemplate compiled(u"{currentdate}"_qs);
  QString merged;
  compiled.Merge({}, QDate(2026, 12, 31), merged);
  EXPECT_EQ(merged, u"31/12/2026"_qs);
  compiled.Merge({}, QDate(2027, 1, 1), merged);
  EXPECT_EQ(merged, u"01/01/2027"_qs);
  compiled.Merge({}, QDate(), merged);
  EXPECT_EQ(merged, QString());
}

}  // namespace
}  // namespace qbx
