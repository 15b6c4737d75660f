// Handing one finished e-mail to a mail server.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace qbx {

/// How to reach a mail server. Messages to equal servers share a kept connection.
struct MailServer {
  QString host = {};
  int port = 0;  ///< 0 means 25 without TLS and 587 with TLS
  bool useTls = false;
  bool implicitTls = false;  ///< TLS from the first byte instead of STARTTLS; only with useTls
  QString userName = {};     ///< empty for no AUTH
  QString password = {};

  friend bool operator==(const MailServer&, const MailServer&) = default;
};

/// An envelope and the message it carries.
struct MailEnvelope {
  QString sender;          ///< the address without brackets
  QStringList recipients;  ///< addresses without brackets, including blind copies
  QByteArray message;      ///< RFC 5322, CR LF line ends
};

enum class MailOutcome {
  kSent,       ///< the server accepted the message
  kRefused,    ///< the server refused, or the failure came before the whole message was written: it did not go out
  kUncertain,  ///< the whole message was written but no complete answer came: it may or may not have gone out
};

struct MailResult {
  MailOutcome outcome = MailOutcome::kRefused;
  QString error = {};             ///< for the user; empty when sent; holds no password
  bool transport = false;         ///< the failure is the connection's (no server, TLS, AUTH, drop), not the message's
  QString refusedRecipient = {};  ///< the refused address, when nothing else was wrong
  bool unreachable = false;       ///< connecting, TLS or the log-in failed; `transport` is then set as well
};

/// An SMTP client that keeps its connection from message to message until `Close`. Not thread-safe, never throws.
class MailTransport {
 public:
  virtual ~MailTransport() = default;

  /// Sends one message. Connects (TLS, AUTH) when no connection to the server is kept. A kept connection that the
  /// server dropped is replaced once, silently, as long as nothing of the message was sent.
  /// \param progress  called with the percentage of the message written, 0 to 100, and about every 50 ms while waiting,
  ///                  so that it can let window events run; may be empty
  [[nodiscard]] virtual MailResult Send(const MailServer& server, const MailEnvelope& envelope,
                                        const std::function<void(int)>& progress) = 0;

  /// Ends the kept connection with QUIT, and waits a moment for the answer.
  /// \return true when no connection was kept or the server answered 221
  virtual bool Close() = 0;
};

}  // namespace qbx
