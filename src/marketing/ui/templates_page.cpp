#include "marketing/ui/templates_page.h"

#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QWidget>

#include "dispatch/template_notes.h"
#include "letters/letter_preview.h"
#include "marketing/ui/insert_menu.h"
#include "platform/ui/widget_ui.h"
#include "ui_templates_page.h"
#include "wizard/campaign_data.h"
#include "wizard/template_examples.h"

namespace qbx {
namespace {

constexpr int kNotesAfter = 300;     // milliseconds without a key
constexpr int kSurveyAtOnce = 5000;  // number of rows; more rows are surveyed only when the page is opened

}  // namespace

TemplatesPage::TemplatesPage(const PageParts& parts) : WizardPage(parts), ui_(std::make_unique<Ui::TemplatesPage>()) {
  ui_->setupUi(this);
  ShowExamples();
  notes_.setSingleShot(true);
  notes_.setInterval(kNotesAfter);
  WidgetUi::HoldWhileWorking(notes_);
  Desk().drafts.BeforeWriting([this] { KeepEdits(); });
  connect(&notes_, &QTimer::timeout, this, [this] {
    KeepEdits();
    if (survey_ && survey_->texts + survey_->emails <= kSurveyAtOnce) Survey();
    ShowNotes();
    for (TemplatePane* pane : Panes()) {
      if (Connected()) pane->FollowText();
    }
  });
  connect(ui_->cmdPreview, &QPushButton::clicked, this, [this] {
    Run([this] {
      PreviewLetter({.statements = App().statements,
                     .reports = Reports(),
                     .options = App().options,
                     .startup = App().startup,
                     .diagnostics = App().diagnostics},
                    State().rtfLetter);
    });
  });
  connect(ui_->cmdLoadLetters, &QPushButton::clicked, this, &TemplatesPage::LoadLetters);
  const auto spelling = std::make_shared<Spelling>(parts.app);
  ui_->letterEditor->CheckSpelling(spelling);
  for (TemplatePane* pane : Panes()) {
    pane->Work(parts, spelling);
    connect(pane, &TemplatePane::Edited, this, [this] { Edited(); });
  }
  connect(ui_->letterEditor, &LetterEditor::Edited, this, [this] {
    letterEdited_ = true;
    Desk().selection.Changed();
    Edited();
  });
  FillInsertMenu(*ui_->cmdInsertLetter, App(), {}, [this](const QString& text) { ui_->letterEditor->Insert(text); });
}

TemplatesPage::~TemplatesPage() {
  Desk().drafts.BeforeWriting({});
}

std::array<TemplatePane*, 2> TemplatesPage::Panes() const {
  return {ui_->pageEmail, ui_->pageText};
}

void TemplatesPage::ShowExamples() {
  const TemplateExamples examples = MakeTemplateExamples(App().startup.edition.boat);
  ui_->lblExample1->setText(examples.lblExample1);
  ui_->txtExample1->setPlainText(examples.txtExample1);
  ui_->lblExample2->setText(examples.lblExample2);
  ui_->txtExample2->setPlainText(examples.txtExample2);
}

QWidget* TemplatesPage::FirstControl() {
  return ui_->ssTabLetters;
}

void TemplatesPage::CampaignSetUp() {
  for (TemplatePane* pane : Panes())
    pane->HidePreview();
}

void TemplatesPage::ShowText(TextKind kind) {
  ui_->ssTabLetters->setCurrentIndex(static_cast<int>(kind));
}

void TemplatesPage::LoadLetters() {
  Run([this] { Desk().settings.LoadLetters(ui_->cmbCampaigns->currentIndex()); });
  Desk().drafts.Changed();
  ShowState();
}

void TemplatesPage::Edited() {
  notes_.start();
  Desk().drafts.Changed();
}

void TemplatesPage::ShowCampaigns() {
  const QVariant chosen = ui_->cmbCampaigns->currentData();  // names need not be unique
  ui_->cmbCampaigns->clear();
  for (const ListRow& row : State().cmbCampaigns)
    ui_->cmbCampaigns->addItem(row.text, row.data.ToInt());
  ui_->cmbCampaigns->setCurrentIndex(chosen.isValid() ? ui_->cmbCampaigns->findData(chosen) : -1);
}

void TemplatesPage::KeepEdits() {
  if (!letterEdited_) return;
  letterEdited_ = false;
  State().rtfLetter = ui_->letterEditor->Stored();
}

void TemplatesPage::CopyState() {
  KeepEdits();
  ShowCampaigns();
  if (ui_->letterEditor->Stored() != State().rtfLetter) ui_->letterEditor->Load(State().rtfLetter);
  for (TemplatePane* pane : Panes()) {
    pane->ShowState();
    if (Connected()) pane->FollowRows();
  }
  Survey();
  ShowNotes();
}

bool TemplatesPage::Connected() {
  return App().hostConnection.Ready() && App().connection.IsOpen();
}

void TemplatesPage::Survey() {
  survey_.reset();
  if (Connected())
    survey_ = SurveyCampaign(App().statements, App().campaign.record.ID, State().txtSMS, App().clock.Today());
}

void TemplatesPage::ShowNotes() {
  const NoteFacts facts{
      .options = App().options, .data = DataOfCampaign(State().selectedNode, State().filters), .rows = survey_};
  for (TemplatePane* pane : Panes())
    pane->ShowNotes(facts);
  const QStringList notes = LetterNotes(State().rtfLetter, facts.data);
  ui_->lblLetterNotes->setText(notes.join(QStringLiteral(" ")));
  ui_->lblLetterNotes->setVisible(!notes.isEmpty());
}

}  // namespace qbx
