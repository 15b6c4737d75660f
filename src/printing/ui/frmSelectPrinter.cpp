#include "printing/ui/frmSelectPrinter.h"

#include <QComboBox>
#include <QIntValidator>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QWidget>

#include "platform/ui/modal.h"
#include "printing/ui/report_help.h"
#include "ui_frmSelectPrinter.h"

namespace qbx {

namespace {

constexpr int kLettersAtOnce = 50;

/// The number in a box, 0 when it is empty.
int NumberIn(const QLineEdit& box) {
  return box.text().toInt();
}

void PutNumber(QLineEdit& box, int number) {
  box.setText(number > 0 ? QString::number(number) : QString());
}

}  // namespace

frmSelectPrinter::frmSelectPrinter(PrintService& service, std::vector<Printer> printers, const QString& ofUser,
                                   bool letters, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmSelectPrinter>()),
      service_(service),
      printers_(std::move(printers)) {
  ui_->setupUi(this);
  new HelpWindow(*this, SelectPrinterHelp);
  for (QLineEdit* box : findChildren<QLineEdit*>())
    box->setValidator(new QIntValidator(1, 999'999, box));
  for (QWidget* widget : std::initializer_list<QWidget*>{ui_->lblFromLetter, ui_->txtFirstLetter, ui_->lblToLetter,
                                                         ui_->chkHeaded, ui_->txtLastLetter, ui_->cmdNextLetters})
    widget->setVisible(letters);
  for (const Printer& printer : printers_)
    ui_->cmbPrinter->addItem(printer.name);
  ui_->cmbPrinter->setCurrentIndex(FirstChoice(printers_, ofUser));
  ui_->cmdPrint->setEnabled(!printers_.empty());
  ShowAbilities();
  connect(ui_->cmbPrinter, &QComboBox::currentIndexChanged, this, [this] { ShowAbilities(); });
  connect(ui_->cmdNextLetters, &QPushButton::clicked, this, [this] { ChooseNextLetters(); });
  connect(ui_->cmdPrint, &QPushButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
}

frmSelectPrinter::~frmSelectPrinter() = default;

void frmSelectPrinter::ShowAbilities() {
  const int chosen = ui_->cmbPrinter->currentIndex();
  PrinterAbilities abilities;
  try {
    if (chosen >= 0)
      abilities = service_.AbilitiesOf(printers_[static_cast<size_t>(chosen)].deviceId).value_or(PrinterAbilities{});
    ui_->lblNoPrinter->setVisible(printers_.empty());
  } catch (const PlainReportError& error) {  // printing may still work
    ui_->lblNoPrinter->setText(error.text);
    ui_->lblNoPrinter->show();
  }
  ui_->chkBothSides->setEnabled(abilities.bothSides);
  if (!abilities.bothSides) ui_->chkBothSides->setChecked(false);
  ui_->cmbTray->clear();
  ui_->cmbTray->addItem(QStringLiteral("The printer's own choice"));
  ui_->cmbTray->addItems(abilities.trays);
  ui_->cmbTray->setEnabled(!abilities.trays.isEmpty());
}

void frmSelectPrinter::SetLetters(int last, std::function<int()> count) {
  lastLetter_ = last;
  letterCount_ = std::move(count);
  const auto enable = [this] {
    const int letters = letterCount_();
    ui_->cmdNextLetters->setEnabled(letters == 0 || LastChosen() < letters);
  };
  connect(ui_->txtLastLetter, &QLineEdit::textChanged, this, enable);
  enable();
}

int frmSelectPrinter::LastChosen() const {
  return std::max(lastLetter_, NumberIn(*ui_->txtLastLetter));
}

void frmSelectPrinter::ChooseNextLetters() {
  const int last = LastChosen();
  const int letters = letterCount_ ? letterCount_() : 0;
  if (letters > 0 && last >= letters) return ui_->cmdNextLetters->setEnabled(false);
  PutNumber(*ui_->txtFirstLetter, last + 1);
  PutNumber(*ui_->txtLastLetter, letters > 0 ? std::min(last + kLettersAtOnce, letters) : last + kLettersAtOnce);
}

bool frmSelectPrinter::ShowSelectPrinter() {
  ui_->txtCopies->setValue(std::max(1, iCopies));
  if (ShowModal(*this) != Accepted) return false;
  iCopies = ui_->txtCopies->value();
  iFirstPage = NumberIn(*ui_->txtFirstPage);
  iLastPage = NumberIn(*ui_->txtLastPage);
  return true;
}

PrintChoice frmSelectPrinter::Choice() const {
  return {.printer = printers_[static_cast<size_t>(ui_->cmbPrinter->currentIndex())],
          .copies = iCopies,
          .range = {.firstPage = iFirstPage,
                    .lastPage = iLastPage,
                    .firstDocument = NumberIn(*ui_->txtFirstLetter),
                    .lastDocument = NumberIn(*ui_->txtLastLetter)},
          .paper = ui_->chkHeaded->isChecked() ? Paper::kHeaded : Paper::kBlank,
          .bothSides = ui_->chkBothSides->isChecked(),
          .tray = ui_->cmbTray->currentIndex() > 0 ? ui_->cmbTray->currentText() : QString()};
}

}  // namespace qbx
