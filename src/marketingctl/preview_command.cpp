// marketingctl preview: merged texts before anything is sent.

#include <memory>

#include "dispatch/result_rows.h"
#include "dispatch/sms_credits.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "merge/compiled_template.h"
#include "merge/sample_customer.h"
#include "results/merge_row.h"

namespace qbx::ctl {

namespace {

struct PreviewArguments {
  std::string id;
  int rows = 5;
  bool sample = false;
};

/// The three texts of a campaign, merged.
class Previewer {
 public:
  Previewer(const CampaignRecord& record, QDate today)
      : sms_(record.SMS), subject_(record.Email_Subject), body_(record.Email_Body), today_(today) {}

  [[nodiscard]] QJsonObject Merge(const QJsonValue& recordId, const MergeValues& values) {
    QString text;
    QJsonObject object{{QStringLiteral("RecordID"), recordId}};
    sms_.Merge(values, today_, text);
    object.insert(QStringLiteral("sms"), text.left(kMaxSmsLength));
    subject_.Merge(values, today_, text);
    object.insert(QStringLiteral("subject"), text);
    body_.Merge(values, today_, text);
    object.insert(QStringLiteral("body"), text);
    return object;
  }

 private:
  CompiledTemplate sms_, subject_, body_;
  QDate today_;
};

void Print(Program& program, const QJsonArray& previews) {
  if (program.json) {
    PrintJson(previews);
    return;
  }
  if (previews.isEmpty()) PrintLine(QStringLiteral("No row is flagged and unprocessed."));
  for (const QJsonValue preview : previews) {
    PrintLine(QStringLiteral("--- Row ") + preview[QLatin1String("RecordID")].toVariant().toString());
    PrintLine(QStringLiteral("SMS:     ") + preview[QLatin1String("sms")].toString());
    PrintLine(QStringLiteral("Subject: ") + preview[QLatin1String("subject")].toString());
    PrintLine(preview[QLatin1String("body")].toString());
  }
}

/// The rows are stepped as they are read, so a long campaign is not read for its first rows.
/// \return nothing when reading failed; the reason was told
std::optional<QJsonArray> PreviewRows(Application& app, Previewer& previewer, int campaignId, int wanted) {
  QJsonArray previews;
  try {
    Recordset rows;
    if (app.statements.dbOpenRec(rows, SelectMailshotRows(campaignId), CursorType::kForwardOnly, LockType::kReadOnly,
                                 kOptionUnspecified, CursorLocation::kServer)) {
      return std::nullopt;
    }
    for (; !rows.Eof() && previews.size() < wanted; rows.MoveNext()) {
      previews.append(previewer.Merge(rows.Field(QStringLiteral("RecordID")).ToInt(),
                                      MergeRow(rows, BlankContact::kBecomesCustomer)));
    }
  } catch (const DatabaseError& error) {
    Refuse(error.Description());
    return std::nullopt;
  }
  return previews;
}

int Preview(Program& program, const PreviewArguments& arguments) {
  Application& app = program.app;
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;
  Previewer previewer(app.campaign.record, app.clock.Today());
  std::optional<QJsonArray> previews;
  if (arguments.sample) {
    previews = QJsonArray{previewer.Merge(QJsonValue::Null, SampleMergeValues())};
  } else {
    previews = PreviewRows(app, previewer, *id, arguments.rows);
  }
  if (!previews) return kRefused;
  Print(program, *previews);
  return kDone;
}

}  // namespace

void AddPreviewCommand(Runner& runner) {
  auto arguments = std::make_shared<PreviewArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("preview", "Show the merged texts of the rows that a run would send next");
  DeclareCampaign(command, arguments->id)->required();
  CLI::Option* rows = command.add_option("--rows", arguments->rows, "How many rows")
                          ->capture_default_str()
                          ->check(CLI::Range(1, 1'000'000));
  command.add_flag("--sample", arguments->sample, "Merge with the built-in sample customer instead")->excludes(rows);
  command.footer("Example: marketingctl --folder garage --user Pat preview 12 --rows 3");
  runner.AddCommand(command, [arguments](Program& program) { return Preview(program, *arguments); });
}

}  // namespace qbx::ctl
