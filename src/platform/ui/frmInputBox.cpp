#include "platform/ui/frmInputBox.h"

#include <QLineEdit>
#include <QProxyStyle>
#include <QPushButton>
#include <QString>
#include <QStyleHintReturn>
#include <QStyleOption>
#include <QWidget>

#include "platform/ui/help_window.h"
#include "platform/ui/line_breaks.h"
#include "platform/ui/modal.h"
#include "ui_frmInputBox.h"

namespace qbx {
namespace {

constexpr char kHelp[] = R"(
<p>%1</p>
<ul><li>Return, or <b>OK</b>, goes on with what was typed.</li>
<li>Esc, or <b>Cancel</b>, goes back, and nothing happens.</li></ul>)";

/// Shows masked characters as "*" in every style.
class AsteriskStyle : public QProxyStyle {
 public:
  AsteriskStyle() : QProxyStyle(QStringLiteral("Fusion")) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* data) const override {
    return hint == SH_LineEdit_PasswordCharacter ? '*' : QProxyStyle::styleHint(hint, option, widget, data);
  }
};

}  // namespace

frmInputBox::frmInputBox(QWidget* parent) : QDialog(parent), ui_(std::make_unique<Ui::frmInputBox>()) {
  ui_->setupUi(this);
  new HelpWindow(*this, [this] {
    return HelpText{windowTitle(), QString::fromUtf8(kHelp).arg(ui_->lblPrompt->text().toHtmlEscaped())};
  });
  connect(ui_->cmdOK, &QPushButton::clicked, this, [this] {
    sReturnValue = ui_->txtInput->text();
    accept();
  });
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmInputBox::~frmInputBox() = default;

QString frmInputBox::QBXInputBox(const InputRequest& request) {
  if (!request.title.isEmpty()) setWindowTitle(request.title);
  ui_->lblPrompt->setText(WithLineFeeds(request.prompt));
  ui_->txtInput->setAccessibleName(WithLineFeeds(request.prompt));
  if (request.masked) {
    auto* style = new AsteriskStyle;
    style->setParent(this);
    ui_->txtInput->setStyle(style);
    ui_->txtInput->setEchoMode(QLineEdit::Password);
  }
  ui_->txtInput->setText(request.defaultText);
  ui_->txtInput->selectAll();
  ui_->txtInput->setFocus();
  ShowModal(*this);
  return sReturnValue;
}

}  // namespace qbx
