// SMTP over libcurl.

#pragma once

#include <functional>
#include <memory>

#include "network/mail_transport.h"

namespace qbx {

struct MailLimits {
  int connectSeconds = 10;  ///< to connect
  int replySeconds = 60;    ///< for each answer of the server
  int totalSeconds = 300;   ///< for one message
  int leaveSeconds = 2;     ///< for the answer to QUIT when the connection is closed
};

/// Verifies certificates against the system's authorities and those of an extra file. Sends the user name and the
/// password whenever the server offers AUTH. After a refused recipient it sends QUIT and does not wait for the answer:
/// libcurl keeps no connection after a refusal, and would wait without a pump.
class CurlMailTransport final : public MailTransport {
 public:
  /// \param authorityFile  path of a PEM file with more certificate authorities; empty for none
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
  std::unique_ptr<Connection> connection_;  ///< null when no connection is kept
};

}  // namespace qbx
