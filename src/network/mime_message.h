// E-mails as text: RFC 5322 headers, RFC 2047 words, MIME bodies.

#pragma once

#include <QByteArray>
#include <QString>
#include <utility>
#include <vector>

#include "platform/clock.h"

namespace qbx {

struct MailAddress {
  QString name;     ///< display name, may be empty
  QString address;  ///< without brackets
};

/// A file that goes with a message: the bytes, or the path of a file to read them from.
struct MailAttachment {
  QString name;  ///< as the recipient sees it; empty: the last part of `path`
  QString path;
  QByteArray bytes;  ///< used when `path` is empty
};

/// What a message says and to whom. Blind copies are not here: they exist in the envelope only.
struct MailMessage {
  MailAddress from;
  QString replyTo;  ///< address; empty: no such header
  std::vector<MailAddress> to;
  QString subject;
  QString body;                                         ///< lines end in CR, LF or CR LF
  bool isHtml = false;                                  ///< the body is HTML instead of plain text
  std::vector<std::pair<QByteArray, QString>> headers;  ///< more headers, name and value
  std::vector<MailAttachment> attachments;
};

/// A message as bytes, or why there is none. Exactly one of the two is set.
struct MimeResult {
  QByteArray bytes;  ///< CR LF at the end of every line, none longer than 998, those of the body at most 76
  QString error;     ///< one sentence for the user
};

/// What keeps a message from being written to an address; empty when nothing does.
[[nodiscard]] QString RecipientProblem(const QString& address);

/// Writes messages one after the other, each with a Message-ID of its own.
///
/// Refused: CR, LF or NUL in any header value (a way to smuggle headers in), an extra header whose name is not one, a
/// sender address without "@", an attachment that cannot be read. Names and subjects that are not ASCII are written as
/// encoded words; addresses are written as they are.
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
