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
  const std::pair<QString, QString> table[] = {
      {u""_qs, u""_qs},
      {u"\"Dear \" + {Customer}"_qs, u"Dear Ann \"A\" + B"_qs},
      {u"'it''s' + \"\"\"\""_qs, u"it's\""_qs},
      {u"1 + 2.5 + -0.5"_qs, u"3"_qs},
      {u"1 + 2 + \" days\" + 3 + 4"_qs, u"3 days34"_qs},
      {u"{Age}+{?@Days}"_qs, u"34.5"_qs},
      {u"{Letters.Customer}"_qs, u"Ann \"A\" + B"_qs},
      {u"{ @Period }+{?@Unset}+{Nothing}"_qs, u"<@Period>"_qs},
      {u"\"a\" + Chr(10) + chr ( 8364 )"_qs, u"a\n€"_qs},
  };
  for (const auto& [text, expected] : table)
    EXPECT_EQ(Formula::Parse(text).Evaluate(&LookUp).ToText(), expected) << text.toStdString();
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
