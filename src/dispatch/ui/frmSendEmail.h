// The window of an e-mail that is being sent.

#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <QString>
#include <memory>

#include "dispatch/send_email_view.h"

namespace Ui {
class frmSendEmail;
}

namespace qbx {

class HelpWindow;

/// Not modal, and shown without taking the focus. It cannot be closed while it sends; after a failure the user closes
/// it.
///
/// A mailshot can report thousands of messages a minute. At most 25 of its texts are shown a second; a text that stays
/// is shown at once.
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
  HelpWindow* help_ = nullptr;  ///< null until the first e-mail
};

}  // namespace qbx
