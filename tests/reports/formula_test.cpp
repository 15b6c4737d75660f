// What formulas give, and where they are wrong.

#include "reports/formula.h"

#include <gtest/gtest.h>

#include "reports/report_error.h"
#include "support/printing.h"

namespace qbx {
namespace {

Value LookUp(FormulaName kind, const QString& name) {
  if (kind == FormulaName::kParameter) return name == u"@Days" ? Value(30) : Value();
  if (kind == FormulaName::kFormula) return Value(QString("<") + name + ">");
  return name == u"Age" ? Value(4.5) : name == u"Customer" ? Value(QString("Ann \"A\" + B")) : Value();
}

TEST(FormulaTest, Values) {
  const std::pair<QString, QString> table[] = {
      {"", ""},
      {"\"Dear \" + {Customer}", "Dear Ann \"A\" + B"},
      {"'it''s' + \"\"\"\"", "it's\""},
      {"1 + 2.5 + -0.5", "3"},
      {"1 + 2 + \" days\" + 3 + 4", "3 days34"},
      {"{Age}+{?@Days}", "34.5"},
      {"{Letters.Customer}", "Ann \"A\" + B"},
      {"{ @Period }+{?@Unset}+{Nothing}", "<@Period>"},
      {"\"a\" + Chr(10) + chr ( 8364 )", "a\n€"},
  };
  for (const auto& [text, expected] : table)
    EXPECT_EQ(Formula::Parse(text).Evaluate(&LookUp).ToText(), expected) << text.toStdString();
}

TEST(FormulaTest, RefusesTextsThatAreNoFormula) {
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
      static_cast<void>(Formula::Parse(text));
      ADD_FAILURE() << text;
    } catch (const ReportError& error) {
      EXPECT_TRUE(error.text.contains(expected)) << text << ": " << error.text.toStdString();
    }
  }
}

}  // namespace
}  // namespace qbx
