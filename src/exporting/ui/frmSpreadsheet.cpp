#include "exporting/ui/frmSpreadsheet.h"

#include <QCheckBox>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QItemSelectionRange>
#include <QKeySequence>
#include <QModelIndex>
#include <QPushButton>
#include <QShortcut>
#include <QString>
#include <QTableView>
#include <QVariant>
#include <QWidget>
#include <QtMath>
#include <atomic>
#include <future>

#include "exporting/ui/spreadsheet_model.h"
#include "ui_frmSpreadsheet.h"

namespace qbx {

namespace {

constexpr char kFormName[] = "frmSpreadsheet";
constexpr char kHeaderRow[] = "ExcelHeaderRow";
constexpr char kExcel2003[] = "Excel2003";
constexpr char kFormulaSafe[] = "CsvFormulaSafe";
constexpr char kFolder[] = "ExportFolder";

QString YesNo(bool yes) {
  return yes ? QStringLiteral("Yes") : QStringLiteral("No");
}

/// A text as a part of a file's name, without characters that some system does not allow.
QString AsFileName(QString text) {
  std::ranges::replace_if(
      text, [](QChar c) { return c < u' ' || QStringLiteral("\\/:*?\"<>|").contains(c); }, QChar(u'-'));
  return text.trimmed();
}

/// The unit of column widths in workbooks.
double DigitWidth(const QTableView& view) {
  return view.fontMetrics().horizontalAdvance(QStringLiteral("0000000000")) / 10.0;
}

/// The extension that the user typed decides, because programs refuse a file whose format is not that of its extension.
ExportFormat FormatOf(const QString& path, ExportFormat chosen) {
  if (path.endsWith(QLatin1String(".xls"), Qt::CaseInsensitive)) return ExportFormat::kXls;
  return path.endsWith(QLatin1String(".xlsx"), Qt::CaseInsensitive) ? ExportFormat::kXlsx : chosen;
}

QString IncompleteNote(const ExportSheet& sheet) {
  return QStringLiteral(" (incomplete: %1 of %2)").arg(sheet.RowCount()).arg(sheet.rows.RecordCount());
}

}  // namespace

frmSpreadsheet::frmSpreadsheet(SpreadsheetParts parts, QWidget* owner)
    : QDialog(owner, Qt::Window), ui_(std::make_unique<Ui::frmSpreadsheet>()), parts_(std::move(parts)) {
  ui_->setupUi(this);
  setAttribute(Qt::WA_DeleteOnClose);
  Connect();
}

frmSpreadsheet::~frmSpreadsheet() {
  ui_->fpSpread->setModel(nullptr);
}

void frmSpreadsheet::Connect() {
  connect(ui_->cmdPrint, &QPushButton::clicked, this, &frmSpreadsheet::Print);
  connect(ui_->cmdExport1, &QPushButton::clicked, this, &frmSpreadsheet::ExportCsv);
  connect(ui_->cmdExport0, &QPushButton::clicked, this, &frmSpreadsheet::ExportExcel);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &frmSpreadsheet::reject);
  connect(ui_->chkHeader, &QCheckBox::toggled, this, [this](bool on) {
    if (model_ != nullptr) model_->ShowHeadings(on);
  });
  auto* copy = new QShortcut(QKeySequence::Copy, ui_->fpSpread);
  copy->setContext(Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &frmSpreadsheet::CopySelection);
}

void frmSpreadsheet::ShowSpreadsheet(const SpreadsheetSource& source) {
  title_ = source.title;
  fileName_ = source.fileName.isEmpty() ? source.title : source.fileName;
  rows_ = source.grid.DataSource()->Snapshot();
  sheet_ = std::make_unique<ExportSheet>(ExportSheet{.title = title_, .columns = {}, .rows = rows_, .filled = 0});
  CopyColumns(source.grid);
  SetUpSheet();
  parts_.layout.RestoreWindow(*this, QString::fromLatin1(kFormName));
  LoadSettings();
  ShowCaption();
  show();
  activateWindow();
  Populate();
}

void frmSpreadsheet::CopyColumns(const cDataGrid& grid) {
  const double digit = DigitWidth(*grid.Grid());
  for (const GridShownColumn& shown : grid.ShownColumns()) {
    ExportColumn column = MakeExportColumn(rows_.Columns(), shown.column, shown.heading);
    column.width = std::clamp(qCeil(shown.width / digit), 1, kMostColumnWidth);
    sheet_->columns.push_back(column);
  }
  hidden_ = grid.HiddenFields();
}

