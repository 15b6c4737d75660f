// SMTP over libcurl.

#pragma once

#include <functional>
#include <memory>

#include "network/mail_transport.h"

namespace qbx {

struct MailLimits {
  int connectSeconds = 10;  ///< for the connection to stand
  int replySeconds = 60;    ///< for each answer of the server
  int totalSeconds = 300;   ///< for one message
  int leaveSeconds = 2;     ///< for the answer to QUIT when a connection is closed
};

/// Certificates are verified against the system's authorities and those of an extra file. The server is given the user
/// name and the password whenever it offers AUTH. A server that refused a recipient is told QUIT and left without an
/// answer: libcurl keeps no connection on which something was refused, and would wait for that answer without a pump.
class CurlMailTransport final : public MailTransport {
 public:
  /// \param authorityFile  path of a PEM file with more certificate authorities; empty: none
  /// \param pump  called about every 50 ms while `Close` waits, so that it can let window events run; may be empty
  explicit CurlMailTransport(QString authorityFile = {}, const MailLimits& limits = {},
                             std::function<void()> pump = {});
  /// Closes the kept connection, without the pump.
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
  std::function<void()> pump_;
  std::unique_ptr<Connection> connection_;  ///< null: none is kept
};

}  // namespace qbx
