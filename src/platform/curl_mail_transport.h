// SMTP over libcurl.

#pragma once

#include <memory>

#include "platform/mail_transport.h"

namespace qbx {

struct MailLimits {
  int connectSeconds = 10;  ///< for the connection to stand
  int replySeconds = 60;    ///< for each answer of the server
  int totalSeconds = 300;   ///< for one message
};

/// Certificates are verified against the system's authorities and those of an extra file. The server is given the user
/// name and the password whenever it offers AUTH.
class CurlMailTransport final : public MailTransport {
 public:
  /// \param authorityFile  path of a PEM file with more certificate authorities; empty: none
  explicit CurlMailTransport(QString authorityFile = {}, const MailLimits& limits = {});
  /// Closes the kept connection.
  ~CurlMailTransport() override;
  CurlMailTransport(const CurlMailTransport&) = delete;
  CurlMailTransport& operator=(const CurlMailTransport&) = delete;

  [[nodiscard]] MailResult Send(const MailServer& server, const MailEnvelope& envelope,
                                const std::function<void(int)>& progress) override;
  bool Close() override;

 private:
  class Connection;

  QString authorityFile_;
  MailLimits limits_;
  std::unique_ptr<Connection> connection_;  ///< null: none is kept
};

}  // namespace qbx
