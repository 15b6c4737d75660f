// The peer of the mailshot: a bare libcurl loop over one kept connection, and the durable commits of a run.

#pragma once

#include <curl/curl.h>

#include <string>
#include <vector>

#include "support/plain_database.h"

namespace qbx::bench {

/// One message as the program sent it, with what it wrote about it.
struct SentMessage {
  std::string bytes;     ///< the message, or the target of the request
  std::string customer;  ///< texts of its record in the host database
  std::string recipient;
  std::string subject;  ///< of an e-mail
  std::string text;
  qint64 recordId = 0;  ///< of the campaign's row
};

/// Sends what the program sent, with the same statements before and after each message.
class MailshotPeer {
 public:
  enum class Kind { kEmail, kText };

  MailshotPeer(Kind kind, const QString& file, const Clock& clock, int campaign, int port);
  ~MailshotPeer();
  MailshotPeer(const MailshotPeer&) = delete;
  MailshotPeer& operator=(const MailshotPeer&) = delete;

  /// Ends the process when a message fails.
  void Send(const std::vector<SentMessage>& messages);

 private:
  void SetUpMail();
  void Post(const SentMessage& message);
  void Note(qint64 recordId, int state);
  void Record(const SentMessage& message);

  Kind kind_;
  std::string address_;
  SqliteFile database_;
  SqliteStatement begin_;
  SqliteStatement commit_;
  SqliteStatement journal_;
  SqliteStatement record_;
  SqliteStatement mark_;
  CURL* curl_;
  curl_slist* recipients_ = nullptr;
};

}  // namespace qbx::bench
