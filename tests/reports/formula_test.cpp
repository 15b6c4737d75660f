// What formulas give, and where they are wrong.

#include "reports/formula.h"

#include <gtest/gtest.h>

#include "reports/report_error.h"
#include "support/printing.h"

namespace qbx {
namespace {

Value LookUp(FormulaName kind, const QString& name) {
  if (kind == FormulaName::kParameter) return name == u"@Days" ? Value(30) : Value();
  if (kind == FormulaName::kFormula) return Value(u"<"_qs + name + u">"_qs);
  return name == u"Age" ? Value(4.5) : name == u"Customer" ? Value(u"Ann \"A\" + B"_qs) : Value();
}

TEST(FormulaTest, Values) {
  const std::pair<const char16_t*, const char16_t*> table[] = {
      {u"", u""},
      {u"\"Dear \" + {Customer}", u"Dear Ann \"A\" + B"},
      {u"'it''s' + \"\"\"\"", u"it's\""},
      {u"1 + 2.5 + -0.5", u"3"},
      {u"1 + 2 + \" days\" + 3 + 4", u"3 days34"},
      {u"{Age}+{?@Days}", u"34.5"},
      {u"{Letters.Customer}", u"Ann \"A\" + B"},
      {u"{ @Period }+{?@Unset}+{Nothing}", u"<@Period>"},
      {u"\"a\" + Chr(10) + chr ( 8364 )", u"a\n€"},
  };
  for (const auto& [text, expected] : table)
    EXPECT_EQ(Formula::Parse(QString::fromUtf16(text)).Evaluate(&LookUp).ToText(), QString::fromUtf16(expected))
        << QString::fromUtf16(text).toStdString();
}

TEST(FormulaTest, WhatIsNone) {
  const std::pair<const char*, const char*> table[] = {
      {"\"open", "character 6: the text has no end"},
      {"1 2", "character 3: a \"+\" is missing"},
      {"{Customer", "character 1: a \"}\" is missing"},
      {"1 + ", "character 5: a text, a number, Chr(n) or a name in braces is missing"},
      {"{ }", "there is no name between the braces"},
      {"Chr(0)", "there is no such character"},
      {"Chr(70000)", "there is no such character"},
      {"1.2.3", "this is no number"},
      {"Shell(1)", "character 1: a text"},
  };
  for (const auto& [text, expected] : table) {
    try {
      static_cast<void>(Formula::Parse(QLatin1String(text)));
      ADD_FAILURE() << text;
    } catch (const ReportError& error) {
      EXPECT_TRUE(error.text.contains(QLatin1String(expected))) << text << ": " << error.text.toStdString();
    }
  }
}

}  // namespace
}  // namespace qbx
