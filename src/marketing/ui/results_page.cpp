#include "marketing/ui/results_page.h"

#include <QComboBox>
#include <QHideEvent>
#include <QObject>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSet>
#include <QSignalBlocker>
#include <QString>
#include <QStringList>
#include <QWidget>

#include "dispatch/tick_reasons.h"
#include "marketing/ui/campaign_rows.h"
#include "marketing/ui/page_help.h"
#include "printing/report_files.h"
#include "results/row_kinds.h"
#include "ui_results_page.h"
#include "wizard/filters_pending.h"
#include "wizard/step_checks.h"

namespace qbx {
namespace {

/// Fills a list of rules. Its tip is that of the chosen rule.
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

/// How many rows get what. Failed rows and rows in doubt are named only when there are some.
QString TotalsText(const RowKinds& kinds) {
  QStringList totals;
  const auto add = [&](const char* name, RowKind kind, bool always) {
    if (always || kinds.Count(kind) > 0)
      totals += QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(kinds.Count(kind));
  };
  add("Texts", RowKind::kText, true);
  add("E-mails", RowKind::kEmail, true);
  add("Letters", RowKind::kLetter, true);
  add("Nothing", RowKind::kNothing, true);
  add("Failed", RowKind::kFailed, false);
  add("In doubt", RowKind::kInDoubt, false);
  return totals.join(QStringLiteral("   "));
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
  ui_->cmbShow->addItems(RowKindNames());
  ui_->fraChange->hide();
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
  const auto find = [&] { return grid_.FindLine(QString::fromLatin1(ResultsView::kRowKey), Value(recordId)); };
  if (find() || ui_->cmbShow->currentIndex() == 0) return;
  ui_->cmbShow->setCurrentIndex(0);  // it is not of the shown kind
  (void)find();
}

QWidget* ResultsPage::FirstControl() {
  return ui_->dbgData;
}

void ResultsPage::SetUpGrid() {
  grid_.Grid(*ui_->dbgData);
  grid_.ParentForm(*this);
  grid_.StoredProc(QStringLiteral("Campaign_Results"));
  grid_.SetLineID(QString::fromLatin1(ResultsView::kRowKey));
  grid_.AllowDelete(true);
  grid_.KeepLayout(App().registry, QStringLiteral("frmMain"));
  connect(&grid_, &cDataGrid::CellClicked, this, [this](const QString& field, qint64 recordId) {
    Desk().edits.ClickCell(field, recordId);
    if (!ui_->fraChange->isHidden()) TellLastChange();
  });
  connect(&grid_, &cDataGrid::Deleted, this, [this](qint64 recordId) {
    Desk().results.RefreshRows({recordId});
    TellLastChange();
  });
  grid_.SetFlagReasons([this](qint64 row, const QString& field) {
    const QString reason = WhyNoFlag(Desk().results.Rows(), row, field);
    return reason.isEmpty() ? QString() : QStringLiteral("Nothing would be sent: %1").arg(reason);
  });
  changes_ = std::make_unique<ResultsChanges>(ResultsChanges::Parts{
      grid_, Desk().edits, Desk().results, App().ui, [this](const std::function<void()>& command) { Run(command); },
      [this](const QString& text) { TellChange(text); }});
  finder_ = std::make_unique<ResultsFinder>(grid_, *ui_->txtFind, *ui_->lblFound, *this);
}

void ResultsPage::ConnectResults() {
  Desk().results.OnDisplayed([this] { ShowRows(); });
  Desk().results.OnRefresh([this](const std::function<void()>& requery) {
    grid_.Requery(requery);
    ShowCounts();
  });
}

void ResultsPage::ConnectControls() {
  connect(ui_->cmdNext2, &QPushButton::clicked, this, [this] { Next(2); });
  connect(ui_->cmdBack2, &QPushButton::clicked, this, [this] { Back(2); });
  connect(ui_->cmdUndo, &QPushButton::clicked, this, [this] {
    Run([this] { changes_->Undo(); });
    ui_->dbgData->setFocus();  // the button may be gone
  });
  connect(ui_->cmbShow, &QComboBox::currentIndexChanged, this, [this] { Guarded([this] { ShowKind(); }); });
  connect(ui_->cmdSetSendMethods, &QPushButton::clicked, this, [this] { SetMethods(); });
  connect(ui_->cmdPrintResults, &QPushButton::clicked, this, [this] {
    if (HasRows(QStringLiteral("print"))) PrintRows(*grid_.DataSource(), grid_.HiddenFields(), App().campaign);
  });
  connect(ui_->cmdExportResults, &QPushButton::clicked, this, [this] {
    if (HasRows(QStringLiteral("export"))) ExportResults();
  });
}

/// Prints rows in their order, without the columns that a grid hides.
void ResultsPage::PrintRows(const Recordset& rows, const QSet<QString>& hidden, const CurrentCampaign& of) {
  Guarded([&] {
    Reports().FeedNextRun(rows.Clone(), hidden, of);
    static_cast<void>(
        Reports().PrintReport(ReportPath(App().startup.ProgramFolder, QStringLiteral("CampaignResults.rpt")),
                              ReportMode::kPreview, true, {}));
  });
}

/// Opens the spreadsheet with what the grid shows; it replaces one that is open.
void ResultsPage::ExportResults() {
  if (sheet_) sheet_->close();
  const SpreadsheetParts parts{
      .registry = App().registry,
      .layout = layout_,
      .events = App().events,
      .diagnostics = App().diagnostics,
      .shell = App().shell,
      .print = [this, of = App().campaign](const Recordset& rows, const QSet<QString>& hidden) {
        PrintRows(rows, hidden, of);
      }};
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

/// Stores the arrangement of the columns at once, because the program may be killed on another page.
void ResultsPage::hideEvent(QHideEvent* event) {
  grid_.SaveLayout();
  WizardPage::hideEvent(event);
}

void ResultsPage::ShowRows() {
  if (!sameQuery_) {
    const QSignalBlocker quiet(ui_->cmbShow);
    ui_->cmbShow->setCurrentIndex(static_cast<int>(RowKind::kAll));
    ui_->fraChange->hide();
  }
  ShowCampaignRows(grid_, Desk().results.Rows(), App());
  if (Desk().results.Rows().IsOpen())
    ShowKind();
  else
    ShowCounts();
}

/// Shows the rows of the chosen kind.
void ResultsPage::ShowKind() {
  if (!Desk().results.Rows().IsOpen()) return ShowCounts();
  const auto kind = static_cast<RowKind>(ui_->cmbShow->currentIndex());
  grid_.Tag(kind == RowKind::kAll ? QString() : QStringLiteral("MSG:There is no such row."));
  grid_.ShowOnly(Desk().results.Kinds().Filter(kind, Desk().results.Rows()));
  ShowCounts();
}

void ResultsPage::ShowCounts() {
  ui_->lblCount->setText(Desk().results.CountText());
  const bool open = Desk().results.Rows().IsOpen();
  ui_->lblTotals->setText(open ? TotalsText(Desk().results.Kinds()) : QString());
  const bool some = open && ui_->cmbShow->currentIndex() > 0;
  const QString shown = QStringLiteral("%1 of %2 rows shown; send methods, letters and sending take all %2.")
                            .arg(grid_.RowCount())
                            .arg(Desk().results.Rows().StoredCount());
  ui_->lblShown->setText(some ? shown : QString());
  ui_->lblShown->setToolTip(ui_->lblShown->text());
}

void ResultsPage::TellChange(const QString& text) {
  ui_->lblChange->setText(text);
  ui_->lblChange->setToolTip(text);
  ui_->cmdUndo->setVisible(!Desk().edits.LastChange().isEmpty());
  ui_->fraChange->setVisible(!text.isEmpty());
}

/// Shows what Undo would undo now; empty after a change that cannot be undone.
void ResultsPage::TellLastChange() {
  TellChange(Desk().edits.LastChange());
  changes_->Update();
}

void ResultsPage::CopyState() {
  ui_->lblFiltersPending->setText(FiltersPendingText(State()));
  if (Desk().results.Rows().IsOpen() && grid_.DataSource() == nullptr) ShowRows();
  ShowCounts();
}

void ResultsPage::SetMethods() {
  Run([this] {
    const SendMethods methods{.sms = ui_->cmbSendBy0->currentIndex(),
                              .email = ui_->cmbSendBy1->currentIndex(),
                              .letter = ui_->cmbSendBy2->currentIndex()};
    const QScopedValueRollback<bool> sameQuery(sameQuery_, true);
    if (!Desk().edits.ApplySendMethods(methods)) return;
    ForgetMethods();
    TellLastChange();
  });
}

bool ResultsPage::HasRows(const QString& action) {
  if (Desk().results.Rows().RecordCount() > 0) return true;
  App().ui.ShowMessage(NoResultsMessage(action));
  return false;
}

}  // namespace qbx
