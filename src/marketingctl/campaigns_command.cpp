// marketingctl campaigns: list, show, new, set, copy, rename, delete.

#include <memory>

#include "campaigns/campaign_list.h"
#include "marketingctl/campaign_arguments.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "marketingctl/record_json.h"
#include "marketingctl/text_argument.h"

namespace qbx::ctl {

namespace {

/// For scripts: the host's own columns, dates in ISO 8601.
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
                             {QStringLiteral("Last_Run"), row.Last_Run},
                             {QStringLiteral("Created_Date"), row.Created_Date},
                             {QStringLiteral("Campaign_Description"), row.Campaign_Description},
                             {QStringLiteral("Created_By"), row.Created_By}});
  }
  PrintTable(array,
             {QStringLiteral("ID"), QStringLiteral("Campaign_Name"), QStringLiteral("Last_Run"),
              QStringLiteral("Created_Date"), QStringLiteral("Created_By"), QStringLiteral("Campaign_Description")});
  return kDone;
}

int Show(Program& program, int id) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const QJsonObject record = RecordToJson(program.app.campaign.record);
  if (program.json) {
    PrintJson(record);
  } else {
    PrintRecord(program.app.campaign.record);
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

int New(Program& program, const QString& name, const CampaignArguments& arguments) {
  if (!CampaignNameIsValid(name)) return Refuse(Reason::kInvalidName, QStringLiteral("Campaign Name is not valid."));
  CampaignRecord& record = program.app.campaign.record;
  record.Campaign_Name = name;
  ApplyCampaignArguments(arguments, program.app.startup.edition, record);
  return program.app.campaignStorage.SaveCampaign() ? PrintId(program, program.app.campaign.record.ID)
                                                    : static_cast<int>(kRefused);
}

int SetCampaign(Program& program, int id, const CampaignArguments& arguments) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  ApplyCampaignArguments(arguments, program.app.startup.edition, program.app.campaign.record);
  return program.app.campaignStorage.UpdateCampaign() ? PrintId(program, program.app.campaign.record.ID)
                                                      : static_cast<int>(kRefused);
}

int Copy(Program& program, int id, const QString& name) {
  const QString copyName = CampaignCopyName(name);
  if (!CampaignNameIsValid(copyName))
    return Refuse(Reason::kInvalidName, QStringLiteral("Campaign Name is not valid."));
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const int newId = program.app.campaignStorage.CopyCampaign(id, copyName);
  return newId > 0 ? PrintId(program, newId) : static_cast<int>(kRefused);
}

int Rename(Program& program, int id, const QString& name) {
  if (!CampaignNameIsValid(name)) return Refuse(Reason::kInvalidName, QStringLiteral("Campaign Name is not valid."));
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  const QString description = program.app.campaign.record.Campaign_Description;
  return program.app.campaignStorage.UpdateCampaignDetails(id, name, description) ? PrintId(program, id)
                                                                                  : static_cast<int>(kRefused);
}

int Delete(Program& program, int id) {
  if (!program.app.campaignStorage.LoadCampaign(id)) return kRefused;
  return program.app.campaignStorage.DeleteCampaign(id) ? PrintId(program, id) : static_cast<int>(kRefused);
}

struct CampaignsArguments {
  int id = 0;
  std::string name;
  CampaignArguments settings;
};

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
  const auto id = [&](CLI::App& command) {
    command.add_option("ID", arguments->id, "Number of the campaign")->required();
  };
  const auto name = [&](CLI::App& command) { command.add_option("NAME", arguments->name, "Its name")->required(); };

  CLI::App& list = add("list", "All saved campaigns", "list");
  runner.AddCommand(list, ListCampaigns);
  CLI::App& show = add("show", "Every setting of a campaign", "show 12");
  id(show);
  runner.AddCommand(show, [arguments](Program& program) { return Show(program, arguments->id); });
  CLI::App& fresh =
      add("new", "Save a new campaign and print its number",
          "new \"Spring offer\" --query \"Recent Customers\" --from 2026-01-01 --to 2026-06-30 --sms @offer.txt");
  name(fresh);
  DeclareCampaignArguments(fresh, arguments->settings);
  runner.AddCommand(fresh, [arguments](Program& program) {
    return New(program, TextArgument(arguments->name), arguments->settings);
  });
  CLI::App& set =
      add("set", "Change settings of a campaign; what is not named stays", "set 12 --year after:2019 --mileage none");
  id(set);
  DeclareCampaignArguments(set, arguments->settings);
  runner.AddCommand(set,
                    [arguments](Program& program) { return SetCampaign(program, arguments->id, arguments->settings); });
  CLI::App& copy = add("copy", "Copy a campaign under a new name (40 characters at most) and print its number",
                       "copy 12 \"Spring 2\"");
  id(copy);
  name(copy);
  runner.AddCommand(
      copy, [arguments](Program& program) { return Copy(program, arguments->id, TextArgument(arguments->name)); });
  CLI::App& rename = add("rename", "Give a campaign another name", "rename 12 \"Summer offer\"");
  id(rename);
  name(rename);
  runner.AddCommand(
      rename, [arguments](Program& program) { return Rename(program, arguments->id, TextArgument(arguments->name)); });
  CLI::App& remove = add("delete", "Delete a campaign, its results and its send journal", "delete 12");
  id(remove);
  runner.AddCommand(remove, [arguments](Program& program) { return Delete(program, arguments->id); });
}

}  // namespace qbx::ctl
