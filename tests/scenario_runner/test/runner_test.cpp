// What the runner says of scenarios that fail, each in its own way.

#include <gmock/gmock.h>

#include <QProcess>
#include <QStringList>

#include "support/printing.h"

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

struct RunnerResult {
  int status = -1;
  std::string output;
};

RunnerResult RunFixtures(const QStringList& names, const QStringList& options = {}) {
  QStringList files;
  for (const QString& name : names)
    files += QStringLiteral(QBX_FIXTURES) + name;
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(QStringLiteral(QBX_RUNNER), options + files);
  EXPECT_TRUE(process.waitForFinished(100000));
  return {process.exitCode(), process.readAll().toStdString()};
}

struct Failing {
  const char* file;
  const char* says;  ///< behind "FAIL <folder>/"
};

void PrintTo(const Failing& failing, std::ostream* stream) {
  *stream << failing.file;
}

class RunnerSays : public testing::TestWithParam<Failing> {};

TEST_P(RunnerSays, WhatFailedAndWhere) {
  const RunnerResult result =
      RunFixtures({QString::fromLatin1(GetParam().file)}, {QStringLiteral("--time-limit"), QStringLiteral("20")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr(std::string("FAIL " QBX_FIXTURES) + GetParam().says));
  EXPECT_THAT(result.output, EndsWith("\n0 passed, 1 failed\n"));
  EXPECT_THAT(result.output, Not(HasSubstr("never reached")));
}

INSTANTIATE_TEST_SUITE_P(
    Fixtures, RunnerSays,
    testing::Values(
        Failing{"assertion.js", R"(assertion.js:3: sums: the sum: is [1,{"a":2}], expected [1,{"a":3}])"},
        Failing{"no_assertion.js", "no_assertion.js: asserts nothing"},
        Failing{"syntax_error.js", "syntax_error.js:2: SyntaxError: "},
        Failing{"exception.js", "exception.js:3: ReferenceError: undefinedThing is not defined"},
        Failing{"thrown_text.js", "thrown_text.js:2: threw no error object"},
        Failing{"missing_control.js", R"(missing_control.js:3: There is no control "cmdNexxt"; frmMain has )"},
        Failing{"misspelt_property.js", R"(misspelt_property.js:2: A control has no "enbled".)"},
        Failing{"misspelt_option.js", R"(misspelt_option.js:1: start does not know "gargae".)"},
        Failing{"disabled_click.js", "disabled_click.js:3: cmdSave is disabled."},
        Failing{"hidden_click.js", "hidden_click.js:4: cmdLoad is not visible."},
        Failing{"unanswered_box.js",
                R"(unanswered_box.js:4: Nobody answers the message box "Lose any changes and start a new campaign?")"},
        Failing{"wrong_button.js", "wrong_button.js:4: The message box "},
        Failing{"unused_answer.js", R"(unused_answer.js:2: Nothing asked for the answer "Never asked".)"},
        Failing{"unexpected_window.js", "unexpected_window.js:3: The window frmAbout "},
        Failing{"window_left_open.js", "window_left_open.js:4: The window frmAbout was left open."},
        Failing{"fails_inside_window.js", "fails_inside_window.js:4: In frmAbout: is "},
        Failing{"never_meanwhile.js",
                "never_meanwhile.js:2: the operation ended before anything could be done meanwhile"},
        Failing{"crash.js", "crash.js: the program crashed"},
        Failing{"missing_file.js", "missing_file.js: cannot be read"}),
    [](const testing::TestParamInfo<Failing>& one) {
      return std::string(one.param.file).substr(0, std::string(one.param.file).find('.'));
    });

TEST(Runner, FailsAScenarioThatHangsAndGoesOnWithTheNext) {
  const RunnerResult result = RunFixtures({QStringLiteral("hang.js"), QStringLiteral("passes.js")},
                                          {QStringLiteral("--time-limit"), QStringLiteral("10")});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output, HasSubstr("hang.js: has not ended after 10 s"));
  EXPECT_THAT(result.output, EndsWith("\n1 passed, 1 failed\n"));
}

TEST(Runner, PassesOnlyWhenAllPass) {
  const RunnerResult good = RunFixtures({QStringLiteral("passes.js"), QStringLiteral("passes.js")});
  EXPECT_EQ(good.status, 0) << good.output;
  EXPECT_THAT(good.output, EndsWith("\n2 passed, 0 failed\n"));
  const RunnerResult mixed = RunFixtures({QStringLiteral("assertion.js"), QStringLiteral("passes.js")});
  EXPECT_EQ(mixed.status, 1);
  EXPECT_THAT(mixed.output, HasSubstr("ok   the next one still runs"));
  EXPECT_THAT(mixed.output, EndsWith("\n1 passed, 1 failed\n"));
  EXPECT_NE(RunFixtures({}).status, 0) << "nothing was run";
}

}  // namespace
