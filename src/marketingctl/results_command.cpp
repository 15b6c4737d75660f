// marketingctl results: the rows of a campaign: their flags, send methods and doubts, and taking rows out.

#include <algorithm>
#include <array>
#include <cstdio>
#include <limits>
#include <memory>
#include <set>
#include <utility>

#include "dispatch/row_changes.h"
#include "dispatch/row_survey.h"
#include "dispatch/settle_doubt.h"
#include "letters/letter_rows.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "results/flag_columns.h"
#include "results/send_methods.h"

namespace qbx::ctl {

namespace {

constexpr char kSent[] = "sent";
constexpr char kNotSent[] = "not-sent";

struct ResultsArguments {
  std::string id;
  std::vector<std::string> sendBy;
  std::vector<std::string> toggle;
  std::string settleDoubt;
  std::string tick;
  std::string untick;
  std::vector<qint64> takeOut;
  std::vector<qint64> rows;
  bool yes = false;

  [[nodiscard]] bool ChangesRows() const { return !tick.empty() || !untick.empty() || !takeOut.empty(); }
};

constexpr std::array kSendFlags = {std::pair{kSendSmsFlag, Channel::kSms}, std::pair{kSendEmailFlag, Channel::kEmail},
                                   std::pair{kSendLetterFlag, Channel::kLetter}};

struct Rule {
  const char* channel;
  int SendMethods::*position;
  QStringList (*rules)();
};

constexpr Rule kRules[] = {{"sms", &SendMethods::sms, SmsRules},
                           {"email", &SendMethods::email, EmailRules},
                           {"letter", &SendMethods::letter, LetterRules}};

/// \throws CLI::ValidationError
SendMethods ParseSendBy(const std::vector<std::string>& words) {
  SendMethods methods;
  for (const std::string& word : words) {
    const QString text = QString::fromStdString(word);
    bool known = false;
    for (const Rule& rule : kRules) {
      if (!text.startsWith(QLatin1String(rule.channel) + QLatin1Char('='), Qt::CaseInsensitive)) continue;
      bool isNumber = false;
      const int position = text.mid(text.indexOf(QLatin1Char('=')) + 1).toInt(&isNumber);
      known = isNumber && position >= 0 && position < rule.rules().size();
      methods.*rule.position = position;
    }
    if (!known) throw CLI::ValidationError("--send-by: \"" + word + "\" is not a rule; see results --help");
  }
  return methods;
}

int RefuseUnknownRow(int id, qint64 row) {
  return Refuse(Reason::kUnknownRow, QStringLiteral("Campaign %1 has no row %2.").arg(id).arg(row));
}

bool Toggle(Program& program, const std::vector<std::string>& toggle) {
  bool isNumber = false;
  const qint64 record = QString::fromStdString(toggle[0]).toLongLong(&isNumber);
  const QString column = QString::fromStdString(toggle[1]);
  if (!isNumber || record < 1 || !FlagColumns().contains(column, Qt::CaseInsensitive)) {
    throw CLI::ValidationError("--toggle: RECORDID and one of " +
                               FlagColumns().join(QStringLiteral(", ")).toStdString());
  }
  Recordset& rows = program.desk.results.Rows();
  const int key = rows.ColumnIndex(QLatin1String(ResultsView::kRowKey));
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    if (rows.Field(key).ToInt() != record) continue;
    const bool before = rows.Field(column).ToBool();
    program.desk.flags.ClickCell(column, record);
    for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
      if (rows.Field(key).ToInt() == record) return rows.Field(column).ToBool() != before;
    }
    return false;
  }
  RefuseUnknownRow(program.desk.results.CampaignId(), record);
  return false;
}

/// ", Went out: 4 / 6".
QString LettersOut(Program& program) {
  try {
    const LetterCounts counts = ReadLetterCounts(program.app.connection, program.desk.results.CampaignId());
    const QString line = LettersOutLine(counts, program.desk.counters.Values().letters);
    return line.isEmpty() ? line : QStringLiteral(", ") + line;
  } catch (const DatabaseError&) {
    return {};  // the rows are shown even so
  }
}

