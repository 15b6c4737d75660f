#include "marketingctl/campaign_names.h"

#include <QRegularExpression>

#include "campaigns/campaign_list.h"

namespace qbx::ctl {

namespace {

QString NumbersOf(const std::vector<int>& campaigns) {
  QStringList numbers;
  for (const int id : campaigns)
    numbers << QString::number(id);
  return numbers.join(QStringLiteral(", "));
}

}  // namespace

std::optional<int> FindCampaign(Program& program, const std::string& argument) {
  const QString text = QString::fromStdString(argument);
  bool isId = false;
  const int id = text.toInt(&isId);
  if (isId) return id;
  static const QRegularExpression number(QStringLiteral("^[+-]?[0-9]+$"));
  if (number.match(text).hasMatch()) throw CLI::ValidationError("ID: " + argument + " is too large for a number");
  const auto list = LoadCampaigns(program.app.statements);
  if (!list) return std::nullopt;
  const std::vector<int> campaigns = CampaignsNamed(*list, text);
  if (campaigns.size() == 1) return campaigns.front();
  if (campaigns.empty()) {
    Refuse(Reason::kUnknownCampaign,
           QStringLiteral("There is no campaign \"%1\". \"campaigns list\" shows all.").arg(text));
  } else {
    Refuse(Reason::kAmbiguousName, QStringLiteral("Several campaigns are named \"%1\": %2. Say which by its number.")
                                       .arg(text, NumbersOf(campaigns)));
  }
  return std::nullopt;
}

bool NameMayBeUsed(Program& program, const QString& name, bool allowSameName, int own) {
  if (!CampaignNameIsValid(name)) {
    Refuse(Reason::kInvalidName, QStringLiteral("Campaign Name is not valid."));
    return false;
  }
  if (allowSameName) return true;
  const auto list = LoadCampaigns(program.app.statements);
  if (!list) return false;
  const std::vector<int> campaigns = NameTakenBy(*list, name, own);
  if (campaigns.empty()) return true;
  Refuse(Reason::kNameTaken,
         QStringLiteral("There is a campaign \"%1\" already (%2). --allow-same-name makes another of that name.")
             .arg(name, NumbersOf(campaigns)));
  return false;
}

CLI::Option* DeclareCampaign(CLI::App& command, std::string& argument) {
  return command.add_option("ID", argument, "Number of the campaign, or its name")->type_name("");
}

CLI::Option* DeclareFile(CLI::App& command, const char* flag, std::string& file, const char* about) {
  return command.add_option(flag, file, about)->type_name("FILE")->check([](const std::string& name) {
    return std::string(name.empty() ? "The file needs a name" : "");
  });
}

CLI::Option* DeclarePdf(CLI::App& command, std::string& file) {
  return DeclareFile(command, "--pdf", file, "PDF file; one that exists is replaced")->required();
}

void DeclareAllowSameName(CLI::App& command, bool& allowSameName) {
  command.add_flag("--allow-same-name", allowSameName, "Store it even when another campaign has that name");
}

}  // namespace qbx::ctl
