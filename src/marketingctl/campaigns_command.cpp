// marketingctl campaigns: list, show, new, set, copy, rename, delete.

#include <memory>

#include "campaigns/campaign_list.h"
#include "marketingctl/campaign_arguments.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/filter_notes_message.h"
#include "marketingctl/output.h"
#include "marketingctl/record_json.h"
#include "marketingctl/text_argument.h"
#include "queries/query_catalogue.h"
#include "queries/query_sentence.h"
#include "util/date_text.h"
#include "wizard/campaign_settings.h"

namespace qbx::ctl {

namespace {

struct CampaignsArguments {
  std::string id;
  std::string name;
  bool allowSameName = false;
  CampaignArguments settings;
};

/// For scripts: under the names of the host's columns, dates in ISO 8601.
int ListForScripts(Program& program) {
  Recordset rows;
  if (program.app.statements.dbOpenRec(rows, QStringLiteral("proc_sel_Marketing_Campaigns"))) return kRefused;
  PrintJson(RowsToJson(rows));
  return kDone;
}

int ListCampaigns(Program& program) {
  if (program.json) return ListForScripts(program);
  const auto rows = LoadCampaigns(program.app.statements);
  if (!rows) return kRefused;
  QJsonArray array;
  for (const CampaignListRow& row : *rows) {
    array.append(QJsonObject{{QStringLiteral("ID"), row.ID},
                             {QStringLiteral("Campaign_Name"), row.Campaign_Name},
                             {QStringLiteral("Last_Run"), MinuteText(row.Last_Run)},
                             {QStringLiteral("Created_Date"), MinuteText(row.Created_Date)},
                             {QStringLiteral("Campaign_Description"), row.Campaign_Description},
                             {QStringLiteral("Created_By"), row.Created_By}});
  }
  PrintTable(array,
             {QStringLiteral("ID"), QStringLiteral("Campaign_Name"), QStringLiteral("Last_Run"),
              QStringLiteral("Created_Date"), QStringLiteral("Created_By"), QStringLiteral("Campaign_Description")});
  return kDone;
}

/// What the query of a stored campaign selects, in the words of step 1.
QString Selects(const Application& app) {
  WizardState state;
  (void)CopyFromRecord(app.campaign.record, state);
  return QuerySelects(app.campaign.record.CampaignTypeID, state.options, ReminderList(app.options),
                      app.startup.edition.boat, app.clock.Today());
}

int Show(Program& program, int id, const CampaignsArguments&) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const QString selects = Selects(program.app);
  if (program.json) {
    QJsonObject record = RecordToJson(program.app.campaign.record);
    record.insert(QStringLiteral("selects"), selects);
    PrintJson(record);
  } else {
    PrintRecord(program.app.campaign.record);
    PrintLine(selects);
  }
  return kDone;
}

int PrintId(const Program& program, int id) {
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("ID"), id}});
  } else {
    PrintLine(QStringLiteral("Campaign %1").arg(id));
  }
  return kDone;
}

/// Puts the arguments into the current campaign, then prints the notes on its filters.
void Apply(Program& program, const CampaignArguments& arguments) {
  CampaignRecord& record = program.app.campaign.record;
  ApplyCampaignArguments(arguments, program.app.startup.edition, program.app.clock.Today(), record);
  CheckStoredDates(arguments, record);
  WizardState state;
  (void)CopyFromRecord(record, state);
  TellFilterNotes(program.ui, state.filters, program.app.startup.edition.boat);
}

int New(Program& program, const CampaignsArguments& arguments) {
  const QString name = TextArgument(arguments.name);
  if (!NameMayBeUsed(program, name, arguments.allowSameName)) return kRefused;
  program.app.campaign.record.Campaign_Name = name;
  Apply(program, arguments.settings);
  return program.app.campaignStorage.SaveCampaign() ? PrintId(program, program.app.campaign.record.ID)
                                                    : static_cast<int>(kRefused);
}