void Print(Program& program) {
  const QJsonArray rows = RowsToJson(program.desk.results.Rows());
  if (program.json) {
    PrintJson(rows);
    return;
  }
  PrintTable(rows, QStringList{QStringLiteral("RecordID"), QStringLiteral("Customer"), QStringLiteral("Contact"),
                               QStringLiteral("Mobile"), QStringLiteral("Email"), QStringLiteral("Vehicle")} +
                       FlagColumns());
  const CounterLabels labels = MakeCounterLabels(program.desk.counters.Values(), {});
  PrintLine(program.desk.results.CountText().trimmed() + QStringLiteral("; ") + labels.lblLetters +
            LettersOut(program) + QStringLiteral("; ") + labels.lblSMS0 + QStringLiteral(", ") + labels.lblSMS1 +
            QStringLiteral("; ") + labels.lblEmail0 + QStringLiteral(", ") + labels.lblEmail1);
}

/// The rows of `wanted` that the campaign does not hold.
std::set<qint64> UnknownRows(Program& program, const std::set<qint64>& wanted) {
  Recordset& rows = program.desk.results.Rows();
  const int key = rows.ColumnIndex(QLatin1String(ResultsView::kRowKey));
  std::set<qint64> unknown = wanted;
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext())
    unknown.erase(rows.Field(key).ToInt());
  return unknown;
}

/// Prints on stderr which rows something applies to. \return the rows, for a script
QJsonArray TellRows(const char* what, const std::set<qint64>& rows) {
  QJsonArray told;
  QStringList names;
  for (const qint64 row : rows) {
    told.append(row);
    names << QString::number(row);
  }
  if (!rows.empty()) std::fprintf(stderr, "%s: %s\n", what, qPrintable(names.join(QStringLiteral(", "))));
  return told;
}

/// Prints whether rows share a mobile or an address, so that another row's customer may read the message.
void TellShared(Program& program, int id) {
  const std::optional<RowSurvey> survey =
      SurveyCampaign(program.app.statements, id, QString(), program.app.clock.Today());
  if (!survey) return;
  for (const QString& text : {SharedMobileText(*survey), SharedAddressText(*survey)}) {
    if (!text.isEmpty()) PrintNote(text);
  }
}

int Settle(Program& program, int id, const ResultsArguments& arguments) {
  if (!arguments.yes) return Refuse(Reason::kNotAgreed, QStringLiteral("Settling what is in doubt needs --yes."));
  if (!program.desk.results.DisplayResults(id)) return kRefused;
  const std::set<qint64> wanted(arguments.rows.begin(), arguments.rows.end());
  const std::set<qint64> unknown = UnknownRows(program, wanted);
  if (!wanted.empty() && unknown == wanted) return RefuseUnknownRow(id, *unknown.begin());
  const DoubtOutcome outcome = arguments.settleDoubt == kSent ? DoubtOutcome::kSent : DoubtOutcome::kNotSent;
  try {
    DoubtSettlement settlement =
        SettleDoubt(program.app.connection, program.desk.guard, program.app.eventContext.user, id, wanted, outcome);
    if (settlement.refusal) {
      program.ui.ShowMessage(*settlement.refusal);
      return kRefused;
    }
    for (const qint64 row : unknown)
      settlement.notInDoubt.erase(row);
    const QJsonObject json{
        {QStringLiteral("settled"), settlement.messages},
        {QStringLiteral("unknown_rows"), TellRows("The campaign does not have these rows", unknown)},
        {QStringLiteral("not_in_doubt"), TellRows("Nothing is in doubt in these rows", settlement.notInDoubt)}};
    if (program.json) {
      PrintJson(json);
    } else {
      PrintLine(QStringLiteral("Messages settled: %1").arg(settlement.messages));
    }
    return kDone;
  } catch (const DatabaseError& error) {
    return Refuse(error.Description());
  }
}

