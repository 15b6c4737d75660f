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

/// What the program learned about it.
enum class Outcome {
  kAccepted,
  kRefused,    ///< it did not go out
  kUncertain,  ///< the program cannot know
};

/// Is told of every message that a server got.
class Postbox {
 public:
  virtual ~Postbox() = default;
  /// \param arrived  whether it reached the customer
  virtual void Received(const Delivery& delivery, Outcome outcome, bool arrived) = 0;
};

/// Reads the text from the address of a request to the gateway.
[[nodiscard]] Delivery ReadText(const QString& url);
/// Reads the e-mail that a mail server got.
[[nodiscard]] Delivery ReadMail(const QStringList& recipients, const QByteArray& message);

}  // namespace qbx::consent
