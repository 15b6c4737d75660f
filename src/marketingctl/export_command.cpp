// marketingctl export: the rows of a campaign as a file for a spreadsheet program.

#include <QSet>
#include <algorithm>
#include <array>
#include <memory>

#include "exporting/export_file.h"
#include "grids/grid_columns.h"
#include "marketingctl/campaign_names.h"
#include "marketingctl/commands.h"
#include "marketingctl/output.h"

namespace qbx::ctl {

namespace {

struct ExportArguments {
  std::string id;
  std::array<std::string, 3> file;  // by ExportFormat
  bool noHeadings = false;
  bool formulaSafe = false;
};

/// The columns that the results grid shows, in the host's order.
std::vector<ExportColumn> ShownColumns(const Application& app, const Recordset& rows) {
  const ResultsPresentation presentation = PresentResults(app.startup.edition, app.options);
  QSet<QString> hidden(presentation.hiddenColumns.begin(), presentation.hiddenColumns.end());
  if (!presentation.showOptIn) hidden.unite({presentation.optInColumns.begin(), presentation.optInColumns.end()});
  QHash<QString, QString> captions;
  for (const ResultsPresentation::Caption& caption : presentation.captions)
    captions.insert(caption.column, caption.caption);
  std::vector<ExportColumn> shown;
  int field = 0;
  for (const GridColumn& column : gridFormatColumns(rows.Columns())) {
    if (!hidden.contains(column.field))
      shown.push_back(MakeExportColumn(rows.Columns(), field, captions.value(column.field, column.heading)));
    ++field;
  }
  return shown;
}

int Export(Program& program, const ExportArguments& arguments) {
  Application& app = program.app;
  const std::optional<int> id = FindCampaign(program, arguments.id);
  if (!id || !app.campaignStorage.LoadCampaign(*id) || !program.desk.results.DisplayResults(*id)) return kRefused;
  const Recordset& rows = program.desk.results.Rows();
  if (rows.RecordCount() == 0) return Refuse(QStringLiteral("There are no results to export."));
  const ExportSheet sheet{.title = app.campaign.record.Campaign_Name, .columns = ShownColumns(app, rows), .rows = rows};
  const auto file = std::ranges::find_if(arguments.file, [](const std::string& name) { return !name.empty(); });
  const auto format = static_cast<ExportFormat>(file - arguments.file.begin());
  const QString path = QString::fromStdString(*file);
  const ExportOutcome outcome = WriteExport(
      sheet, format, path, {.headings = !arguments.noHeadings, .formulaSafe = arguments.formulaSafe}, [&](qint64 done) {
        program.ui.ShowProgress(static_cast<int>(done), static_cast<int>(sheet.RowCount()));
        return !HeadlessUi::Interrupted();
      });
  program.ui.EndProgress();
  if (outcome.end == ExportEnd::kCancelled)
    return Refuse(Reason::kInterrupted, QStringLiteral("The export was interrupted."));
  if (outcome.end == ExportEnd::kFailed) return Refuse(QLatin1String("Error exporting the file: ") + outcome.error);
  if (const QString note = CutTextsNote(outcome); !note.isEmpty()) PrintNote(note);
  const auto columns = static_cast<int>(sheet.columns.size());
  app.events.LogEvent(kEventPrint, 0, QStringLiteral("EXPORT"), ExportEventDetails(path, sheet));
  if (program.json) {
    PrintJson(QJsonObject{{QStringLiteral("file"), path},
                          {QStringLiteral("rows"), sheet.RowCount()},
                          {QStringLiteral("columns"), columns}});
  } else {
    PrintLine(QStringLiteral("%1: %2 rows, %3 columns").arg(path).arg(sheet.RowCount()).arg(columns));
  }
  return kDone;
}

}  // namespace

void AddExportCommand(Runner& runner) {
  auto arguments = std::make_shared<ExportArguments>();
  CLI::App& command =
      *runner.Root().add_subcommand("export", "Write the rows of a campaign to a file for a spreadsheet program");
  command.add_option("ID", arguments->id, "Campaign, by number or name")->required();
  CLI::Option_group& file = *command.add_option_group("File", "One of these; a file that exists is replaced");
  const auto add = [&](const char* flag, ExportFormat format, const char* about) {
    return DeclareFile(file, flag, arguments->file[static_cast<std::size_t>(format)], about);
  };
  CLI::Option* csv = add("--csv", ExportFormat::kCsv, "Text with commas, every cell in quotes");
  add("--xlsx", ExportFormat::kXlsx, "Excel workbook, 1,048,576 rows at most");
  add("--xls", ExportFormat::kXls, "Excel 97-2003 workbook, 65,536 rows at most");
  file.require_option(1);
  command.add_flag("--no-headings", arguments->noHeadings, "Without the row of headings");
  command
      .add_flag("--formula-safe", arguments->formulaSafe,
                "Put an apostrophe before a text that a spreadsheet program would take for a formula")
      ->needs(csv);
  command.footer("Example: marketingctl --folder garage --user Pat export 12 --xlsx results.xlsx");
  runner.AddCommand(command, [arguments](Program& program) { return Export(program, *arguments); });
}

}  // namespace qbx::ctl
