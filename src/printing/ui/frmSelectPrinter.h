// Asking for printer, copies and pages.

#pragma once

#include <QDialog>
#include <memory>
#include <optional>

#include "printing/print_choice.h"

namespace Ui {
class frmSelectPrinter;
}

namespace qbx {

class frmSelectPrinter : public QDialog {
 public:
  /// \param ofUser   printer of the user's option, chosen at first
  /// \param letters  whether the report is made of letters, of which a part can be printed
  frmSelectPrinter(Printers& printers, const QString& ofUser, bool letters, QWidget* parent);
  ~frmSelectPrinter() override;

  int iCopies = 1;
  int iFirstPage = 0;  ///< 0: not given
  int iLastPage = 0;

  /// Shows the dialog.
  /// \return whether Print was pressed
  [[nodiscard]] bool ShowSelectPrinter();
  /// What was chosen.
  [[nodiscard]] PrintChoice Choice() const;
  /// Letters that were printed before, for "Next 50".
  void SetLastLetter(int letter) { lastLetter_ = letter; }

 private:
  void ShowAbilities();
  void ChooseNextLetters();

  std::unique_ptr<Ui::frmSelectPrinter> ui_;
  Printers& service_;
  std::vector<Printer> printers_;
  int lastLetter_ = 0;
};

}  // namespace qbx
