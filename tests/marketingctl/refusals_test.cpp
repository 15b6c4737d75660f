// What the program refuses, how it says so, and that it loses nothing by it.

#include <gtest/gtest.h>

#include <QFile>

#include "garage.h"

namespace qbx::test {

namespace {

struct Refusal {
  const char* command;  ///< words split at blanks
  int code;
  const char* message;          ///< somewhere in stderr
  const char* error = "usage";  ///< the code on stdout
};

void ExpectRefusals(const Garage& garage, std::initializer_list<Refusal> refusals) {
  for (const Refusal& refusal : refusals) {
    const CtlResult result = garage.Run(refusal.command);
    EXPECT_EQ(result.code, refusal.code) << refusal.command << ": " << result.err.constData();
    EXPECT_TRUE(result.err.contains(refusal.message)) << refusal.command << ": " << result.err.constData();
    EXPECT_EQ(result.Error(), refusal.error) << refusal.command;
  }
}

}  // namespace

TEST(MarketingCtlHelp, EveryCommandExplainsItselfWithAnExample) {
  for (const QString& command :
       QString(
           "sample|init|status|options set|options get|options list|campaigns list|campaigns show|campaigns new|"
           "campaigns set|campaigns copy|campaigns rename|campaigns delete|query|results|preview|credits|send|report|"
           "letters|log|encipher|help")
           .split(u'|')) {
    const CtlResult help = RunCtl(command.split(u' ') << "--help");
    EXPECT_EQ(help.code, 0) << command.toStdString();
    EXPECT_TRUE(help.out.contains("Example")) << command.toStdString();
    EXPECT_TRUE(help.err.isEmpty()) << command.toStdString() << ": " << help.err.constData();
  }
}

TEST(MarketingCtlHelp, TopicsAndVersionsNeedNoDatabase) {
  EXPECT_TRUE(RunCtl(Words("send --version")).out.startsWith("marketingctl "));
  EXPECT_TRUE(RunCtl(Words("help fields")).out.contains("{duedate}"));
  EXPECT_TRUE(RunCtl(Words("help queries")).out.contains("Reminder Date"));
  EXPECT_TRUE(RunCtl(Words("help campaigns new")).out.contains("campaigns new"));
  // What scripts may rely on is written down.
  QFile file(QStringLiteral(QBX_DOCS "headless.md"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray document = file.readAll();
  for (const auto& row : RunCtl(Words("help errors --json")).Rows()) {
    const QString line = QString("| `%1` | %2 |").arg(Text(row, "code"), Text(row, "meaning"));
    EXPECT_TRUE(document.contains(line.toUtf8())) << line.toStdString();
  }
}

TEST(MarketingCtlRefuses, CommandLinesThatMakeNoSense) {
  const Garage garage(20);
  ExpectRefusals(garage, {
                             {"", 2, "subcommand"},
                             {"fly", 2, "There is no command \"fly\""},
                             {"campaign list", 2, "Did you mean campaigns?"},
                             {"campaigns set 1 --form today", 2, "Did you mean --from?"},
                             {"help sned", 2, "Did you mean send?"},
                             {"campaigns fly", 2, "There is no command \"fly\""},
                             {"export 1 --pdf a.pdf", 2, "There is no flag \"--pdf\" here"},
                             {"campaigns show 99999999999", 2, "ID"},
                             {"campaigns set 1 --wings 2", 2, "--wings"},
                             {"campaigns set 1 --from 31.12.2026", 2, "yyyy-mm-dd"},
                             {"campaigns set 1 --to 2026-06-31", 2, "June has 30 days"},
                             {"campaigns set 1 --to 1989-12-31", 2, "before 1990"},
                             {"campaigns set 1 --to 1992-01-01", 2, "from 1996 on"},
                             {"campaigns set 1 --query Nobody", 2, "\"Nobody\" is not one of"},
                             {"campaigns set 1 --records many", 2, "--records"},
                             {"campaigns set 1 --start -1", 2, "--start"},
                             {"campaigns set 1 --reminder 7", 2, "--reminder"},
                             {"campaigns set 1 --cust-type Retail", 2, "is:TEXT, is-not:TEXT or none"},
                             {"campaigns set 1 --source is:", 2, "is:TEXT, is-not:TEXT or none"},
                             {"campaigns set 1 --mileage between:1", 2, "between:N,M"},
                             {"campaigns set 1 --mileage between:50,000,80,000", 2, "between:N,M"},
                             {"campaigns set 1 --mileage higher:80k", 2, "higher:N"},
                             {"campaigns set 1 --year after:soon", 2, "after:N"},
                             {"campaigns set 1 --no-marketing perhaps", 2, "--no-marketing"},
                             {"campaigns set 1 --sms @/no/such/file", 2, "cannot be read"},
                             {"campaigns set 1 --letter /no/such/file", 2, "cannot be read"},
                             {"query", 2, "name a saved campaign or a --query"},
                             {"query 1 --save Mine", 2, "--save"},
                             {"query 1 --reminder 2", 2, "campaigns set"},
                             {"results 1 --send-by sms=6", 2, "sms=6"},
                             {"results 1 --send-by fax=0", 2, "fax=0"},
                             {"results 1 --toggle 1 Flag", 2, "Send_SMS"},
                             {"results 1 --rows 1", 2, "--rows"},
                             {"results 1 --untick Processed --rows 1", 2, "Send_SMS"},
                             {"preview 1 --rows 0", 2, "--rows"},
                             {"send 1 --yes --email-only", 2, "--email-only"},
                             {"options set SMTP_Password secret", 2, "@FILE"},
                             {"options set Timeout many", 2, "does not fit"},
                             {"options set SMTP_Port abc", 2, "a port from 1 to 65535"},
                             {"options set SMS_Sender_ID HartleyMotors", 2, "a name of 11 letters"},
                             {"options set SMTP_Port 70000", 2, "a port from 1 to 65535"},
                             {"options set Reminder_From_Email garage", 2, "an e-mail address"},
                             {"options set SMTP_UseSSL perhaps", 2, "on or off"},
                             {"sample elsewhere --customers 0", 2, "--customers"},
                             {"sample elsewhere --as-of today", 2, "yyyy-mm-dd"},
                         });
  EXPECT_EQ(Text(garage.Done("campaigns show 1"), "Campaign_Name"), "Lapsed customers");
}

TEST(MarketingCtlRefuses, WhatCannotBeDone) {
  const Garage garage(20);
  garage.Done("options set SMS_Server 127.0.0.1:1");
  garage.Done("query 1");
  EXPECT_EQ(Text(garage.Done("send 1"), "nothing"), "not_flagged");
  garage.Done("campaigns new Everybody");
  garage.Done("results 1 --send-by sms=0");
  ExpectRefusals(garage, {
                             {"campaigns show 99", 1, "Campaign not found!", "unknown_campaign"},
                             {"campaigns show -5", 1, "Campaign not found!", "unknown_campaign"},
                             {"campaigns show twelve", 1, "no campaign \"twelve\"", "unknown_campaign"},
                             {"campaigns new EVERYBODY", 1, "--allow-same-name", "name_taken"},
                             {"campaigns copy 1 Everybody", 1, "--allow-same-name", "name_taken"},
                             {"campaigns rename 1 Everybody", 1, "--allow-same-name", "name_taken"},
                             {"campaigns delete 99", 1, "Campaign not found!", "unknown_campaign"},
                             {"query -5", 1, "Campaign not found!", "unknown_campaign"},
                             {"results 99", 1, "Campaign not found!", "unknown_campaign"},
                             {"results 1 --toggle 987654 Processed --yes", 1, "has no row 987654", "unknown_row"},
                             {"results 1 --take-out 987654", 1, "needs --yes", "not_agreed"},
                             {"results 1 --tick Send_SMS --rows 987654", 1, "has no row 987654", "unknown_row"},
                             {"send 99 --yes", 1, "Campaign not found!", "unknown_campaign"},
                             {"send 1 --yes", 1, "127.0.0.1:1", "gateway_away"},
                             {"send 2", 0, "\"query 2\" selects them", ""},
                             {"send 2 --nothing-is-an-error", 1, "No SMS or Emails to process", "nothing_to_send"},
                             {"credits", 1, "127.0.0.1:1", "gateway_away"},
                             {"options get Wings", 1, "There is no option \"Wings\"", "unknown_option"},
                         });
  const CtlResult nameless = RunCtl(Words("--folder %1 status", {garage.Path()}));
  EXPECT_EQ(nameless.code, 1);
  EXPECT_TRUE(nameless.err.contains("--user")) << nameless.err.constData();
  const QByteArray before = garage.Folder().Read("QBXKorvelManager.db");
  for (const char* command : {"sample", "init"}) {
    const CtlResult again = RunCtl({command, garage.Path()});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.err.contains("--replace")) << again.err.constData();
  }
  EXPECT_EQ(garage.Folder().Read("QBXKorvelManager.db"), before);
  // A database is made where the program looks for it: under the name of the edition in the INI file, and never outside
  // the folder.
  const TempFolder boats;
  boats.Write("qbx.ini", "[App]\nName=MX\n");
  for (const char* name : {"../outside", "a;b", "master", " "}) {
    const CtlResult outside = RunCtl({"init", boats.Path(), "--json", "--database", name});
    EXPECT_EQ(outside.Error(), "invalid_name") << name;
  }
  EXPECT_EQ(RunCtl({"init", boats.Path()}).code, 0);
  EXPECT_TRUE(boats.Names().contains("QBXMarnexManager.db"));
}

TEST(MarketingCtlRefuses, TextsWithoutAgreementToTheirCredits) {
  const SandboxProcess sandbox(Words("--credits 3"));
  const Garage garage(20);
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  const QString id = garage.MakeCampaign();
  const CtlResult dear = garage.Run("send %1 --yes", {id});
  EXPECT_EQ(dear.code, 1);
  EXPECT_EQ(dear.Error(), "no_credits") << dear.err.constData();
  const SandboxProcess rich;
  garage.Use(rich);
  const CtlResult unasked = garage.Run("send %1", {id});
  EXPECT_EQ(unasked.code, 1);
  EXPECT_TRUE(unasked.err.contains("--yes") && unasked.Error() == "not_agreed") << unasked.err.constData();
  EXPECT_EQ(Recorded(sandbox) + Recorded(rich), 0);
}

TEST(MarketingCtlRefuses, ToWorkOnWhatIsDamagedAndLeavesItAsItIs) {
  struct Damage {
    const char* name;
    const char* file;  ///< what is damaged; null: nothing but SQL
    QByteArray bytes;
    const char* sql;
    const char* message;
    const char* error = "start_failed";
  };
  QByteArray noise;
  for (int i = 0; i < 3000; ++i)
    noise.append(static_cast<char>(i * 7 % 256));
  const Damage damages[] = {
      {"ini", "QBX.INI", noise, nullptr, "QBX.INI is damaged"},
      {"registry", "registry/machine.reg", noise, nullptr, "machine.reg"},
      {"database of noise", "QBXKorvelManager.db", noise, nullptr, "It is damaged", "database_away"},
      {"empty database file", "QBXKorvelManager.db", QByteArray(), nullptr, "not a primary database file",
       "database_away"},
      {"newer", nullptr, {}, "UPDATE _Version SET File_Number = 77", "It has the number 77", "database_away"},
      {"no options row", nullptr, {}, "DELETE FROM _Options", "Error reading all settings data"},
      {"no options procedure", nullptr, {}, "DROP TABLE _Options", "did not start well"},
  };
  for (const Damage& damage : damages) {
    SCOPED_TRACE(damage.name);
    const Garage garage(20);
    if (damage.sql) garage.Sql(damage.sql);
    if (damage.file) garage.Folder().Write(damage.file, damage.bytes);
    for (const char* command : {"query 1", "send 1 --yes", "campaigns list"}) {
      const CtlResult result = garage.Run(command);
      EXPECT_EQ(result.code, 1) << command;
      EXPECT_EQ(result.Error(), damage.error) << command;
      EXPECT_TRUE(result.err.contains(damage.message)) << command << ": " << result.err.constData();
    }
    if (!damage.file) continue;
    EXPECT_EQ(garage.Folder().Read(damage.file), damage.bytes);
  }
  // What does not exist is named; nothing is asked about bringing it online.
  const TempFolder empty;
  for (const bool folderToo : {false, true}) {
    const QString folder = folderToo ? empty.File("nowhere") : empty.Path();
    const CtlResult nothing = RunCtl(Words("campaigns list --json --user=Pat --folder %1", {folder}));
    EXPECT_EQ(nothing.code, 1);
    EXPECT_EQ(nothing.Error(), folderToo ? "no_folder" : "no_database");
    EXPECT_FALSE(nothing.err.contains("online") || !nothing.err.contains(folder.toUtf8())) << nothing.err.constData();
  }
  EXPECT_FALSE(empty.Names().contains("QBXKorvelManager.db"));
}

TEST(MarketingCtlSecrets, AreNeverShownAndWorkAllTheSame) {
  const char* const mailSecret = "m\xc3\xa4il secret";
  const SandboxProcess sandbox(Words("--client GARAGE --password gateway+secret --smtp-user garage --smtp-password %1",
                                     {QString::fromUtf8(mailSecret)}));
  const Garage garage(20);
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  const QByteArray marked = Text(garage.Done("encipher --make-key --marked", {}, mailSecret), "enciphered").toUtf8();
  EXPECT_FALSE(marked.isEmpty());
  QByteArray shown;
  const auto run = [&](const char* line, const QStringList& values = {}, const QByteArray& input = {}) {
    const CtlResult result = garage.Run(line, values, input);
    shown += result.out + result.err;
    return result.code;
  };
  EXPECT_EQ(run("options set SMTP_Password @-", {}, marked), 0);
  EXPECT_EQ(run("options set SMS_ClientPassword @-", {}, "gateway+secret\n"), 0);
  for (const char* line :
       {"options set SMS_ClientID GARAGE", "options set SMTP_UserName garage", "options set SMTP_Authenticate on"}) {
    EXPECT_EQ(run(line), 0) << line;
  }
  const QString id = garage.MakeCampaign();

  // Failures are where secrets slip out.
  EXPECT_EQ(run("options set SMTP_Port 1"), 0);
  EXPECT_EQ(run("send %1 --email-only --keep-going", {id}), 3);
  EXPECT_EQ(run("options set SMS_Server http://127.0.0.1:1"), 0);
  EXPECT_EQ(run("credits"), 1);
  EXPECT_EQ(run("send %1 --yes", {id}), 1);
  for (const char* line :
       {"options list", "options get SMTP_Password", "options get SMS_ClientPassword", "status", "log"})
    run(line);

  garage.Use(sandbox);
  EXPECT_EQ(run("send %1 --yes", {id}), 0);
  EXPECT_EQ(Accepted(sandbox, "mails").size(), 20U);
  EXPECT_EQ(Accepted(sandbox, "texts").size(), 20U);

  for (const QString& name : garage.Folder().Names()) {
    if (name.endsWith(".LOG") || name.endsWith(".INI")) shown += garage.Folder().Read(name);
  }
  for (const QByteArray& secret :
       {QByteArray(mailSecret), QByteArray("gateway+secret"), QByteArray("gateway%2Bsecret"), marked.mid(8)}) {
    EXPECT_FALSE(shown.contains(secret)) << secret.constData();
  }
}

}  // namespace qbx::test