void frmSpreadsheet::SetUpSheet() {
  model_ = std::make_unique<SpreadsheetModel>(*sheet_);
  QTableView& view = *ui_->fpSpread;
  view.setModel(model_.get());
  const double digit = DigitWidth(view);
  for (std::size_t i = 0; i < sheet_->columns.size(); ++i)
    view.setColumnWidth(static_cast<int>(i), qCeil(sheet_->columns[i].width * digit));
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view.verticalHeader()->setDefaultSectionSize(view.fontMetrics().height() + 6);
  view.setAccessibleName(QLatin1String("QBX Data - ") + title_);
}

void frmSpreadsheet::Populate() {
  constexpr qint64 kRowsAStep = 1000;
  const qint64 rows = rows_.RecordCount();
  StatusBox& status = parts_.diagnostics.status;
  status.ShowStatus(QStringLiteral("Populating the spreadsheet"), true);
  for (qint64 filled = 0; filled < rows && !status.Cancelled();) {
    filled = std::min(filled + kRowsAStep, rows);
    sheet_->filled = filled;
    model_->Fill(filled);
    parts_.diagnostics.ui.PumpEvents();
  }
  status.Close();
  ShowCaption();
  if (!IsFilled())
    Tell(QStringLiteral("Cancelled by the user. The spreadsheet may not be fully populated."),
         MessageIcon::kExclamation);
}

void frmSpreadsheet::ShowCaption() {
  const QString caption = QLatin1String("Spreadsheet view of ") + title_;
  setWindowTitle(IsFilled() ? caption : caption + IncompleteNote(*sheet_));
  // A report prints all rows.
  ui_->cmdPrint->setEnabled(IsFilled());
  ui_->lblRows->setText(
      QStringLiteral("%1 rows, %2 columns").arg(sheet_->RowCount()).arg(static_cast<qint64>(sheet_->columns.size())));
}

void frmSpreadsheet::LoadSettings() {
  const auto isYes = [this](const char* name) {
    return parts_.registry.sysLoadValueFromRegistry({}, QString::fromLatin1(name), {.perUser = true}) ==
           QLatin1String("Yes");
  };
  ui_->chkHeader->setChecked(isYes(kHeaderRow));
  ui_->chkExcel2003->setChecked(isYes(kExcel2003));
  ui_->chkFormulaSafe->setChecked(isYes(kFormulaSafe));
}

void frmSpreadsheet::SaveSettings() {
  const auto save = [this](const char* name, const QCheckBox& box) {
    parts_.registry.sysSaveValueToRegistry({}, QString::fromLatin1(name), YesNo(box.isChecked()), true);
  };
  save(kHeaderRow, *ui_->chkHeader);
  save(kExcel2003, *ui_->chkExcel2003);
  save(kFormulaSafe, *ui_->chkFormulaSafe);
}

void frmSpreadsheet::done(int result) {
  SaveSettings();
  parts_.layout.SaveWindow(*this, QString::fromLatin1(kFormName));
  QDialog::done(result);
}

void frmSpreadsheet::Print() {
  parts_.print(rows_, hidden_);
}

