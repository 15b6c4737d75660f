// What the window of an e-mail that is being sent shows.

#pragma once

#include <QString>

namespace qbx {

/// `EmailSender` shows it while it sends a message. This class shows nothing; a headless run uses it.
class SendEmailView {
 public:
  virtual ~SendEmailView() = default;

  /// \param viaQbxServer  whether the message goes through the product family's e-mail server
  virtual void Open(bool viaQbxServer) { (void)viaQbxServer; }
  virtual void SetStatus(const QString& text) { (void)text; }
  virtual void SetProgress(const QString& text) { (void)text; }
  /// Shows an error and stays open until the user closes the window.
  virtual void ShowFailure(const QString& error) { (void)error; }
  virtual void Close() {}
};

}  // namespace qbx
