#include "marketing/ui/templates_page.h"

#include "dispatch/sms_text.h"
#include "platform/ui/long_text.h"
#include "ui_templates_page.h"
#include "wizard/template_examples.h"

namespace qbx {
namespace {

/// Shows a text unless the box holds it already, where the caret would be lost.
void ShowText(QPlainTextEdit& box, const QString& text) {
  if (ExactText(box, text) != text) SetLongText(box, text);
}

}  // namespace

TemplatesPage::TemplatesPage(PageParts parts)
    : WizardPage(std::move(parts)), ui_(std::make_unique<Ui::TemplatesPage>()) {
  ui_->setupUi(this);
  const TemplateExamples examples = MakeTemplateExamples(App().startup.edition.boat);
  ui_->lblExample1->setText(examples.lblExample1);
  ui_->txtExample1->setPlainText(examples.txtExample1);
  ui_->lblExample2->setText(examples.lblExample2);
  ui_->txtExample2->setPlainText(examples.txtExample2);
  connect(ui_->cmdLoadLetters, &QPushButton::clicked, this, &TemplatesPage::LoadLetters);
  connect(ui_->txtEmailSubject, &QLineEdit::textEdited, this,
          [this](const QString& text) { Edited(State().txtEmailSubject, text); });
  connect(ui_->txtEmailBody, &QPlainTextEdit::textChanged, this,
          [this] { Edited(State().txtEmailBody, ExactText(*ui_->txtEmailBody, State().txtEmailBody)); });
  connect(ui_->txtSMS, &QPlainTextEdit::textChanged, this, [this] {
    Edited(State().txtSMS, ExactText(*ui_->txtSMS, State().txtSMS));
    ShowLength();
  });
}

TemplatesPage::~TemplatesPage() = default;

QWidget* TemplatesPage::FirstControl() {
  return ui_->ssTabLetters;
}

void TemplatesPage::LoadLetters() {
  Run([this] { Desk().settings.LoadLetters(ui_->cmbCampaigns->currentIndex()); });
  ShowState();
}

void TemplatesPage::ShowCampaigns() {
  const QVariant chosen = ui_->cmbCampaigns->currentData();  // names need not be unique
  ui_->cmbCampaigns->clear();
  for (const ListRow& row : State().cmbCampaigns)
    ui_->cmbCampaigns->addItem(row.text, row.data.ToInt());
  ui_->cmbCampaigns->setCurrentIndex(chosen.isValid() ? ui_->cmbCampaigns->findData(chosen) : -1);
}

void TemplatesPage::Edited(QString& value, const QString& text) {
  if (Showing()) return;
  value = text;
  Desk().selection.Changed();
}

void TemplatesPage::CopyState() {
  ShowCampaigns();
  ui_->lblLetter->setText(
      State().rtfLetter.isEmpty()
          ? QStringLiteral("This campaign has no letter. Letters are written in a later version of this program.")
          : QStringLiteral(
                "This campaign has a letter, which is kept and saved with it. Letters are shown and written in a later version of this program."));
  if (ui_->txtEmailSubject->text() != State().txtEmailSubject) ui_->txtEmailSubject->setText(State().txtEmailSubject);
  ShowText(*ui_->txtEmailBody, State().txtEmailBody);
  ShowText(*ui_->txtSMS, State().txtSMS);
  ShowLength();
}

void TemplatesPage::ShowLength() {
  ui_->lblSMSChars->setText(SmsCounterText(State().txtSMS));
}

}  // namespace qbx
