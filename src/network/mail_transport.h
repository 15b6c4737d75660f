// Handing one finished e-mail to a mail server.

#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <functional>

namespace qbx {

/// How to reach a mail server. Equal settings share a kept connection.
struct MailServer {
  QString host = {};
  int port = 0;  ///< 0: 25 without TLS, 587 with
  bool useTls = false;
  bool implicitTls = false;  ///< TLS from the first byte instead of STARTTLS; only with useTls
  QString userName = {};     ///< empty: no AUTH
  QString password = {};

  friend bool operator==(const MailServer&, const MailServer&) = default;
};

/// An envelope and the message it carries.
struct MailEnvelope {
  QString sender;          ///< address only, no brackets
  QStringList recipients;  ///< addresses only, blind copies included
  QByteArray message;      ///< RFC 5322, CR LF line ends
};

enum class MailOutcome {
  kSent,       ///< the server took the message
  kRefused,    ///< the server said no, or the failure came before the whole message was written: it did not go out
  kUncertain,  ///< the message was written and no complete answer came: nobody knows
};

struct MailResult {
  MailOutcome outcome = MailOutcome::kRefused;
  QString error = {};      ///< for the user; empty when sent; holds no password
  bool transport = false;  ///< the failure is of the connection, not of this message (no server, TLS, AUTH, drop)
  QString refusedRecipient = {};  ///< the address that was refused, when nothing else was wrong
  bool unreachable = false;  ///< no session came about: connecting, TLS or the log-in failed; then `transport` as well
};

/// An SMTP client that keeps its connection from message to message until `Close`. Not thread-safe, never throws.
class MailTransport {
 public:
  virtual ~MailTransport() = default;

  /// Sends one message. Connects (TLS, AUTH) when no connection to that server is kept; a kept one that the server
  /// dropped is replaced once, silently, as long as nothing of the message was sent.
  /// \param progress  called with the percentage of the message written, 0 to 100, and about every 50 ms while waiting,
  ///                  so that it can let window events run; may be empty
  [[nodiscard]] virtual MailResult Send(const MailServer& server, const MailEnvelope& envelope,
                                        const std::function<void(int)>& progress) = 0;

  /// Ends the kept connection with QUIT, and waits a moment for the answer.
  /// \return true when there was none or the server answered 221
  virtual bool Close() = 0;
};

}  // namespace qbx
