// marketingctl letters: the letters of a campaign as a PDF file.

#include <limits>
#include <memory>

#include "dispatch/template_notes.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"
#include "wizard/campaign_data.h"

namespace qbx::ctl {

namespace {

constexpr char kWentOut[] = "sent";
constexpr char kStayed[] = "not-sent";

struct LettersArguments {
  std::string id;
  std::string pdf;
  std::string inDoubt;
  int fromLetter = 0;
  int toLetter = 0;
  bool again = false;
  bool noMark = false;
  bool allowUnknownFields = false;
};

/// Shows progress on the terminal; Ctrl+C cancels.
class TerminalLetters final : public LetterObserver {
 public:
  explicit TerminalLetters(HeadlessUi& ui) : ui_(ui) {}

  void Begins(int total) override { total_ = total; }
  void Progress(int done) override { ui_.ShowProgress(done, total_); }
  void Ends() override { ui_.EndProgress(); }
  bool Cancelled() override { return HeadlessUi::Interrupted(); }

 private:
  HeadlessUi& ui_;
  int total_ = 0;
};

int MakeLetters(Program& program, const LettersArguments& arguments) {
  Application& app = program.app;
  if (arguments.toLetter > 0 && arguments.toLetter < arguments.fromLetter)
    throw CLI::ValidationError("--to-letter: the last letter stands before the first");
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;
  if (arguments.again) program.ui.SetAnswer(Question::kLettersAgain, MessageAnswer::kYes);
  if (arguments.allowUnknownFields) program.ui.SetAnswer(Question::kUnknownFields, MessageAnswer::kYes);
  if (!arguments.inDoubt.empty())
    program.ui.SetAnswer(Question::kLettersInDoubt,
                         arguments.inDoubt == kWentOut ? MessageAnswer::kYes : MessageAnswer::kNo);
  for (const QString& note : LetterNotes(app.campaign.record.Letter, DataOfRecord(app.campaign.record)))
    PrintNote(note);
  NoOutlet outlet;
  TerminalLetters observer(program.ui);
  ReportPrinter reports = program.desk.MakeReportPrinter(outlet);
  const int listener = program.desk.resultsLog.Listen([](const QString& line) { PrintNote(line); });
  const LetterSummary summary = program.desk.MakeLetterRun(reports, observer)
                                    .GenerateLetters(*id, app.campaign.record.Letter,
                                                     {.pdfFile = QString::fromStdString(arguments.pdf),
                                                      .firstLetter = arguments.fromLetter,
                                                      .lastLetter = arguments.toLetter,
                                                      .markProcessed = !arguments.noMark});
  program.desk.resultsLog.StopListening(listener);
  if (!summary.done && HeadlessUi::Interrupted())
    return Refuse(Reason::kInterrupted, QStringLiteral("The letters were interrupted."));
  if (!summary.done && (program.ui.Warned() || program.ui.Declined())) return kRefused;
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("letters"), summary.letters},
                          {QStringLiteral("left_out"), summary.leftOut},
                          {QStringLiteral("processed"), summary.processed}});
  } else {
    PrintLine(QStringLiteral("%1, %2 left out, %3 processed")
                  .arg(Counted(summary.letters, "letter"))
                  .arg(summary.leftOut)
                  .arg(Counted(summary.processed, "row")));
  }
  return kDone;
}

}  // namespace

void AddLettersCommand(Runner& runner) {
  auto arguments = std::make_shared<LettersArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("letters", "Write the letters of a campaign to a PDF file and mark their rows");
  command.add_option("ID", arguments->id, "Campaign, by number or name")->required();
  DeclarePdf(command, arguments->pdf);
  command.add_option("--from-letter", arguments->fromLetter, "First letter to write, 1 the first")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()))
      ->type_name("N");
  command.add_option("--to-letter", arguments->toLetter, "Last letter to write; the others stay due")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()))
      ->type_name("N");
  command
      .add_option("--in-doubt", arguments->inDoubt,
                  "Letters that a killed call may have put into its file went out, or did not")
      ->check(CLI::IsMember({kWentOut, kStayed}));
  command.add_flag("--again", arguments->again, "Make letters again that went out before");
  command.add_flag("--no-mark", arguments->noMark, "Write the file only: no row is marked, and the letters stay due");
  command.add_flag("--allow-unknown-fields", arguments->allowUnknownFields,
                   "Make letters that hold what looks like a merge field and is none");
  command.footer("Example: marketingctl --folder garage --user Pat letters 12 --pdf letters.pdf");
  runner.AddCommand(command, [arguments](Program& program) { return MakeLetters(program, *arguments); });
}

}  // namespace qbx::ctl
