#include "marketing/ui/results_page.h"

#include "marketing/ui/page_help.h"
#include "printing/report_files.h"
#include "ui_results_page.h"
#include "wizard/filters_pending.h"
#include "wizard/step_checks.h"

namespace qbx {
namespace {

const QStringList& FlagColumns() {
  static const QStringList columns = {QStringLiteral("Send_SMS"), QStringLiteral("Send_Email"),
                                      QStringLiteral("Send_Letter"), QStringLiteral("Processed")};
  return columns;
}

/// The tip of the list is that of the rule that is chosen.
void FillRules(QComboBox& combo, const QStringList& rules, const QStringList& tips) {
  combo.addItems(rules);
  for (int rule = 0; rule < combo.count(); ++rule)
    combo.setItemData(rule, tips[rule], Qt::ToolTipRole);
  const auto showTip = [&combo](int rule) {
    combo.setToolTip(rule < 0 ? QStringLiteral("No rule: the ticks stay as they are.")
                              : combo.itemData(rule, Qt::ToolTipRole).toString());
  };
  QObject::connect(&combo, &QComboBox::currentIndexChanged, &combo, showTip);
  combo.setCurrentIndex(-1);
  combo.setPlaceholderText(QStringLiteral("(no change)"));
  showTip(-1);
}

}  // namespace

ResultsPage::ResultsPage(PageParts parts)
    : WizardPage(std::move(parts)),
      ui_(std::make_unique<Ui::ResultsPage>()),
      grid_(App().statements, App().diagnostics, App().userOptions),
      layout_(App().registry) {
  ui_->setupUi(this);
  FillRules(*ui_->cmbSendBy0, SmsRules(), SmsRuleTips());
  FillRules(*ui_->cmbSendBy1, EmailRules(), EmailRuleTips());
  FillRules(*ui_->cmbSendBy2, LetterRules(), LetterRuleTips());
  SetUpGrid();
  ConnectResults();
  ConnectControls();
}

ResultsPage::~ResultsPage() {
  Desk().results.OnDisplayed({});
  Desk().results.OnRefresh({});
}

void ResultsPage::CampaignSetUp() {
  grid_.sSortString({});
  ForgetMethods();
}

void ResultsPage::ForgetMethods() {
  for (QComboBox* combo : {ui_->cmbSendBy0, ui_->cmbSendBy1, ui_->cmbSendBy2})
    combo->setCurrentIndex(-1);
}

void ResultsPage::GoToRow(qint64 recordId) {
  (void)grid_.FindLine(QString::fromLatin1(ResultsView::kRowKey), Value(recordId));
}

QWidget* ResultsPage::FirstControl() {
  return ui_->dbgData;
}

void ResultsPage::SetUpGrid() {
  grid_.Grid(*ui_->dbgData);
  grid_.ParentForm(*this);
  grid_.StoredProc(QStringLiteral("Campaign_Results"));
  grid_.SetLineID(QString::fromLatin1(ResultsView::kRowKey));
  grid_.FlagColumns(FlagColumns());
  grid_.AllowDelete(true);
  grid_.KeepLayout(App().registry, QStringLiteral("frmMain"));
  grid_.OnCellClick([this](const QString& field, qint64 recordId) { Desk().edits.ClickCell(field, recordId); });
  grid_.OnDeleted([this](qint64) {
    Desk().results.RowDeleted();
    ShowCount();
  });
}

void ResultsPage::ConnectResults() {
  Desk().results.OnDisplayed([this] { ShowRows(); });
  Desk().results.OnRefresh([this](const std::function<void()>& requery) {
    grid_.Requery(requery);
    ShowCount();
  });
}

void ResultsPage::ConnectControls() {
  connect(ui_->cmdNext2, &QPushButton::clicked, this, [this] { Next(2); });
  connect(ui_->cmdBack2, &QPushButton::clicked, this, [this] { Back(2); });
  connect(ui_->cmdSetSendMethods, &QPushButton::clicked, this, [this] { SetMethods(); });
  connect(ui_->cmdPrintResults, &QPushButton::clicked, this, [this] {
    if (HasRows(QStringLiteral("print"))) PrintRows(*grid_.DataSource(), grid_.HiddenFields());
  });
  connect(ui_->cmdExportResults, &QPushButton::clicked, this, [this] {
    if (HasRows(QStringLiteral("export"))) ExportResults();
  });
}

/// Prints rows in their order, without the columns that a grid hides.
void ResultsPage::PrintRows(const Recordset& rows, const QSet<QString>& hidden) {
  Guarded([&] {
    Reports().FeedNextRun(rows.Clone(), hidden);
    static_cast<void>(
        Reports().PrintReport(ReportPath(App().startup.ProgramFolder, QStringLiteral("CampaignResults.rpt")),
                              ReportMode::kPreview, true, {}));
  });
}

/// Shows what the grid shows as a spreadsheet, in the place of one that is open.
void ResultsPage::ExportResults() {
  if (sheet_) sheet_->close();
  const SpreadsheetParts parts{
      .registry = App().registry,
      .layout = layout_,
      .events = App().events,
      .diagnostics = App().diagnostics,
      .shell = App().shell,
      .print = [this](const Recordset& rows, const QSet<QString>& hidden) { PrintRows(rows, hidden); }};
  Guarded([&] {
    sheet_ = GenerateSpreadsheet(
        {.title = QStringLiteral("Report Results"), .fileName = App().campaign.record.Campaign_Name, .grid = grid_},
        parts, window());
  });
  if (sheet_) new HelpWindow(*sheet_, SpreadsheetHelp);
}

void ResultsPage::WindowCloses() {
  grid_.SaveLayout();
  if (sheet_) sheet_->close();
}

void ResultsPage::ShowRows() {
  ShowCount();
  if (!Desk().results.Rows().IsOpen()) return grid_.DisconnectRecordset();
  const ResultsPresentation presentation = PresentResults(App().startup.edition, App().options);
  // First, so that no hidden column becomes the current one.
  grid_.HideColumns(presentation.hiddenColumns);
  grid_.HideColumns(presentation.optInColumns, !presentation.showOptIn);
  grid_.ConnectRecordset(Desk().results.Rows());
  for (const ResultsPresentation::Caption& caption : presentation.captions)
    grid_.SetCaption(caption.column, caption.caption);
}

void ResultsPage::ShowCount() {
  ui_->lblCount->setText(Desk().results.CountText());
}

void ResultsPage::CopyState() {
  ui_->lblFiltersPending->setText(FiltersPendingText(State()));
  if (Desk().results.Rows().IsOpen() && grid_.DataSource() == nullptr) ShowRows();
  ShowCount();
}

void ResultsPage::SetMethods() {
  Run([this] {
    const SendMethods methods{.sms = ui_->cmbSendBy0->currentIndex(),
                              .email = ui_->cmbSendBy1->currentIndex(),
                              .letter = ui_->cmbSendBy2->currentIndex()};
    if (Desk().edits.ApplySendMethods(methods)) ForgetMethods();
  });
}

bool ResultsPage::HasRows(const QString& action) {
  if (Desk().results.Rows().RecordCount() > 0) return true;
  App().ui.ShowMessage(NoResultsMessage(action));
  return false;
}

}  // namespace qbx
