// The comparison for a mailshot: a bare libcurl loop over one kept connection, with the durable commits of a run.

#pragma once

#include <curl/curl.h>

#include <string>
#include <vector>

#include "support/plain_database.h"

namespace qbx::bench {

/// One message of the program, with the values that the program stored about it.
struct SentMessage {
  std::string bytes;     ///< the e-mail, or the target of the request to the gateway
  std::string customer;  ///< texts of the record in the host database
  std::string recipient;
  std::string subject;  ///< of an e-mail
  std::string text;
  qint64 recordId = 0;  ///< of the campaign's row
};

/// Sends the program's messages again, with the same statements before and after each message.
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
