#include "marketing/ui/text_pane.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QString>
#include <QWidget>

#include "dispatch/sms_credits.h"
#include "dispatch/sms_text.h"
#include "marketing/ui/insert_menu.h"
#include "marketing/ui/spelling_marks.h"
#include "platform/ui/long_text.h"
#include "ui_text_pane.h"

namespace qbx {

TextPane::TextPane(QWidget* parent) : TemplatePane(parent), ui_(std::make_unique<Ui::TextPane>()) {
  ui_->setupUi(this);
  ui_->fraSMSExample->hide();
}

TextPane::~TextPane() = default;

void TextPane::Connect() {
  new SpellingMarks(*ui_->txtSMS, SpellingToUse());
  connect(ui_->txtSMS, &QPlainTextEdit::textChanged, this, &TextPane::TakeText);
  connect(ui_->cmdTestSMS0, &QPushButton::clicked, this, &TextPane::Preview);
  connect(ui_->cmdTestSMS1, &QPushButton::clicked, this,
          [this] { Guarded([this] { Tests().SendTestText(ExactText(*ui_->txtSMSExample, QString())); }); });
  connect(ui_->cmdTestSMS2, &QPushButton::clicked, this, [this] {
    HidePreview();
    ui_->cmdTestSMS0->setFocus();
  });
  connect(ui_->walkSMS, &PreviewWalk::Moved, this, &TextPane::ShowMessage);
  FillInsertMenu(*ui_->cmdInsertText, App(), {{QStringLiteral("How to stop"), StopTextsSentence(App().options)}},
                 [this](const QString& text) { ui_->txtSMS->insertPlainText(text); });
}

void TextPane::TakeText() {
  if (Showing()) return;
  QString text = ExactText(*ui_->txtSMS, State().txtSMS);
  const int before = SmsLength(State().txtSMS);
  // The typed or pasted text ends at the caret. Its excess is removed, down to the length before it.
  while (SmsLength(text) > kMaxSmsLength && SmsLength(text) > before && ui_->txtSMS->textCursor().position() > 0) {
    const QSignalBlocker quiet(ui_->txtSMS);
    ui_->txtSMS->textCursor().deletePreviousChar();
    text = ExactText(*ui_->txtSMS, State().txtSMS);
  }
  Store(State().txtSMS, text);
  ui_->lblSMSChars->setText(SmsCounterText(text));
}

void TextPane::CopyState() {
  ShowText(*ui_->txtSMS, State().txtSMS);
  ui_->lblSMSChars->setText(SmsCounterText(State().txtSMS));
}

void TextPane::ShowNotes(const NoteFacts& facts) {
  ShowSentences(*ui_->lblSMSNotes, SmsNotes(State().txtSMS, facts));
}

void TextPane::Preview() {
  Guarded([this] { ui_->walkSMS->Begin(App().statements, App().campaign.record.ID, Channel::kSms); });
  ShowMessage();
  ui_->fraSMSExample->show();
  ui_->cmdTestSMS1->setFocus();
}

void TextPane::ShowMessage() {
  MessageMaker messages = Messages();
  const std::optional<NextMessage> message = ui_->walkSMS->Message(messages, App().clock.Today());
  const bool texts = message && message->sms.has_value();
  ui_->txtSMSExample->setPlainText(texts ? *message->sms : QStringLiteral("(no text goes to this customer)"));
  ui_->cmdTestSMS1->setEnabled(texts);
}

void TextPane::FollowRows() {
  if (ui_->fraSMSExample->isHidden()) return;
  ui_->walkSMS->ReadAgain(App().campaign.record.ID);
  ShowMessage();
}

void TextPane::FollowText() {
  if (!ui_->fraSMSExample->isHidden()) ShowMessage();
}

void TextPane::HidePreview() {
  ui_->fraSMSExample->hide();
}

}  // namespace qbx
