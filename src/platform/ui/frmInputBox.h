// A box that asks for one line of text.

#pragma once

#include <QDialog>
#include <QString>
#include <QWidget>
#include <memory>

#include "platform/user_interface.h"

namespace Ui {
class frmInputBox;
}

namespace qbx {

/// Each object is used for one question.
class frmInputBox : public QDialog {
 public:
  explicit frmInputBox(QWidget* parent = nullptr);
  ~frmInputBox() override;

  QString sReturnValue;  ///< the text typed when OK was pressed, else empty

  /// Shows the box modally.
  /// \return the text typed, empty when cancelled
  QString QBXInputBox(const InputRequest& request);

 private:
  std::unique_ptr<Ui::frmInputBox> ui_;
};

}  // namespace qbx