QString frmSpreadsheet::AskFile(const QString& title, const QString& filter, const QString& ending) {
  const QString folder = QString::fromLatin1(kFolder);
  QFileDialog dialog(this, title);
  dialog.setObjectName(QStringLiteral("dlgDialog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(filter);
  dialog.setDefaultSuffix(ending);
  if (const QString last = parts_.registry.sysLoadValueFromRegistry({}, folder, {.perUser = true}); !last.isEmpty())
    dialog.setDirectory(last);
  QString name = fileName_ + parts_.diagnostics.clock.Today().toString(QStringLiteral(" yyyy-MM-dd"));
  if (!IsFilled()) name += IncompleteNote(*sheet_).remove(u':');
  dialog.selectFile(AsFileName(name) + u'.' + ending);
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return {};
  QString file = dialog.selectedFiles().constFirst();
  parts_.registry.sysSaveValueToRegistry({}, folder, QFileInfo(file).absolutePath(), true);
  return file;
}

/// Writes the file on another thread, so that the window stays alive. Finishing a workbook alone can take seconds.
ExportOutcome frmSpreadsheet::Write(ExportFormat format, const QString& path) {
  constexpr int kStep = 20;  // milliseconds
  const ExportOptions options{.headings = model_->HasHeadings(), .formulaSafe = ui_->chkFormulaSafe->isChecked()};
  std::atomic<qint64> written = 0;
  std::atomic<bool> cancelled = false;
  StatusBox& status = parts_.diagnostics.status;
  status.ShowStatus(QStringLiteral("Writing the file"), true);
  auto writing = std::async(std::launch::async, [&] {
    return WriteExport(*sheet_, format, path, options, [&](qint64 rows) {
      written = rows;
      return !cancelled;
    });
  });
  while (writing.wait_for(std::chrono::milliseconds(kStep)) != std::future_status::ready) {
    ui_->lblRows->setText(QStringLiteral("%1 of %2 rows written").arg(written.load()).arg(sheet_->RowCount()));
    parts_.diagnostics.ui.PumpEvents();
    if (status.Cancelled()) cancelled = true;
  }
  ExportOutcome outcome = writing.get();
  status.Close();
  ShowCaption();
  if (outcome.end != ExportEnd::kDone) return outcome;
  parts_.events.LogEvent(kEventPrint, 0, QStringLiteral("EXPORT"), ExportEventDetails(path, *sheet_));
  if (const QString note = CutTextsNote(outcome); !note.isEmpty()) Tell(note, MessageIcon::kInformation);
  return outcome;
}

void frmSpreadsheet::ExportCsv() {
  const QString path =
      AskFile(QStringLiteral("Save CSV Text File"), QStringLiteral("CSV Text File (*.csv)"), QStringLiteral("csv"));
  if (path.isEmpty()) return;
  const ExportOutcome outcome = Write(ExportFormat::kCsv, path);
  if (outcome.end == ExportEnd::kDone)
    Tell(QLatin1String("Data exported to file: ") + path, MessageIcon::kInformation);
  else if (outcome.end == ExportEnd::kFailed)
    Tell(QLatin1String("Error exporting the file: ") + outcome.error, MessageIcon::kExclamation);
}

void frmSpreadsheet::ExportExcel() {
  const bool older = ui_->chkExcel2003->isChecked();
  const ExportFormat format = older ? ExportFormat::kXls : ExportFormat::kXlsx;
  const auto fail = [this](const QString& why) {
    Tell(QLatin1String("Error exporting the spreadsheet.\r\rError description: ") + why, MessageIcon::kExclamation);
  };
  const QString refusal = TooManyRows(*sheet_, format, {.headings = model_->HasHeadings()});
  if (!refusal.isEmpty()) return fail(refusal);
  const QString path = older ? AskFile(QStringLiteral("Save Excel File"), QStringLiteral("Excel Workbook (*.xls)"),
                                       QStringLiteral("xls"))
                             : AskFile(QStringLiteral("Save Excel File"),
                                       QStringLiteral("Excel 2007 Worksheet (*.xlsx)"), QStringLiteral("xlsx"));
  if (path.isEmpty()) return;
  const ExportOutcome outcome = Write(FormatOf(path, format), path);
  if (outcome.end == ExportEnd::kFailed) return fail(outcome.error);
  if (outcome.end == ExportEnd::kCancelled) return;
  if (!parts_.shell.Open(path))
    Tell(QStringLiteral("Data exported to file: %1\r\rNo program that opens it was found on this computer.").arg(path),
         MessageIcon::kInformation);
  reject();
}

/// Copies the first block of selected cells, with tabs between cells and line ends between rows, as other spreadsheet
/// programs expect.
void frmSpreadsheet::CopySelection() {
  const QItemSelection selection = ui_->fpSpread->selectionModel()->selection();
  if (selection.isEmpty()) return;
  const QItemSelectionRange& block = selection.constFirst();
  QString text;
  for (int row = block.top(); row <= block.bottom(); ++row) {
    for (int column = block.left(); column <= block.right(); ++column) {
      if (column > block.left()) text += u'\t';
      const QModelIndex cell = model_->index(row, column);
      const QVariant shown = cell.data();
      text += (shown.isValid() ? shown : cell.data(Qt::AccessibleTextRole)).toString().replace(u'\t', u' ');
    }
    text += QLatin1String("\r\n");
  }
  QGuiApplication::clipboard()->setText(text);
}

void frmSpreadsheet::Tell(const QString& text, MessageIcon icon) {
  parts_.diagnostics.ui.ShowMessage({.text = text, .icon = icon});
}

frmSpreadsheet* GenerateSpreadsheet(const SpreadsheetSource& source, const SpreadsheetParts& parts, QWidget* owner) {
  parts.events.LogEvent(kEventMarketing, 0, QStringLiteral("GenerateSpreadsheet"), source.title);
  try {
    auto window = std::make_unique<frmSpreadsheet>(parts, owner);
    window->ShowSpreadsheet(source);
    return window.release();
  } catch (const std::exception& error) {
    parts.diagnostics.errors.ShowError(0, QStringLiteral("GenerateSpreadsheet"), QString::fromUtf8(error.what()));
    return nullptr;
  }
}

}  // namespace qbx
