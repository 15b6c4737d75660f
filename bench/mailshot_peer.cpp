#include "mailshot_peer.h"

#include <cstring>

#include "support/rounds.h"

namespace qbx::bench {
namespace {

/// The part of a message that libcurl has not taken yet.
struct Upload {
  std::string_view left;
};

std::size_t Give(char* buffer, std::size_t size, std::size_t count, void* upload) {
  std::string_view& left = static_cast<Upload*>(upload)->left;
  const std::size_t length = std::min(left.size(), size * count);
  std::memcpy(buffer, left.data(), length);
  left.remove_prefix(length);
  return length;
}

std::size_t Drop(char*, std::size_t size, std::size_t count, void*) {
  return size * count;
}

}  // namespace

MailshotPeer::MailshotPeer(Kind kind, const QString& file, const Clock& clock, int campaign, int port)
    : kind_(kind),
      address_((kind == Kind::kEmail ? "smtp://127.0.0.1:" : "http://127.0.0.1:") + std::to_string(port)),
      database_(OpenPlain(file, clock)),
      begin_(database_.Handle(), "BEGIN IMMEDIATE"),
      commit_(database_.Handle(), "COMMIT"),
      journal_(std::move(PrepareProcedure(database_.Handle(), "proc_updp_Send_Journal").front())),
      record_(std::move(
          PrepareProcedure(database_.Handle(), kind == Kind::kEmail ? "proc_addp_Email" : "proc_addp_SMS").front())),
      mark_(database_.Handle(), "UPDATE [Campaign Results] SET Processed = 1 WHERE RecordID = @RecordID"),
      curl_(curl_easy_init()) {
  Bind(journal_, "@CampaignID", campaign);
  Bind(journal_, "@Channel", kind == Kind::kText ? 1 : 2);
  for (SqliteStatement* statement : {&journal_, &record_})
    Bind(*statement, "@UserID", "Bench");
  Bind(record_, "@AC_Type", 1);
  Bind(record_, "@Attachments", "");
  Bind(record_, "@Status", 0);
  Bind(record_, "@MessageID", 4711);
  curl_easy_setopt(curl_, CURLOPT_WRITEFUNCTION, Drop);
  curl_easy_setopt(curl_, CURLOPT_NOSIGNAL, 1L);
  if (kind == Kind::kEmail) SetUpMail();
}

MailshotPeer::~MailshotPeer() {
  curl_easy_cleanup(curl_);
  curl_slist_free_all(recipients_);
}

void MailshotPeer::SetUpMail() {
  recipients_ = curl_slist_append(nullptr, "<customer@example.com>");
  curl_easy_setopt(curl_, CURLOPT_URL, address_.c_str());
  curl_easy_setopt(curl_, CURLOPT_MAIL_FROM, "<reminders@example.com>");
  curl_easy_setopt(curl_, CURLOPT_MAIL_RCPT, recipients_);
  curl_easy_setopt(curl_, CURLOPT_UPLOAD, 1L);
  curl_easy_setopt(curl_, CURLOPT_READFUNCTION, Give);
}

void MailshotPeer::Send(const std::vector<SentMessage>& messages) {
  for (const SentMessage& message : messages) {
    StepThrough(begin_);
    Note(message.recordId, 0);
    StepThrough(commit_);
    Post(message);
    StepThrough(begin_);
    Record(message);
    Note(message.recordId, 1);
    Bind(mark_, "@RecordID", message.recordId);
    StepThrough(mark_);
    StepThrough(commit_);
  }
}

void MailshotPeer::Post(const SentMessage& message) {
  Upload upload{message.bytes};
  if (kind_ == Kind::kEmail) {
    curl_easy_setopt(curl_, CURLOPT_READDATA, &upload);
    curl_easy_setopt(curl_, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(message.bytes.size()));
  } else {
    curl_easy_setopt(curl_, CURLOPT_URL, (address_ + message.bytes).c_str());
  }
  if (curl_easy_perform(curl_) != CURLE_OK) Fail("the peer could not send");
}

void MailshotPeer::Note(qint64 recordId, int state) {
  Bind(journal_, "@RecordID", recordId);
  Bind(journal_, "@State", state);
  StepThrough(journal_);
}

void MailshotPeer::Record(const SentMessage& message) {
  const bool mail = kind_ == Kind::kEmail;
  Bind(record_, mail ? "@AC_Ref" : "@Customer", message.customer);
  Bind(record_, mail ? "@Email_To" : "@Mobile_Number", message.recipient);
  Bind(record_, "@Email_Subject", message.subject);
  Bind(record_, mail ? "@Email_Text" : "@Message", message.text);
  StepThrough(record_);
}

}  // namespace qbx::bench
