// What the program refuses, how it says so, and that it loses nothing by it.

#include <gtest/gtest.h>

#include <QFile>
#include <functional>

#include "garage.h"

namespace qbx::test {

namespace {

QStringList Words(const char* line) {
  return QString::fromUtf8(line).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

struct Refusal {
  const char* command;  ///< words split at blanks
  int code;
  const char* message;  ///< somewhere in stderr
};

void ExpectRefusals(const Garage& garage, std::initializer_list<Refusal> refusals) {
  for (const Refusal& refusal : refusals) {
    const CtlResult result = garage.Run(Words(refusal.command));
    EXPECT_EQ(result.code, refusal.code) << refusal.command << ": " << result.err.constData();
    EXPECT_TRUE(result.err.contains(refusal.message)) << refusal.command << ": " << result.err.constData();
    EXPECT_TRUE(result.out.isEmpty() || refusal.code != 2) << refusal.command << ": " << result.out.constData();
  }
}

}  // namespace

TEST(MarketingCtlHelp, EveryCommandExplainsItselfWithAnExample) {
  for (const char* command : {"sample",
                              "init",
                              "status",
                              "options set",
                              "options get",
                              "options list",
                              "campaigns list",
                              "campaigns show",
                              "campaigns new",
                              "campaigns set",
                              "campaigns copy",
                              "campaigns rename",
                              "campaigns delete",
                              "query",
                              "results",
                              "preview",
                              "credits",
                              "send",
                              "log",
                              "encipher"}) {
    const CtlResult help = RunCtl(Words(command) << QStringLiteral("--help"));
    EXPECT_EQ(help.code, 0) << command;
    EXPECT_TRUE(help.out.contains("Example")) << command;
    EXPECT_TRUE(help.err.isEmpty()) << command << ": " << help.err.constData();
  }
}

TEST(MarketingCtlRefuses, CommandLinesThatMakeNoSense) {
  const Garage garage(20);
  ExpectRefusals(garage, {
                             {"", 2, "subcommand"},
                             {"fly", 2, "There is no command \"fly\""},
                             {"campaigns fly", 2, "There is no command \"fly\""},
                             {"campaigns show twelve", 2, "ID"},
                             {"campaigns set 1 --wings 2", 2, "--wings"},
                             {"campaigns set 1 --from 31.12.2026", 2, "yyyy-mm-dd"},
                             {"campaigns set 1 --to 2026-02-30", 2, "yyyy-mm-dd"},
                             {"campaigns set 1 --query Nobody", 2, "\"Nobody\" is not one of"},
                             {"campaigns set 1 --records many", 2, "--records"},
                             {"campaigns set 1 --start -1", 2, "--start"},
                             {"campaigns set 1 --reminder 7", 2, "--reminder"},
                             {"campaigns set 1 --cust-type Retail", 2, "is:TEXT, is-not:TEXT or none"},
                             {"campaigns set 1 --source is:", 2, "is:TEXT, is-not:TEXT or none"},
                             {"campaigns set 1 --mileage between:1", 2, "between:N,M"},
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
                             {"preview 1 --rows 0", 2, "--rows"},
                             {"send 1 --yes --email-only", 2, "--email-only"},
                             {"options set SMTP_Password secret", 2, "@FILE"},
                             {"options set SMTP_Port many", 2, "does not fit"},
                             {"options set SMTP_UseSSL perhaps", 2, "on or off"},
                             {"sample elsewhere --customers 0", 2, "--customers"},
                             {"sample elsewhere --as-of today", 2, "yyyy-mm-dd"},
                         });
  EXPECT_EQ(garage.Done(Words("campaigns show 1")).Object()[QLatin1String("Campaign_Name")],
            QStringLiteral("Lapsed customers"));
}

TEST(MarketingCtlRefuses, WhatCannotBeDone) {
  const Garage garage(20);
  garage.Done(Words("options set SMS_Server 127.0.0.1:1"));
  garage.Done(Words("query 1"));
  garage.Done(Words("results 1 --send-by sms=0"));
  ExpectRefusals(garage, {
                             {"campaigns show 99", 1, "Campaign not found!"},
                             {"campaigns show -5", 1, "Campaign not found!"},
                             {"campaigns delete 99", 1, "Campaign not found!"},
                             {"query -5", 1, "Campaign not found!"},
                             {"results 99", 1, "Campaign not found!"},
                             {"results 1 --toggle 987654 Processed --yes", 1, "has no row 987654"},
                             {"send 99 --yes", 1, "Campaign not found!"},
                             {"send 1 --yes", 1, "127.0.0.1:1"},
                             {"credits", 1, "127.0.0.1:1"},
                             {"options get Wings", 1, "There is no option \"Wings\""},
                         });
  const CtlResult nameless = RunCtl({QStringLiteral("--folder"), garage.Path(), QStringLiteral("status")});
  EXPECT_EQ(nameless.code, 1);
  EXPECT_TRUE(nameless.err.contains("--user")) << nameless.err.constData();
  const QByteArray before = garage.Folder().Read(QStringLiteral("QBXKorvelManager.db"));
  for (const char* command : {"sample", "init"}) {
    const CtlResult again = RunCtl({QLatin1String(command), garage.Path()});
    EXPECT_EQ(again.code, 1);
    EXPECT_TRUE(again.err.contains("--replace")) << again.err.constData();
  }
  EXPECT_EQ(garage.Folder().Read(QStringLiteral("QBXKorvelManager.db")), before);
}

TEST(MarketingCtlRefuses, TextsWithoutAgreementToTheirCredits) {
  const SandboxProcess sandbox({QStringLiteral("--credits"), QStringLiteral("3")});
  const Garage garage(20);
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  const QString id = garage.MakeCampaign();
  const CtlResult dear = garage.Run({QStringLiteral("send"), id, QStringLiteral("--yes")});
  EXPECT_EQ(dear.code, 1);
  EXPECT_TRUE(dear.err.contains("credits")) << dear.err.constData();
  const SandboxProcess rich;
  garage.Use(rich);
  const CtlResult unasked = garage.Run({QStringLiteral("send"), id});
  EXPECT_EQ(unasked.code, 1);
  EXPECT_TRUE(unasked.err.contains("--yes")) << unasked.err.constData();
  EXPECT_EQ(Recorded(sandbox) + Recorded(rich), 0);
}

TEST(MarketingCtlRefuses, ToWorkOnWhatIsDamagedAndLeavesItAsItIs) {
  struct Damage {
    const char* name;
    const char* file;  ///< what is damaged; null: nothing but SQL
    QByteArray bytes;
    const char* sql;
    const char* message;
  };
  QByteArray noise;
  for (int i = 0; i < 3000; ++i)
    noise.append(static_cast<char>(i * 7 % 256));
  const Damage damages[] = {
      {"ini", "QBX.INI", noise, nullptr, "QBX.INI is damaged"},
      {"registry", "registry/machine.reg", noise, nullptr, "machine.reg"},
      {"database of noise", "QBXKorvelManager.db", noise, nullptr, "is not available"},
      {"empty database file", "QBXKorvelManager.db", QByteArray(), nullptr, "not a primary database file"},
      {"no options row", nullptr, {}, "DELETE FROM _Options", "Error reading all settings data"},
      {"no options procedure", nullptr, {}, "DROP TABLE _Options", "did not start well"},
  };
  for (const Damage& damage : damages) {
    SCOPED_TRACE(damage.name);
    const Garage garage(20);
    if (damage.sql) garage.Sql(damage.sql);
    if (damage.file) garage.Folder().Write(QLatin1String(damage.file), damage.bytes);
    for (const char* command : {"query 1", "send 1 --yes", "campaigns list"}) {
      const CtlResult result = garage.Run(Words(command));
      EXPECT_EQ(result.code, 1) << command;
      EXPECT_TRUE(result.out.isEmpty()) << result.out.constData();
      EXPECT_TRUE(result.err.contains(damage.message)) << command << ": " << result.err.constData();
    }
    if (!damage.file) continue;
    EXPECT_EQ(garage.Folder().Read(QLatin1String(damage.file)), damage.bytes);
  }
  const TempFolder empty;
  const CtlResult nothing = RunCtl({QStringLiteral("campaigns"), QStringLiteral("list"), QStringLiteral("--user=Pat"),
                                    QStringLiteral("--folder"), empty.Path()});
  EXPECT_EQ(nothing.code, 1);
  EXPECT_TRUE(nothing.err.contains("is not available")) << nothing.err.constData();
  EXPECT_FALSE(empty.Names().contains(QStringLiteral("QBXKorvelManager.db")));
}

TEST(MarketingCtlSecrets, AreNeverShownAndWorkAllTheSame) {
  const SandboxProcess sandbox({QStringLiteral("--client"), QStringLiteral("GARAGE"), QStringLiteral("--password"),
                                QStringLiteral("gateway+secret"), QStringLiteral("--smtp-user"),
                                QStringLiteral("garage"), QStringLiteral("--smtp-password"),
                                QString::fromUtf8("m\xc3\xa4il secret")});
  const Garage garage(20);
  garage.MakeEverybodyReachable();
  garage.Use(sandbox);
  QByteArray shown;
  const auto run = [&](const QStringList& command, const QByteArray& input = {}) {
    CtlResult result = garage.Run(command, input);
    shown += result.out + result.err;
    return result;
  };
  const QByteArray marked = garage.Run(Words("encipher --make-key --marked"), "m\xc3\xa4il secret\n")
                                .Object()[QLatin1String("enciphered")]
                                .toString()
                                .toUtf8();
  EXPECT_FALSE(marked.isEmpty());
  EXPECT_EQ(run(Words("options set SMTP_Password @-"), marked).code, 0);
  EXPECT_EQ(run(Words("options set SMS_ClientPassword @-"), "gateway+secret\n").code, 0);
  for (const char* line :
       {"options set SMS_ClientID GARAGE", "options set SMTP_UserName garage", "options set SMTP_Authenticate on"}) {
    EXPECT_EQ(run(Words(line)).code, 0) << line;
  }
  const QString id = garage.MakeCampaign();
  const CtlResult sent = run({QStringLiteral("send"), id, QStringLiteral("--yes")});
  EXPECT_EQ(sent.code, 0) << sent.err.constData();
  EXPECT_EQ(AcceptedMails(sandbox).size(), 20U);
  EXPECT_EQ(AcceptedTexts(sandbox).size(), 20U);

  // Failures are where secrets slip out.
  garage.Sql("UPDATE [Campaign Results] SET Processed = 0; DELETE FROM Send_Journal");
  EXPECT_EQ(run(Words("options set SMTP_Port 1")).code, 0);
  EXPECT_EQ(run({QStringLiteral("send"), id, QStringLiteral("--email-only")}).code, 3);
  EXPECT_EQ(run(Words("options set SMS_Server http://127.0.0.1:1")).code, 0);
  EXPECT_EQ(run(Words("credits")).code, 1);
  EXPECT_EQ(run({QStringLiteral("send"), id, QStringLiteral("--yes")}).code, 1);
  for (const char* command :
       {"options list", "options get SMTP_Password", "options get SMS_ClientPassword", "status", "log"})
    run(Words(command));

  for (const QString& name : garage.Folder().Names()) {
    if (name.endsWith(QStringLiteral(".LOG")) || name.endsWith(QStringLiteral(".INI")))
      shown += garage.Folder().Read(name);
  }
  for (const char* secret : {"m\xc3\xa4il secret", "gateway+secret", "gateway%2Bsecret", "gateway%2bsecret"}) {
    EXPECT_FALSE(shown.contains(secret)) << secret;
  }
  EXPECT_FALSE(shown.contains(marked.mid(8))) << "only the call that made it may show the enciphered password";
}

}  // namespace qbx::test