/// \param keys  rows that the campaign holds
RowChange ChangeRows(Program& program, int id, const ResultsArguments& arguments, const std::vector<qint64>& keys) {
  RowChanges& changes = program.desk.rowChanges;
  if (!arguments.takeOut.empty()) return changes.TakeOut(id, keys);
  const bool ticked = !arguments.tick.empty();
  const std::string& name = ticked ? arguments.tick : arguments.untick;
  const auto flag = std::find_if(kSendFlags.begin(), kSendFlags.end(), [&name](const auto& one) {
    return QString::fromStdString(name).compare(one.first, Qt::CaseInsensitive) == 0;
  });
  return changes.SetFlag(id, flag->second, ticked, keys);
}

void PrintChange(const Program& program, const RowChange& change, const ResultsArguments& arguments,
                 const QJsonArray& unknown) {
  if (!program.json) {
    PrintLine(ChangeText(change, !arguments.takeOut.empty() ? QStringLiteral("taken out")
                                 : !arguments.tick.empty()  ? QStringLiteral("ticked")
                                                            : QStringLiteral("unticked")));
    return;
  }
  QJsonArray leftAlone;
  for (const auto& [reason, rows] : change.leftAlone)
    leftAlone.append(QJsonObject{{QStringLiteral("reason"), reason}, {QStringLiteral("rows"), rows}});
  PrintJson(QJsonObject{{QStringLiteral("changed"), static_cast<int>(change.changed.size())},
                        {QStringLiteral("unknown_rows"), unknown},
                        {QStringLiteral("left_alone"), leftAlone}});
}

int ChangeMany(Program& program, int id, const ResultsArguments& arguments) {
  const bool takesOut = !arguments.takeOut.empty();
  if (takesOut && !arguments.yes) return Refuse(Reason::kNotAgreed, QStringLiteral("Taking rows out needs --yes."));
  if (!program.desk.results.DisplayResults(id)) return kRefused;
  const std::vector<qint64>& asked = takesOut ? arguments.takeOut : arguments.rows;
  std::set<qint64> wanted(asked.begin(), asked.end());
  const std::set<qint64> unknown = UnknownRows(program, wanted);
  if (unknown == wanted) return RefuseUnknownRow(id, *unknown.begin());
  const QJsonArray told = TellRows("The campaign does not have these rows", unknown);
  std::erase_if(wanted, [&unknown](qint64 row) { return unknown.contains(row); });
  try {
    const RowChange change = ChangeRows(program, id, arguments, {wanted.begin(), wanted.end()});
    if (change.refusal) {
      program.ui.ShowMessage(*change.refusal);
      return kRefused;
    }
    PrintChange(program, change, arguments, told);
    return kDone;
  } catch (const DatabaseError& error) {
    return Refuse(error.Description());
  }
}

int Results(Program& program, const ResultsArguments& arguments) {
  if (arguments.yes) program.ui.SetAnswer(Question::kChangeProcessedFlags, MessageAnswer::kYes);
  if (!arguments.rows.empty() && arguments.settleDoubt.empty() && !arguments.ChangesRows())
    throw CLI::ValidationError("--rows: goes with --settle-doubt, --tick or --untick");
  const SendMethods methods = ParseSendBy(arguments.sendBy);
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id) return kRefused;
  if (*id > 0 && !program.app.campaignStorage.LoadCampaign(*id)) return kRefused;
  if (!arguments.settleDoubt.empty()) return Settle(program, *id, arguments);
  if (arguments.ChangesRows()) return ChangeMany(program, *id, arguments);
  if ((!arguments.sendBy.empty() || !arguments.toggle.empty()) && !program.desk.edits.MayEdit()) return kRefused;
  if (!arguments.sendBy.empty() && !SetSendMethods(program.app.statements, methods, *id, program.app.options)) {
    return kRefused;
  }
  if (!program.desk.results.DisplayResults(*id)) return kRefused;
  if (!arguments.toggle.empty() && !Toggle(program, arguments.toggle)) return kRefused;
  Print(program);
  TellShared(program, *id);
  return kDone;
}

