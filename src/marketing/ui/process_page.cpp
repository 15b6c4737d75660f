#include "marketing/ui/process_page.h"

#include "ui_process_page.h"

namespace qbx {

ProcessPage::ProcessPage(PageParts parts) : WizardPage(std::move(parts)), ui_(std::make_unique<Ui::ProcessPage>()) {
  ui_->setupUi(this);
  for (const QString& line : Desk().resultsLog.Lines())
    ui_->txtProcessResults->appendPlainText(line);
  Desk().resultsLog.SetSink([this](const QString& line) { ui_->txtProcessResults->appendPlainText(line); });
}

ProcessPage::~ProcessPage() {
  Desk().resultsLog.SetSink({});
}

QWidget* ProcessPage::FirstControl() {
  return ui_->txtProcessResults;
}

void ProcessPage::CampaignSetUp() {
  ui_->txtProcessResults->clear();
}

void ProcessPage::CopyState() {
  // A connection that was lost has just been told of by the counters; the estimate stays what it was.
  if (App().connection.IsOpen())
    credits_ = Desk().estimate.EstimateSMSCredits(App().campaign.record.ID, State().txtSMS).value_or(credits_);
  const CounterLabels labels = MakeCounterLabels(Desk().counters.Values(), credits_);
  ui_->lblLetters->setText(labels.lblLetters);
  ui_->lblSMS0->setText(labels.lblSMS0);
  ui_->lblSMS1->setText(labels.lblSMS1);
  ui_->lblSMS2->setText(labels.lblSMS2);
  ui_->lblEmail0->setText(labels.lblEmail0);
  ui_->lblEmail1->setText(labels.lblEmail1);
}

}  // namespace qbx
