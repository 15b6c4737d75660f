#include "marketing/ui/email_pane.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include "marketing/ui/insert_menu.h"
#include "marketing/ui/spelling_marks.h"
#include "platform/ui/long_text.h"
#include "ui_email_pane.h"

namespace qbx {

EmailPane::EmailPane(QWidget* parent) : TemplatePane(parent), ui_(std::make_unique<Ui::EmailPane>()) {
  ui_->setupUi(this);
  ui_->fraEmailExample->hide();
}

EmailPane::~EmailPane() = default;

void EmailPane::Connect() {
  new LineSpellingMarks(*ui_->txtEmailSubject, SpellingToUse());
  new SpellingMarks(*ui_->txtEmailBody, SpellingToUse());
  connect(ui_->txtEmailSubject, &QLineEdit::textEdited, this,
          [this](const QString& text) { Store(State().txtEmailSubject, text); });
  connect(ui_->txtEmailBody, &QPlainTextEdit::textChanged, this,
          [this] { Store(State().txtEmailBody, ExactText(*ui_->txtEmailBody, State().txtEmailBody)); });
  connect(ui_->cmdTestEmail0, &QPushButton::clicked, this, &EmailPane::Preview);
  connect(ui_->cmdTestEmail1, &QPushButton::clicked, this, [this] {
    Guarded([this] {
      Tests().SendTestEmail(ui_->txtEmailSubjectExample->text(),
                            ExactText(*ui_->txtEmailBodyExample, State().txtEmailBody));
    });
  });
  connect(ui_->cmdTestEmail2, &QPushButton::clicked, this, [this] {
    HidePreview();
    ui_->cmdTestEmail0->setFocus();
  });
  connect(ui_->walkEmail, &PreviewWalk::Moved, this, &EmailPane::ShowMessage);
  FillInsertMenu(*ui_->cmdInsertEmail, App(), {{QStringLiteral("How to stop"), StopEmailsSentence(App().options)}},
                 [this](const QString& text) {
                   // The subject may hold fields, too. The menu leaves the focus in subject or body.
                   if (focusWidget() == ui_->txtEmailSubject) {
                     ui_->txtEmailSubject->insert(text);
                     Store(State().txtEmailSubject, ui_->txtEmailSubject->text());
                   } else {
                     ui_->txtEmailBody->insertPlainText(text);
                   }
                 });
}

void EmailPane::CopyState() {
  if (ui_->txtEmailSubject->text() != State().txtEmailSubject) ui_->txtEmailSubject->setText(State().txtEmailSubject);
  ShowText(*ui_->txtEmailBody, State().txtEmailBody);
}

void EmailPane::ShowNotes(const NoteFacts& facts) {
  ShowSentences(*ui_->lblEmailNotes, EmailNotes(State().txtEmailSubject, State().txtEmailBody, facts));
}

void EmailPane::Preview() {
  Guarded([this] { ui_->walkEmail->Begin(App().statements, App().campaign.record.ID, Channel::kEmail); });
  ShowMessage();
  ui_->fraEmailExample->show();
  ui_->cmdTestEmail1->setFocus();
}

void EmailPane::ShowMessage() {
  MessageMaker messages = Messages();
  const std::optional<NextMessage> message = ui_->walkEmail->Message(messages, App().clock.Today());
  const bool mails = message && message->subject.has_value();
  ui_->txtEmailSubjectExample->setText(mails ? *message->subject : QString());
  ui_->txtEmailBodyExample->setPlainText(mails ? *message->body : QStringLiteral("(no e-mail goes to this customer)"));
  ui_->cmdTestEmail1->setEnabled(mails);
}

void EmailPane::FollowRows() {
  if (ui_->fraEmailExample->isHidden()) return;
  ui_->walkEmail->ReadAgain(App().campaign.record.ID);
  ShowMessage();
}

void EmailPane::FollowText() {
  if (!ui_->fraEmailExample->isHidden()) ShowMessage();
}

void EmailPane::HidePreview() {
  ui_->fraEmailExample->hide();
}

}  // namespace qbx
