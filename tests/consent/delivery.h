// A message that reached a server.

#pragma once

#include <QString>
#include <QStringList>

#include "dispatch/send_journal.h"

namespace qbx::consent {

struct Delivery {
  Channel channel = Channel::kSms;
  QStringList to;
  QString subject;  ///< of an e-mail
  QString text;
};

/// What the program was told about it.
enum class Outcome {
  kAccepted,
  kRefused,    ///< it did not go out
  kUncertain,  ///< nobody knows
};

/// Told of every message that a server was given.
class Postbox {
 public:
  virtual ~Postbox() = default;
  /// \param arrived  it really reached the customer
  virtual void Received(const Delivery& delivery, Outcome outcome, bool arrived) = 0;
};

/// The text that the address of a request to the gateway carries.
[[nodiscard]] Delivery ReadText(const QString& url);
/// The e-mail that a mail server was given.
[[nodiscard]] Delivery ReadMail(const QStringList& recipients, const QByteArray& message);

}  // namespace qbx::consent
