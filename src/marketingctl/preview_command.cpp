// marketingctl preview: merged texts before anything is sent.

#include <memory>

#include "dispatch/next_messages.h"
#include "dispatch/sms_text.h"
#include "dispatch/template_notes.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "wizard/campaign_data.h"

namespace qbx::ctl {

namespace {

struct PreviewArguments {
  std::string id;
  int rows = 5;
  bool sample = false;
  bool notes = false;
};

/// What is shown of a campaign.
struct PreviewOutput {
  QJsonArray rows;
  int count = 0;  ///< number of rows that the next run would send to
  QJsonArray notes;
};

MailshotTemplates TemplatesOf(const CampaignRecord& record) {
  return {record.SMS, record.Email_Subject, record.Email_Body};
}

QJsonValue Text(const std::optional<QString>& text) {
  return text ? QJsonValue(*text) : QJsonValue();
}

QJsonObject ToRow(const QJsonValue& recordId, const NextMessage& message) {
  return {{QStringLiteral("RecordID"), recordId},
          {QStringLiteral("sms"), Text(message.sms)},
          {QStringLiteral("subject"), Text(message.subject)},
          {QStringLiteral("body"), Text(message.body)}};
}

/// \return false when reading failed; the reason was shown
bool ReadRows(Application& app, MessageMaker& messages, int wanted, PreviewOutput& shown) {
  NextMessages walk(app.statements);
  if (!walk.Read(app.campaign.record.ID)) return false;
  shown.count = walk.Count();
  for (int place = 0; place < std::min(wanted, walk.Count()); ++place) {
    const std::optional<NextMessage> message = walk.At(place, messages, app.clock.Today());
    if (message) shown.rows.append(ToRow(message->recordId, *message));
  }
  return true;
}

void AddNotes(const char* channel, const QStringList& texts, QJsonArray& notes) {
  for (const QString& text : texts)
    notes.append(QJsonObject{{QStringLiteral("channel"), QLatin1String(channel)}, {QStringLiteral("text"), text}});
}

QJsonArray NotesOf(Application& app) {
  const CampaignRecord& record = app.campaign.record;
  const NoteFacts facts{.options = app.options,
                        .data = DataOfRecord(record),
                        .rows = SurveyCampaign(app.statements, record.ID, record.SMS, app.clock.Today())};
  QJsonArray notes;
  AddNotes("sms", SmsNotes(record.SMS, facts), notes);
  AddNotes("email", EmailNotes(record.Email_Subject, record.Email_Body, facts), notes);
  AddNotes("letter", LetterNotes(record.Letter, facts.data), notes);
  return notes;
}

void PrintText(const PreviewOutput& shown) {
  if (shown.rows.isEmpty()) PrintLine(QStringLiteral("No row is flagged for a text or an e-mail and unprocessed."));
  for (const QJsonValue row : shown.rows) {
    PrintLine(QStringLiteral("--- Row ") + row[QLatin1String("RecordID")].toVariant().toString());
    if (!row[QLatin1String("sms")].isNull())
      PrintLine(QStringLiteral("SMS:     ") + row[QLatin1String("sms")].toString());
    if (row[QLatin1String("subject")].isNull()) continue;
    PrintLine(QStringLiteral("Subject: ") + row[QLatin1String("subject")].toString());
    PrintLine(row[QLatin1String("body")].toString());
  }
  if (!shown.notes.isEmpty()) PrintLine(QStringLiteral("--- Notes"));
  for (const QJsonValue note : shown.notes)
    PrintLine(note[QLatin1String("channel")].toString().leftJustified(9) + note[QLatin1String("text")].toString());
}

void Print(const Program& program, const PreviewOutput& shown, bool withNotes) {
  if (!program.json) return PrintText(shown);
  if (!withNotes) return PrintJson(shown.rows);
  PrintJson(QJsonObject{{QStringLiteral("rows"), shown.rows},
                        {QStringLiteral("count"), shown.count},
                        {QStringLiteral("notes"), shown.notes}});
}

int Preview(Program& program, const PreviewArguments& arguments) {
  Application& app = program.app;
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;
  MessageMaker messages(TemplatesOf(app.campaign.record));
  PreviewOutput shown;
  try {
    if (!ReadRows(app, messages, arguments.sample ? 0 : arguments.rows, shown)) return kRefused;
    if (arguments.sample) shown.rows.append(ToRow(QJsonValue::Null, SampleMessage(messages, app.clock.Today())));
    if (arguments.notes || !program.json) shown.notes = NotesOf(app);
  } catch (const DatabaseError& error) {
    return Refuse(error.Description());
  }
  Print(program, shown, arguments.notes);
  return kDone;
}

}  // namespace

void AddPreviewCommand(Runner& runner) {
  auto arguments = std::make_shared<PreviewArguments>();
  CLI::App& command = *runner.Root().add_subcommand(
      "preview", "Show the messages that a run would send next, and what there is to say about the templates");
  DeclareCampaign(command, arguments->id)->required();
  CLI::Option* rows = command.add_option("--rows", arguments->rows, "How many rows")
                          ->capture_default_str()
                          ->check(CLI::Range(1, 1'000'000));
  command.add_flag("--sample", arguments->sample, "Merge with the built-in sample customer instead")->excludes(rows);
  command.add_flag("--notes", arguments->notes, "With --json: an object with the rows and the notes");
  command.footer("Example: marketingctl --folder garage --user Pat preview 12 --rows 3");
  runner.AddCommand(command, [arguments](Program& program) { return Preview(program, *arguments); });
}

}  // namespace qbx::ctl
