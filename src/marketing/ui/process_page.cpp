#include "marketing/ui/process_page.h"

#include <QClipboard>
#include <QDialog>
#include <QFileDialog>
#include <QGuiApplication>
#include <QPushButton>
#include <QResizeEvent>
#include <QString>
#include <QStringList>
#include <QTextCursor>
#include <QTimer>
#include <QWidget>

#include "dispatch/results_log_file.h"
#include "dispatch/row_survey.h"
#include "dispatch/send_troubles.h"
#include "letters/letter_rows.h"
#include "marketing/ui/letters_view.h"
#include "marketing/ui/run_view.h"
#include "platform/safe_file.h"
#include "platform/ui/widget_ui.h"
#include "ui_process_page.h"

namespace qbx {

namespace {

constexpr int kTroublesLocation = 5420;

Message SettleQuestion(int rows, DoubtOutcome outcome) {
  const QString text =
      outcome == DoubtOutcome::kSent
          ? QStringLiteral("Count the messages in doubt of %1 row(s) as sent?\r\rThe next run will not send them.")
          : QStringLiteral("Did the messages in doubt of %1 row(s) not arrive?\r\rThe next run will send them.");
  return {.text = text.arg(rows),
          .icon = MessageIcon::kQuestion,
          .buttons = MessageButtons::kYesNo,
          .defaultAnswer = MessageAnswer::kNo};
}

}  // namespace

ProcessPage::ProcessPage(PageParts parts) : WizardPage(std::move(parts)), ui_(std::make_unique<Ui::ProcessPage>()) {
  ui_->setupUi(this);
  listener_ = Desk().resultsLog.Listen([this](const QString& line) {
    if (!showsRun_) ui_->txtProcessResults->appendPlainText(line);
  });
  WidgetUi::AllowWhileWorking(*ui_->cmdPause);
  WidgetUi::AllowWhileWorking(*ui_->txtProcessResults);
  ui_->pbEmail->setVisible(false);
  ui_->pbLetters->setVisible(false);
  ShowLastRun();
  for (const QString& line : Desk().resultsLog.Lines())
    ui_->txtProcessResults->appendPlainText(line);
  connect(ui_->cmdSendSMS, &QPushButton::clicked, this, &ProcessPage::SendMailshots);
  connect(ui_->cmdGenerateLetters, &QPushButton::clicked, this, &ProcessPage::GenerateLetters);
  connect(ui_->cmdPause, &QPushButton::clicked, this, [this] {
    ui_->cmdPause->setEnabled(false);
    if (running_) running_->Pause();
  });
  connect(ui_->cmdCopyChart, &QPushButton::clicked, this, [this] { ui_->chtGets->Copy(); });
  connect(ui_->cmdCopyLog, &QPushButton::clicked, this,
          [this] { QGuiApplication::clipboard()->setText(ui_->txtProcessResults->toPlainText()); });
  connect(ui_->cmdSaveLog, &QPushButton::clicked, this, &ProcessPage::SaveLog);
  connect(ui_->fraTroubles, &TroublesList::RowWanted, this, [this](qint64 recordId) { ShowRow(recordId); });
  connect(ui_->fraTroubles, &TroublesList::Settled, this, &ProcessPage::Settle);
}

ProcessPage::~ProcessPage() {
  Desk().resultsLog.StopListening(listener_);
}

QWidget* ProcessPage::FirstControl() {
  return ui_->cmdSendSMS;
}

void ProcessPage::CampaignSetUp() {
  ui_->txtProcessResults->clear();
  ui_->lblRunProgress->clear();
  ShowLastRun();
}

void ProcessPage::ShowLastRun() {
  const int campaignId = App().campaign.record.ID;
  if (campaignId <= 0) return;  // the numbers of campaigns without a name are used again
  const QStringList lines = ResultsLogFile(App().log.Path(), campaignId).ReadWithHeadings();
  if (lines.isEmpty()) return;
  ui_->txtProcessResults->appendPlainText(
      QStringLiteral("The last run of this campaign on this computer:\n%1\n").arg(lines.join(QLatin1Char('\n'))));
}

void ProcessPage::CopyState() {
  // The counters have just reported a lost connection; the estimate then does not change.
  if (App().connection.IsOpen())
    credits_ = Desk().estimate.EstimateSMSCredits(App().campaign.record.ID, State().txtSMS).value_or(credits_);
  ShowCounters();
  ShowTroubles();
  ShowLetterCounts();
  ShowShared();
  ShowWhoGetsWhat();
}

void ProcessPage::ShowCounters() {
  const CounterLabels labels = MakeCounterLabels(Desk().counters.Values(), credits_);
  ui_->lblLetters->setText(labels.lblLetters);
  ui_->lblSMS0->setText(labels.lblSMS0);
  ui_->lblSMS1->setText(labels.lblSMS1);
  ui_->lblSMS2->setText(labels.lblSMS2);
  ui_->lblEmail0->setText(labels.lblEmail0);
  ui_->lblEmail1->setText(labels.lblEmail1);
}

void ProcessPage::ShowTroubles() {
  if (!App().hostConnection.Ready() || !App().connection.IsOpen()) return;
  try {
    ui_->fraTroubles->Show(ReadSendTroubles(App().connection, App().campaign.record.ID));
  } catch (const DatabaseError& error) {
    App().statements.ShowFailure(kTroublesLocation, QStringLiteral("ShowTroubles"), error);
  }
}

void ProcessPage::ShowWhoGetsWhat() {
  if (!App().connection.IsOpen()) return;
  const WhoGetsWhat counts =
      CountWhoGetsWhat(App().statements, App().campaign.record.ID, State().leftOut, App().startup.edition.boat);
  hasRows_ = counts.rows > 0;
  ui_->chtGets->Show(counts);
  FitChart();
}

/// On a small screen the chart is hidden and the log gets its room.
void ProcessPage::FitChart() {
  constexpr int kRoomForBoth = 880;
  ui_->fraGets->setVisible(hasRows_ && width() >= kRoomForBoth);
}

void ProcessPage::resizeEvent(QResizeEvent* event) {
  WizardPage::resizeEvent(event);
  FitChart();
}

/// Shows how many messages go to a number or an address that another row has, too.
void ProcessPage::ShowShared() {
  if (!App().connection.IsOpen()) return;
  const std::optional<RowSurvey> survey =
      SurveyCampaign(App().statements, App().campaign.record.ID, {}, App().clock.Today());
  if (!survey) return;
  const QString text = SharedMobileText(*survey) + QLatin1Char(' ') + SharedAddressText(*survey);
  ui_->lblShared->setText(text.trimmed());
  ui_->lblShared->setVisible(!text.trimmed().isEmpty());
}

void ProcessPage::ShowLetterCounts() {
  if (!App().hostConnection.Ready() || !App().connection.IsOpen()) return;
  try {
    const LetterCounts counts = ReadLetterCounts(App().connection, App().campaign.record.ID);
    ui_->lblLettersOut->setText(LettersOutLine(counts, Desk().counters.Values().letters));
    ui_->lblLettersMissed->setText(LettersMissedLine(counts, Desk().counters.Values()));
  } catch (const DatabaseError& error) {
    App().statements.ShowFailure(kTroublesLocation, QStringLiteral("ShowLetterCounts"), error);
  }
}

/// \return false when another desk has deleted the campaign; the user was told
bool ProcessPage::CampaignIsThere() {
  const std::optional<Message> refusal = Desk().guard.LookForCampaign(App().campaign.record.ID);
  if (refusal) App().ui.ShowMessage(*refusal);
  return !refusal;
}

void ProcessPage::GenerateLetters() {
  const Statements::Telling once(App().statements, Statements::Tells::kLossOnce);
  if (!CampaignIsThere()) return;
  Run([this] {
    LettersView view(*ui_->pbLetters, App().status);
    static_cast<void>(
        Desk().MakeLetterRun(Reports(), view).GenerateLetters(App().campaign.record.ID, State().rtfLetter, {}));
    Desk().resultsLog.ProcessResultsLogged = true;
  });
  ShowState();
}

void ProcessPage::SendMailshots() {
  const Statements::Telling once(App().statements, Statements::Tells::kLossOnce);
  if (!CampaignIsThere()) return;
  Run([this] {
    ui_->cmdPause->setEnabled(true);
    ui_->cmdPause->setFocus();
    ui_->pbEmail->setVisible(true);
    const int campaignId = App().campaign.record.ID;
    showsRun_ = true;
    {
      RunLog file(Desk().resultsLog, ResultsLogFile(App().log.Path(), campaignId));
      RunView view({.bar = *ui_->pbEmail,
                    .line = *ui_->lblRunProgress,
                    .log = *ui_->txtProcessResults,
                    .showCounters = [this] { ShowCounters(); }},
                   Desk().resultsLog,
                   [this, &file](bool resumed) { file.Begin(App().startup.user, App().clock.Now(), resumed); });
      Mailshot run = Desk().MakeMailshot(view);
      running_ = &run;
      (void)run.Send(campaignId, {State().txtSMS, State().txtEmailSubject, State().txtEmailBody});
      running_ = nullptr;
    }
    showsRun_ = false;
    ui_->pbEmail->setVisible(false);
    ui_->cmdPause->setEnabled(false);
    ui_->cmdSendSMS->setFocus();
  });
  ShowState();
  ShowEndOfLog();
}

void ProcessPage::ShowEndOfLog() {
  // The list of failures takes room from the log when it appears, and is laid out later.
  QTimer::singleShot(0, ui_->txtProcessResults, [log = ui_->txtProcessResults] { log->moveCursor(QTextCursor::End); });
}

void ProcessPage::Settle(const std::set<qint64>& rows, DoubtOutcome outcome) {
  if (App().ui.ShowMessage(SettleQuestion(static_cast<int>(rows.size()), outcome)) != MessageAnswer::kYes) return;
  Run([this, &rows, outcome] {
    try {
      const DoubtSettlement settlement =
          SettleDoubt(App().connection, Desk().guard, App().startup.user, App().campaign.record.ID, rows, outcome);
      if (settlement.refusal) App().ui.ShowMessage(*settlement.refusal);
    } catch (const DatabaseError& error) {
      App().statements.ShowFailure(kTroublesLocation, QStringLiteral("SettleDoubt"), error);
    }
    Desk().estimate.Invalidate();
    Desk().resultsLog.ProcessResultsLogged = true;
    Desk().counters.UpdateCounters(App().campaign.record.ID);
  });
  ShowState();
}

void ProcessPage::SaveLog() {
  QFileDialog dialog(this, QStringLiteral("Save the log"), App().startup.ProgramFolder);
  dialog.setObjectName(QStringLiteral("dlgSaveLog"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setNameFilter(QStringLiteral("Text (*.txt)"));
  dialog.setDefaultSuffix(QStringLiteral("txt"));
  dialog.selectFile(QStringLiteral("Mailshot log ") + App().clock.Today().toString(QStringLiteral("yyyy-MM-dd")));
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return;
  QString text = ui_->txtProcessResults->toPlainText() + QLatin1Char('\n');
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  const QString problem = ReplaceFile(dialog.selectedFiles().constFirst(), text.toUtf8());
  if (!problem.isEmpty())
    App().ui.ShowMessage(
        {.text = QStringLiteral("The log could not be saved.\r\r") + problem, .icon = MessageIcon::kExclamation});
}

}  // namespace qbx
