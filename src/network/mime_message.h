// E-mails as text: RFC 5322 headers, RFC 2047 words, MIME bodies.

#pragma once

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

#include "platform/clock.h"

namespace qbx {

struct MailAddress {
  QString name;     ///< the display name, may be empty
  QString address;  ///< without brackets
};

/// A file attached to a message: its bytes, or the path to read them from.
struct MailAttachment {
  QString name;  ///< shown to the recipient; empty for the last part of `path`
  QString path;
  QByteArray bytes;  ///< used when `path` is empty
};

/// The content and recipients of a message. Blind copies are only in the envelope.
struct MailMessage {
  MailAddress from;
  QString replyTo;  ///< an address; empty for no such header
  std::vector<MailAddress> to;
  QString subject;
  QString body;                                         ///< lines end in CR, LF or CR LF
  bool isHtml = false;                                  ///< the body is HTML instead of plain text
  std::vector<std::pair<QByteArray, QString>> headers;  ///< more headers, name and value
  std::vector<MailAttachment> attachments;
};

/// A message as bytes, or why it cannot be made. Exactly one of the two is set.
struct MimeResult {
  QByteArray bytes;  ///< each line ends in CR LF and has at most 998 characters, in the body at most 76
  QString error;     ///< one sentence for the user
};

/// Why no message can be written to an address; empty when one can.
[[nodiscard]] QString RecipientProblem(const QString& address);

/// Writes messages, each with its own Message-ID.
///
/// Refused: CR, LF or NUL in a header value (they would add headers), an invalid name of an extra header, a sender
/// address without "@", an attachment that cannot be read. Names and subjects that are not ASCII become encoded words;
/// addresses are written unchanged.
class MimeWriter {
 public:
  /// \param clock  for the Date header, with the local offset
  explicit MimeWriter(const Clock& clock);

  [[nodiscard]] MimeResult Write(const MailMessage& message);

 private:
  [[nodiscard]] QByteArray NextToken();

  const Clock& clock_;
  QByteArray seed_;  ///< random, so that two runs never make the same Message-ID
  quint64 count_ = 0;
};

}  // namespace qbx
