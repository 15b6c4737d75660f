// What the small window of an e-mail under way shows.

#pragma once

#include <QString>

namespace qbx {

/// Shown by `EmailSender` while it sends one message. A headless run shows nothing and uses this class as it stands.
class SendEmailView {
 public:
  virtual ~SendEmailView() = default;

  /// \param viaQbxServer  the message goes through the product family's own e-mail server
  virtual void Open(bool viaQbxServer) { (void)viaQbxServer; }
  virtual void SetStatus(const QString& text) { (void)text; }
  virtual void SetProgress(const QString& text) { (void)text; }
  /// Grows to show an error and stays open until the user closes it.
  virtual void ShowFailure(const QString& error) { (void)error; }
  virtual void Close() {}
};

}  // namespace qbx
