// The dialog for printer, copies and pages.

#pragma once

#include <QDialog>
#include <QString>
#include <QWidget>
#include <functional>
#include <memory>

#include "printing/print_choice.h"

namespace Ui {
class frmSelectPrinter;
}

namespace qbx {

class frmSelectPrinter : public QDialog {
 public:
  /// \param printers  those of the service
  /// \param ofUser    printer of the user's option, selected at first
  /// \param letters   whether the report consists of letters, of which a part can be printed
  frmSelectPrinter(PrintService& service, std::vector<Printer> printers, const QString& ofUser, bool letters,
                   QWidget* parent);
  ~frmSelectPrinter() override;

  int iCopies = 1;
  int iFirstPage = 0;  ///< 0 when it is not given
  int iLastPage = 0;

  /// Shows the dialog.
  /// \return whether Print was pressed
  [[nodiscard]] bool ShowSelectPrinter();
  /// What was chosen.
  [[nodiscard]] PrintChoice Choice() const;
  /// Prepares "Next 50".
  /// \param last   the last letter that was printed before
  /// \param count  gives the number of letters; 0 as long as it is unknown
  void SetLetters(int last, std::function<int()> count);

 private:
  void ShowAbilities();
  void ChooseNextLetters();
  [[nodiscard]] int LastChosen() const;

  std::unique_ptr<Ui::frmSelectPrinter> ui_;
  PrintService& service_;
  std::vector<Printer> printers_;
  int lastLetter_ = 0;
  std::function<int()> letterCount_;
};

}  // namespace qbx
