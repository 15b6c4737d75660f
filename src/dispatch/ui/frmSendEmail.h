// The small window of an e-mail under way.

#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "dispatch/send_email_view.h"

namespace Ui {
class frmSendEmail;
}

namespace qbx {

class HelpWindow;

/// Not modal, and shown without taking the focus. While it sends it cannot be closed; when a failure is shown, the user closes it.
///
/// A mailshot tells of thousands of messages a minute: what is told is shown at most 25 times a second, and at once where it stays.
class frmSendEmail : public QDialog, public SendEmailView {
 public:
  frmSendEmail();
  ~frmSendEmail() override;

  // SendEmailView
  void Open(bool viaQbxServer) override;
  void SetStatus(const QString& text) override;
  void SetProgress(const QString& text) override;
  void ShowFailure(const QString& error) override;
  void Close() override;

  void reject() override;

 private:
  void PlaceOverMainWindow();
  void ShowTexts(bool atOnce);

  std::unique_ptr<Ui::frmSendEmail> ui_;
  QString status_;
  QString progress_;
  QElapsedTimer shown_;
  HelpWindow* help_ = nullptr;  ///< from the first e-mail on
};

}  // namespace qbx
