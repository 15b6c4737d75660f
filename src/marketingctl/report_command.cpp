// marketingctl report: a report as a PDF file.

#include <QFileInfo>
#include <memory>

#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/date_argument.h"
#include "marketingctl/output.h"
#include "marketingctl/refusals.h"
#include "printing/report_files.h"
#include "reports/report_error.h"

namespace qbx::ctl {

namespace {

constexpr char kCampaign[] = "--campaign";

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

/// The path as given when it exists, otherwise a report in the program folder.
QString PathOf(const Application& app, const std::string& file) {
  const QString path = QString::fromStdString(file);
  return QFileInfo::exists(path) ? path : ReportPath(app.startup.ProgramFolder, path);
}

/// The flags that the definition needs and the command line lacks. A definition that cannot be opened is reported when
/// it is run.
QStringList MissingFlags(const QString& path, const ReportArguments& arguments) {
  QStringList missing;
  try {
    const QStringList fields = Report::Open(path).ParameterFields();
    if (fields.contains(QLatin1String("{?@SessionID}")))
      throw CLI::ValidationError(QFileInfo(path).fileName().toStdString() +
                                 ": it prints letters, which the command \"letters\" makes");
    const auto look = [&](const char* field, const char* flag, bool given) {
      if (!given && fields.contains(QLatin1String(field))) missing += QLatin1String(flag);
    };
    look("{?@CampaignID}", kCampaign, arguments.campaign.has_value());
    look("{?@DateFrom}", "--from", arguments.from.has_value());
    look("{?@DateTo}", "--to", arguments.to.has_value());
  } catch (const ReportError&) {
  }
  return missing;
}

int MakeReport(Program& program, const ReportArguments& arguments) {
  Application& app = program.app;
  const QString path = PathOf(app, arguments.file);
  const QStringList missing = MissingFlags(path, arguments);
  const QString flags = missing.join(QStringLiteral(" and "));
  if (missing.contains(QLatin1String(kCampaign)))
    throw CLI::ValidationError(
        QStringLiteral("%1 is about one campaign and needs %2").arg(QFileInfo(path).fileName(), flags).toStdString());
  if (!missing.isEmpty()) PrintNote(QStringLiteral("The report reads %1, which was not given.").arg(flags));
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
  if (reports.PrintReport(path, ReportMode::kPdf, false, values) == ReportOutcome::kFailed)
    return HeadlessUi::Interrupted() ? Refuse(Reason::kInterrupted, QStringLiteral("The report was interrupted."))
                                     : static_cast<int>(kRefused);
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
  DeclarePdf(command, arguments->pdf);
  command.add_option(kCampaign, arguments->campaign, "Campaign that the report is about, by number or name")
      ->type_name("ID");
  command.add_option("--from", arguments->from, "First day of the period, yyyy-mm-dd or relative")->type_name("DATE");
  command.add_option("--to", arguments->to, "Last day of the period")->type_name("DATE");
  command.footer(
      "Example: marketingctl --folder garage --user Pat report CampaignResults.rpt --pdf results.pdf --campaign 12");
  runner.AddCommand(command, [arguments](Program& program) { return MakeReport(program, *arguments); });
}

}  // namespace qbx::ctl