std::string RulesHelp() {
  QString help = QStringLiteral("Rules of --send-by, by number:\n");
  for (const Rule& rule : kRules) {
    for (qsizetype i = 0; i < rule.rules().size(); ++i) {
      help += QStringLiteral("  %1=%2  %3\n").arg(QLatin1String(rule.channel)).arg(i).arg(rule.rules()[i]);
    }
  }
  help += QStringLiteral(
      "Examples: marketingctl --folder garage --user Pat results 12 --send-by sms=0 email=0 letter=1\n            (a text to everybody with a mobile number, an email to everybody with an address, no letter to anybody)\n          marketingctl --folder garage --user Pat results 12 --toggle 4711 Processed --yes\n          marketingctl --folder garage --user Pat results 12 --settle-doubt not-sent --rows 4711,4712 --yes\n          marketingctl --folder garage --user Pat results 12 --untick Send_SMS --rows 4711,4712");
  return help.toStdString();
}

}  // namespace

void AddResultsCommand(Runner& runner) {
  auto arguments = std::make_shared<ResultsArguments>();
  CLI::App& command = *runner.Root().add_subcommand(
      "results", "List the rows of a campaign, set send methods, change flags, take rows out, settle doubt");
  DeclareCampaign(command, arguments->id)->required();
  CLI::Option* sendBy = command
                            .add_option("--send-by", arguments->sendBy,
                                        "Rules for all rows, by their numbers below: sms=N email=N letter=N")
                            ->expected(1, 3);
  CLI::Option* toggle =
      command
          .add_option("--toggle", arguments->toggle, "Flip Send_SMS, Send_Email, Send_Letter or Processed of one row")
          ->expected(2)
          ->type_name("RECORDID FLAG");
  CLI::Option* settle =
      command.add_option("--settle-doubt", arguments->settleDoubt, "Messages in doubt did arrive, or did not")
          ->check(CLI::IsMember({kSent, kNotSent}))
          ->excludes(sendBy)
          ->excludes(toggle);
  const auto keys = CLI::Range(1, std::numeric_limits<int>::max());
  CLI::Option* rows = command.add_option("--rows", arguments->rows, "Only those of these rows: RECORDID,RECORDID...")
                          ->delimiter(',')
                          ->allow_extra_args(false)
                          ->check(keys)
                          ->type_name("RECORDIDS");
  const auto flag = CLI::IsMember({kSendFlags[0].first.data(), kSendFlags[1].first.data(), kSendFlags[2].first.data()},
                                  CLI::ignore_case);
  CLI::Option* tick =
      command.add_option("--tick", arguments->tick, "Tick a send flag of --rows, where it can be ticked");
  CLI::Option* untick = command.add_option("--untick", arguments->untick, "Untick a send flag of --rows");
  for (CLI::Option* setting : {tick, untick})
    setting->check(flag)->needs(rows)->excludes(sendBy)->excludes(toggle)->excludes(settle);
  tick->excludes(untick);
  command.add_option("--take-out", arguments->takeOut, "Take these rows out of the campaign: RECORDID,RECORDID...")
      ->delimiter(',')
      ->allow_extra_args(false)
      ->check(keys)
      ->excludes(sendBy)
      ->excludes(toggle)
      ->excludes(settle)
      ->excludes(rows)
      ->type_name("RECORDIDS");
  command.add_flag("--yes", arguments->yes,
                   "Agree to change a Processed flag, to settle what is in doubt, or to take rows out");
  command.footer(RulesHelp());
  runner.AddCommand(command, [arguments](Program& program) { return Results(program, *arguments); });
}

}  // namespace qbx::ctl