int SetCampaign(Program& program, int id, const CampaignsArguments& arguments) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  Apply(program, arguments.settings);
  return program.app.campaignStorage.UpdateCampaign() ? PrintId(program, program.app.campaign.record.ID)
                                                      : static_cast<int>(kRefused);
}

int Copy(Program& program, int id, const CampaignsArguments& arguments) {
  const QString typed = TextArgument(arguments.name);
  const QString copyName = CampaignCopyName(typed);
  if (!NameMayBeUsed(program, copyName, arguments.allowSameName)) return kRefused;
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const int newId = program.app.campaignStorage.CopyCampaign(id, copyName);
  if (newId < 1) return kRefused;
  if (copyName != typed) PrintNote(QStringLiteral("The name of the copy was cut to \"%1\".").arg(copyName));
  return PrintId(program, newId);
}

int Rename(Program& program, int id, const CampaignsArguments& arguments) {
  const QString name = TextArgument(arguments.name);
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  if (!NameMayBeUsed(program, name, arguments.allowSameName, id)) return kRefused;
  const QString description = program.app.campaign.record.Campaign_Description;
  return program.app.campaignStorage.UpdateCampaignDetails(id, name, description) ? PrintId(program, id)
                                                                                  : static_cast<int>(kRefused);
}

int Delete(Program& program, int id, const CampaignsArguments&) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  return program.app.campaignStorage.DeleteCampaign(id) ? PrintId(program, id) : static_cast<int>(kRefused);
}

}  // namespace

void AddCampaignsCommand(Runner& runner) {
  auto arguments = std::make_shared<CampaignsArguments>();
  CLI::App& campaigns = *runner.Root().add_subcommand("campaigns", "List, show, make and change saved campaigns");
  campaigns.require_subcommand(1);
  campaigns.fallthrough();
  const auto add = [&](const char* name, const char* help, const char* example) -> CLI::App& {
    CLI::App& command = *campaigns.add_subcommand(name, help);
    command.fallthrough();
    command.footer(std::string("Example: marketingctl --folder garage --user Pat campaigns ") + example);
    return command;
  };
  const auto name = [&](CLI::App& command) {
    command.add_option("NAME", arguments->name, "Its name")->required();
    DeclareAllowSameName(command, arguments->allowSameName);
  };
  using Change = int (*)(Program&, int id, const CampaignsArguments&);
  const auto ofCampaign = [&](CLI::App& command, Change action) {
    DeclareCampaign(command, arguments->id)->required();
    runner.AddCommand(command, [arguments, action](Program& program) {
      const std::optional<int> id = FindCampaign(program, arguments->id);
      return id ? action(program, *id, *arguments) : static_cast<int>(kRefused);
    });
  };

  runner.AddCommand(add("list", "All saved campaigns", "list"), ListCampaigns);
  ofCampaign(add("show", "Every setting of a campaign", "show 12"), Show);
  CLI::App& fresh =
      add("new", "Save a new campaign and print its number",
          "new \"Spring offer\" --query \"Recent Customers\" --from 2026-01-01 --to 2026-06-30 --sms @offer.txt");
  name(fresh);
  DeclareCampaignArguments(fresh, arguments->settings);
  runner.AddCommand(fresh, [arguments](Program& program) { return New(program, *arguments); });
  CLI::App& set =
      add("set", "Change settings of a campaign; what is not named stays", "set 12 --year after:2019 --mileage none");
  ofCampaign(set, SetCampaign);
  DeclareCampaignArguments(set, arguments->settings);
  CLI::App& copy = add("copy", "Copy a campaign under a new name (40 characters at most) and print its number",
                       "copy 12 \"Spring 2\"");
  ofCampaign(copy, Copy);
  name(copy);
  CLI::App& rename = add("rename", "Give a campaign another name", "rename 12 \"Summer offer\"");
  ofCampaign(rename, Rename);
  name(rename);
  ofCampaign(add("delete", "Delete a campaign, its results and its send journal", "delete 12"), Delete);
}

}  // namespace qbx::ctl
