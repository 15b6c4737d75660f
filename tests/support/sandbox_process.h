// The gateway and the mail server on loopback, in another process.

#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include "support/temp_folder.h"

namespace qbx::test {

/// Starts a sandbox on free ports with an empty folder, waits until it answers, and ends it with the test. The test
/// fails when the sandbox does not start.
class SandboxProcess {
 public:
  /// \param arguments  more options of the sandbox, such as {"--credits", "5"}
  explicit SandboxProcess(const QStringList& arguments = {});
  ~SandboxProcess();
  SandboxProcess(const SandboxProcess&) = delete;
  SandboxProcess& operator=(const SandboxProcess&) = delete;

  [[nodiscard]] int HttpPort() const { return httpPort_; }
  [[nodiscard]] int SmtpPort() const { return smtpPort_; }
  [[nodiscard]] int SmtpsPort() const { return smtpsPort_; }
  [[nodiscard]] QString Folder() const { return folder_.Path(); }
  /// The value for `SMS_Server`.
  [[nodiscard]] QString Gateway() const { return QString("http://127.0.0.1:%1").arg(httpPort_); }
  /// The authority that signed the mail server's certificate (PEM).
  [[nodiscard]] QString AuthorityFile() const { return folder_.File("tls/ca.pem"); }

  /// Asks for a path of the sandbox's page, such as "/api/mails".
  /// \return the answer's body
  [[nodiscard]] QByteArray Ask(const QString& path) const;
  /// Changes the answers for numbers and recipients. The sandbox's --help describes the JSON.
  void Steer(const QByteArray& wishes) const;
  void SetCredits(int credits) const;
  /// Forgets everything received and steered, and restores the credits.
  void Reset() const;

 private:
  TempFolder folder_;
  QProcess process_;
  int httpPort_ = 0;
  int smtpPort_ = 0;
  int smtpsPort_ = 0;
  int pagePort_ = 0;
};

}  // namespace qbx::test
