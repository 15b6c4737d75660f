// The grammar of the command line.

#include "startup/command_line.h"

#include <gtest/gtest.h>

#include "support/scripted_ui.h"

namespace qbx::test {
namespace {

struct Case {
  const char* line;
  const char* user = "";
  const char* suffix = "";
  const char* instance = "";
  bool cleared = true;
};

TEST(CommandLine, ReadsItsSwitches) {
  const std::vector<Case> cases = {
      {.line = R"(/userid:"Jo Brown")", .user = "Jo Brown"},
      {.line = R"(/USERID:"ABCDEFGHIJKLMNOPQRSTUVWXYZ12")", .user = "ABCDEFGHIJKLMNOPQRST"},
      {.line = R"(/userid:"" /database:x)", .suffix = "_x"},
      {.line = R"(/userid:"Jo)", .user = "Jo"},
      {.line = "/userid:", .user = ""},
      {.line = "/database:North Branch", .suffix = "_North"},
      {.line = "/database:  North", .suffix = "_North"},
      {.line = "/database:ABCDEFGHIJKLMNOPQRSTUVWXYZ", .suffix = "_ABCDEFGHIJKLMNOPQRSTUVWXY"},
      {.line = "/instance:two x", .instance = "TWO"},
      {.line = "/instance:abcdefghijklmnopq", .instance = "ABCDEFGHIJKLMNO"},
      {.line = R"(/instance:b /Database:n /userid:"Zoë")", .user = "Zoë", .suffix = "_n", .instance = "B"},
      {.line = R"(/userid:"Jo" /database:North)", .user = "Jo", .suffix = "_North"},
      {.line = "userid Jo", .cleared = false},
  };
  for (const Case& c : cases) {
    ScriptedUi ui;
    StartupValues startup;
    startup.commandLine = QString::fromUtf8(c.line);
    ParseCommandLine(startup, ui);
    EXPECT_EQ(startup.user, QString::fromUtf8(c.user)) << c.line;
    EXPECT_EQ(startup.DatabaseSuffix, QString::fromUtf8(c.suffix)) << c.line;
    EXPECT_EQ(startup.instance, QString::fromUtf8(c.instance)) << c.line;
    EXPECT_EQ(startup.commandLine.isEmpty(), c.cleared) << c.line;
    EXPECT_TRUE(ui.Messages().empty());
  }
}

TEST(CommandLine, NamesFollowSuffixAndInstance) {
  ScriptedUi ui;
  StartupValues startup;
  startup.commandLine = "/instance:two /database:North";
  ParseCommandLine(startup, ui);
  EXPECT_EQ(startup.ProductKey, "SOFTWARE\\Korvel Manager TWO\\");
  EXPECT_EQ(startup.databaseName, "QBXKorvelManager_North");
}

TEST(CommandLine, AnswersATerminalWithoutAStart) {
  EXPECT_TRUE(TerminalAnswer({"--help"})->contains("/userid:"));
  EXPECT_TRUE(TerminalAnswer({"--version"})->startsWith("marketing "));
  EXPECT_FALSE(TerminalAnswer({"/userid:--help"}));
}

TEST(CommandLine, HelpIsShownAndNothingElseIsRead) {
  ScriptedUi ui;
  StartupValues startup;
  startup.commandLine = "/? /userid:\"Jo\"";
  ParseCommandLine(startup, ui);
  EXPECT_EQ(ui.MessageTexts(), QStringList("Command line options: /Backup /ReIndex /Silent /File:QBX.DAT\r\r"
                                           "Command line parameters need to be passed in the order shown above."));
  EXPECT_EQ(ui.Messages().front().icon, MessageIcon::kInformation);
  EXPECT_EQ(startup.user, QString());
  EXPECT_FALSE(startup.commandLine.isEmpty());
}

TEST(CommandLine, RestoresTheQuotesThatAShellRemoves) {
  EXPECT_EQ(JoinCommandLine({"/UserId:Jo Brown", "/database:x"}), "/UserId:\"Jo Brown\" /database:x");
  EXPECT_EQ(JoinCommandLine({"/userid:\"Jo\""}), "/userid:\"Jo\"");
  EXPECT_EQ(JoinCommandLine({}), QString());
}

}  // namespace
}  // namespace qbx::test
