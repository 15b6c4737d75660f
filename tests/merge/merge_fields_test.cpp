#include "merge/merge_fields.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "merge/compiled_template.h"
#include "merge/sample_customer.h"
#include "merge/template_fields.h"

namespace qbx {
namespace {

const QDate kToday(2026, 11, 16);

QString Compiled(const QString& text, const MergeValues& values) {
  CompiledTemplate compiled(text);
  QString merged = u"left over from the row before"_qs;
  compiled.Merge(values, kToday, merged);
  return merged;
}

struct MergeCase {
  const char* what;
  QString text;
  MergeValues values;
  QString expected;
};

TEST(MergeFieldsTest, ReplacesWhatItKnowsAndLeavesTheRest) {
  const MergeValues& sample = SampleMergeValues();
  const std::vector<MergeCase> cases{
      {"every field",
       u"{title}|{firstname}|{lastname}|{contact}|{make}|{model}|{regno}|{duedate}|{duetime}|{currentdate}"_qs, sample,
       u"Mr|Alan|Hartley|Mr Hartley|Vauxhall|Vectra|AB12 CDE|27/03/2009||16/11/2026"_qs},
      {"any case, twice",
       u"Dear {CONTACT}, {Contact}"_qs,
       {.contact = u"Mrs Jones"_qs},
       u"Dear Mrs Jones, Mrs Jones"_qs},
      {"a letter whose small one is in ASCII", u"{ma\u212Ae}"_qs, sample, u"Vauxhall"_qs},
      {"rich text", u"{\\rtf1 \\{RegNo\\} {regno}}"_qs, sample, u"{\\rtf1 AB12 CDE {regno}}"_qs},
      {"rich text in capitals", u"{\\RTF1 \\{make\\}}"_qs, sample, u"{\\RTF1 Vauxhall}"_qs},
      {"escaped in plain text", u"rtf \\{regno\\}"_qs, sample, u"rtf \\{regno\\}"_qs},
      {"unknown fields", u"{name} {year} {sales rep} { make } {} {make"_qs, sample,
       u"{name} {year} {sales rep} { make } {} {make"_qs},
      {"own field in a value", u"{contact}!"_qs, {.contact = u"{contact}"_qs}, u"{contact}!"_qs},
      {"every field in the value of the one before",
       u"{contact}"_qs,
       {u"{firstname}"_qs, u"{lastname}"_qs, u"{duetime}"_qs, u"{make}"_qs, u"{model}"_qs, u"{regno}"_qs,
        u"{duedate}"_qs, u"{title}"_qs, u"{currentdate}"_qs},
       u"16/11/2026"_qs},
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

TEST(MergeFieldsTest, NamesUnknownAndEmptyFields) {
  const QString longest(30, u'x');
  const std::tuple<QString, QStringList, QStringList> cases[] = {
      {u"{Contact} {CURRENTDATE}"_qs, {}, {}},
      {u"{contakt}, {sales rep} {a_1-b} {contakt} {b {make}"_qs,
       {u"{contakt}"_qs, u"{sales rep}"_qs, u"{a_1-b}"_qs},
       {u"{make}"_qs}},
      {u"{ make } {} {1} {make {a.b} }{"_qs, {}, {}},
      {u"{%1} {%1x}"_qs.arg(longest), {u"{%1}"_qs.arg(longest)}, {}},
      {u"{DueDate} {duetime} {duedate}"_qs, {}, {u"{duedate}"_qs, u"{duetime}"_qs}},
      {u"{\\rtf1 {bold} \\{name\\} \\{model\\}}"_qs, {u"{name}"_qs}, {u"{model}"_qs}}};
  for (const auto& [text, unknown, empty] : cases) {
    EXPECT_EQ(UnknownFields(text), unknown) << text.toStdString();
    EXPECT_EQ(EmptyFields(text, {}), empty) << text.toStdString();
  }
  EXPECT_EQ(EmptyFields(u"{make}{duedate}"_qs, {.vehicle = true, .dueDate = true}), QStringList());
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
    static const QStringList kTame =
        u"mo|del|ma|KE|due|date|time|current|con|tact|model|a| |rtf|\u0130|\u0131|\u00DF|ma\u212Ae|\u017F|Zo\u00EB"_qs
            .split(u'|')
        << QChar(0xD83D) << QChar(0xDE97) << QChar(0);
    static const QStringList kFields =
        u"{contact}|{Make}|{model}|{duetime}|{currentdate}|{LASTNAME}|{name}|{title}|{firstname}|{regno}"_qs.split(
            u'|');
    static const QStringList kWild =
        u"{|}|\\|\\{|\\}|\\{contact\\}|\\{make\\}|\\{Model\\}|\\{duedate\\}|{\\rtf1 |{mo|del}|\\{mo|del\\}"_qs.split(
            u'|') +
        kFields;
    QString text;
    for (; pieces > 0; --pieces) {
      const QStringList& list = wild && Below(3) > 0 ? kWild : kTame;
      text += list[static_cast<int>(Below(static_cast<unsigned>(list.size())))];
    }
    return text;
  }

 private:
  std::mt19937 random_;
};

TEST(MergeFieldsTest, BothWaysGiveTheSameTextForAnything) {
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
      compiled.Merge(values, kToday, merged);
      ASSERT_EQ(merged, MergeFields(text, values, kToday)) << "template: " << text.toStdString() << ", round " << round;
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
