// marketingctl report: a report as a PDF file.

#include <QFileInfo>
#include <memory>

#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/date_argument.h"
#include "marketingctl/output.h"
#include "printing/report_files.h"

namespace qbx::ctl {

namespace {

struct ReportArguments {
  std::string file;
  std::string pdf;
  std::optional<std::string> campaign;
  std::optional<std::string> from;
  std::optional<std::string> to;
};

Value DateOf(const char* flag, const std::optional<std::string>& text, const QDate& today) {
  return text ? Value(DateArgument(flag, *text, today).startOfDay(Qt::UTC)) : Value(QString());
}

/// A path as it is given, else a report of the program folder.
QString PathOf(const Application& app, const std::string& file) {
  const QString path = QString::fromStdString(file);
  return QFileInfo::exists(path) ? path : ReportPath(app.startup.ProgramFolder, path);
}

int MakeReport(Program& program, const ReportArguments& arguments) {
  Application& app = program.app;
  if (arguments.campaign) {
    const std::optional<int> id = FindCampaign(program, *arguments.campaign);
    if (!id || !app.campaignStorage.LoadCampaign(*id)) return kRefused;
  }
  const QDate today = app.clock.Today();
  if (arguments.from && arguments.to &&
      DateArgument("--to", *arguments.to, today) < DateArgument("--from", *arguments.from, today))
    throw CLI::ValidationError("--to: the last day of the period is before the first");
  const ReportRunValues values = {Value(0), DateOf("--from", arguments.from, today),
                                  DateOf("--to", arguments.to, today)};
  int pages = 0;
  NoOutlet outlet;
  ReportPrinter reports = program.desk.MakeReportPrinter(outlet);
  reports.OnPage([&](const ReportPage&) {
    ++pages;
    return true;
  });
  reports.state.pdfFileName = QString::fromStdString(arguments.pdf);
  if (reports.PrintReport(PathOf(app, arguments.file), ReportMode::kPdf, false, values) == ReportOutcome::kFailed)
    return kRefused;
  if (program.json) {
    PrintJson(
        QJsonObject{{QStringLiteral("file"), QString::fromStdString(arguments.pdf)}, {QStringLiteral("pages"), pages}});
  } else {
    PrintLine(QStringLiteral("%1: %2").arg(QString::fromStdString(arguments.pdf), Counted(pages, "page")));
  }
  return kDone;
}

}  // namespace

void AddReportCommand(Runner& runner) {
  auto arguments = std::make_shared<ReportArguments>();
  CLI::App& command = *runner.Root().add_subcommand("report", "Write a report to a PDF file");
  command.add_option("FILE", arguments->file, "Report definition: a path, or a name in the program folder's Reports")
      ->required();
  command.add_option("--pdf", arguments->pdf, "PDF file; one that exists is replaced")->required()->type_name("FILE");
  command.add_option("--campaign", arguments->campaign, "Campaign that the report is about, by number or name")
      ->type_name("ID");
  command.add_option("--from", arguments->from, "First day of the period, yyyy-mm-dd or relative")->type_name("DATE");
  command.add_option("--to", arguments->to, "Last day of the period")->type_name("DATE");
  command.footer(
      "Example: marketingctl --folder garage --user Pat report CampaignResults.rpt --pdf results.pdf --campaign 12");
  runner.AddCommand(command, [arguments](Program& program) { return MakeReport(program, *arguments); });
}

}  // namespace qbx::ctl
