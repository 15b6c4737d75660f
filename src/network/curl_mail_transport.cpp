#include "network/curl_mail_transport.h"

#include <algorithm>
#include <cstring>

#include "network/curl_session.h"
#include "network/smtp_dialogue.h"

namespace qbx {
namespace {

using Step = SmtpDialogue::Step;

constexpr int kShortestMasked = 4;
constexpr long kUploadBuffer = 16L * 1024;  // the least that libcurl accepts

struct ListDeleter {
  void operator()(curl_slist* list) const { curl_slist_free_all(list); }
};
using CurlList = std::unique_ptr<curl_slist, ListDeleter>;

QByteArray Bracketed(const QString& address) {
  return '<' + address.trimmed().toUtf8() + '>';
}

CurlList ListOf(const QStringList& addresses) {
  CurlList list;
  for (const QString& address : addresses)
    list.reset(curl_slist_append(list.release(), Bracketed(address).constData()));
  return list;
}

bool IsHostName(const QString& host) {
  return !host.isEmpty() && std::none_of(host.begin(), host.end(), [](QChar character) {
    return character.unicode() <= 0x20 || QStringLiteral("/@?#\\<>\"").contains(character);
  });
}

QByteArray AddressOf(const MailServer& server) {
  const bool implicitTls = server.useTls && server.implicitTls;
  const bool isIpv6 = server.host.contains(u':') && !server.host.startsWith(u'[');
  const QString host = isIpv6 ? u'[' + server.host + u']' : server.host;
  const int port = server.port != 0 ? server.port : server.useTls ? 587 : 25;
  return (QLatin1String(implicitTls ? "smtps://" : "smtp://") + host + u':' + QString::number(port)).toUtf8();
}

/// \return why an envelope cannot be sent to any server; without an error when it can
MailResult CheckEnvelope(const MailEnvelope& envelope) {
  if (envelope.recipients.isEmpty()) return {.error = QStringLiteral("The message has no recipient.")};
  const auto isBad = [](const QString& address) {
    return address.trimmed().isEmpty() || std::any_of(address.begin(), address.end(), [](QChar character) {
             return character.unicode() < 0x20 || character == u'<' || character == u'>';
           });
  };
  const auto error = [](const QString& address) {
    return QStringLiteral("\"%1\" is not an e-mail address.").arg(address.simplified());
  };
  if (isBad(envelope.sender)) return {.error = error(envelope.sender)};
  for (const QString& address : envelope.recipients) {
    if (isBad(address)) return {.error = error(address), .refusedRecipient = address};
  }
  return {};
}

bool IsTlsFailure(CURLcode code) {
  switch (code) {
    case CURLE_USE_SSL_FAILED:
    case CURLE_SSL_CONNECT_ERROR:
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_CERTPROBLEM:
    case CURLE_SSL_CIPHER:
    case CURLE_SSL_ISSUER_ERROR:
      return true;
    default:
      return false;
  }
}

}  // namespace

/// One connection to one server, from the first message to QUIT.
class CurlMailTransport::Connection {
 public:
  Connection(const MailServer& server, const QString& authorityFile, const MailLimits& limits);

  [[nodiscard]] const MailServer& Server() const { return server_; }
  [[nodiscard]] MailResult Send(const MailEnvelope& envelope, const std::function<void(int)>& progress);
  /// Whether the last message failed because the server had dropped the kept connection, before the server asked for
  /// any part of the message.
  [[nodiscard]] bool WasStale() const;
  /// \return false when the server did not answer 221
  [[nodiscard]] bool Quit(const std::function<void()>& pump);
  void Cut() { session_.CutConnections(); }

 private:
  static std::size_t GiveMessage(char* buffer, std::size_t size, std::size_t count, void* self);
  static std::size_t DropText(char*, std::size_t size, std::size_t count, void*) { return size * count; }
  static int Listen(CURL*, curl_infotype type, char* data, std::size_t size, void* self);
  [[nodiscard]] int Percent() const;
  [[nodiscard]] MailResult Judge() const;
  [[nodiscard]] QString Problem() const;
  [[nodiscard]] QString Reason() const;

  MailServer server_;
  MailLimits limits_;
  CurlSession session_;
  QByteArray url_;
  SmtpDialogue dialogue_;
  QByteArray message_;
  qsizetype handedOver_ = 0;
  /// Libcurl waits without a pump for the answer to its own QUIT, so after it nothing more is read.
  int quitsToAwait_ = 0;
  CURLcode code_ = CURLE_OK;
};

CurlMailTransport::Connection::Connection(const MailServer& server, const QString& authorityFile,
                                          const MailLimits& limits)
    : server_(server), limits_(limits), url_(AddressOf(server)) {
  session_.Set(CURLOPT_PROTOCOLS_STR, "smtp,smtps");
  session_.Set(CURLOPT_URL, url_.constData());
  session_.Set(CURLOPT_PROXY, "");
  session_.Set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(limits.connectSeconds));
  session_.Set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(limits.replySeconds));
  session_.Set(CURLOPT_TIMEOUT, static_cast<long>(limits.totalSeconds));
  session_.Set(CURLOPT_USE_SSL, static_cast<long>(server.useTls ? CURLUSESSL_ALL : CURLUSESSL_NONE));
  session_.TrustAlso(authorityFile);
  if (!server.userName.isEmpty()) {
    session_.Set(CURLOPT_USERNAME, server.userName.toUtf8().constData());
    session_.Set(CURLOPT_PASSWORD, server.password.toUtf8().constData());
  }
  // libcurl allocates twice this size for every message; with its default the heap would grow and shrink each time.
  session_.Set(CURLOPT_UPLOAD_BUFFERSIZE, kUploadBuffer);
  session_.Set(CURLOPT_READDATA, this);
  session_.Set(CURLOPT_READFUNCTION, &Connection::GiveMessage);
  session_.Set(CURLOPT_WRITEFUNCTION, &Connection::DropText);
  // Commands and answers come only through this callback, in their true order.
  session_.Set(CURLOPT_DEBUGDATA, this);
  session_.Set(CURLOPT_DEBUGFUNCTION, &Connection::Listen);
  session_.Set(CURLOPT_VERBOSE, 1L);
}

std::size_t CurlMailTransport::Connection::GiveMessage(char* buffer, std::size_t size, std::size_t count, void* self) {
  auto* connection = static_cast<Connection*>(self);
  const qsizetype left = connection->message_.size() - connection->handedOver_;
  const qsizetype length = std::min(left, static_cast<qsizetype>(size * count));
  std::memcpy(buffer, connection->message_.constData() + connection->handedOver_, static_cast<std::size_t>(length));
  connection->handedOver_ += length;
  return static_cast<std::size_t>(length);
}

int CurlMailTransport::Connection::Listen(CURL*, curl_infotype type, char* data, std::size_t size, void* self) {
  auto* connection = static_cast<Connection*>(self);
  const auto text = [&] { return QByteArray(data, static_cast<qsizetype>(size)); };
  if (type == CURLINFO_HEADER_OUT) {
    connection->dialogue_.ClientSaid(text());
    if (connection->dialogue_.QuitsSaid() > connection->quitsToAwait_) connection->session_.StopReading();
  }
  if (type == CURLINFO_HEADER_IN) connection->dialogue_.ServerSaid(text());
  return 0;
}

int CurlMailTransport::Connection::Percent() const {
  return message_.isEmpty() ? 0 : static_cast<int>(handedOver_ * 100 / message_.size());
}

MailResult CurlMailTransport::Connection::Send(const MailEnvelope& envelope, const std::function<void(int)>& progress) {
  dialogue_ = SmtpDialogue();
  message_ = envelope.message;
  handedOver_ = 0;
  const CurlList recipients = ListOf(envelope.recipients);
  session_.Set(CURLOPT_MAIL_FROM, Bracketed(envelope.sender).constData());
  session_.Set(CURLOPT_MAIL_RCPT, recipients.get());
  session_.Set(CURLOPT_UPLOAD, 1L);
  session_.Set(CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(message_.size()));
  if (progress) progress(0);
  code_ = session_.Perform([&] {
    if (progress) progress(Percent());
    return true;
  });
  session_.Set(CURLOPT_MAIL_RCPT, static_cast<curl_slist*>(nullptr));
  MailResult result = Judge();
  if (progress && result.outcome == MailOutcome::kSent) progress(100);
  return result;
}

MailResult CurlMailTransport::Connection::Judge() const {
  const bool answered = dialogue_.LastStep() == Step::kMessage && dialogue_.Code() != 0;
  if (code_ == CURLE_OK || (answered && dialogue_.Code() < 300)) return {.outcome = MailOutcome::kSent};
  const bool written = session_.Info<curl_off_t>(CURLINFO_SIZE_UPLOAD_T) >= message_.size();
  MailResult result;
  result.transport = !dialogue_.MessageRefused();
  result.unreachable = dialogue_.LastStep() < Step::kSender || dialogue_.LogInDemanded();
  if (dialogue_.LastStep() == Step::kMessage && written && !answered) result.outcome = MailOutcome::kUncertain;
  if (dialogue_.LastStep() == Step::kRecipient && dialogue_.MessageRefused())
    result.refusedRecipient = dialogue_.LastAddress();
  const QString problem =
      result.outcome == MailOutcome::kUncertain
          ? QStringLiteral("The mail server %1 did not confirm the message, which may have been sent").arg(server_.host)
          : Problem();
  result.error = problem + QLatin1String(": ") + Reason();
  // A short password also occurs in ordinary words, and masking these would reveal it.
  if (server_.password.size() >= kShortestMasked) result.error.replace(server_.password, QStringLiteral("***"));
  return result;
}

QString CurlMailTransport::Connection::Problem() const {
  const QString server = QStringLiteral("The mail server %1 ").arg(server_.host);
  const Step step = dialogue_.LastStep();
  if (IsTlsFailure(code_))
    return QStringLiteral("No secure connection to the mail server %1 could be made").arg(server_.host);
  if (code_ == CURLE_LOGIN_DENIED) return server + QStringLiteral("did not accept the user name or the password");
  if (dialogue_.Code() >= 400) {
    if (step == Step::kSender) return server + QStringLiteral("refused the sender %1").arg(dialogue_.LastAddress());
    if (step == Step::kRecipient)
      return server + QStringLiteral("refused the recipient %1").arg(dialogue_.LastAddress());
    return server + (step >= Step::kData ? QStringLiteral("refused the message") : QStringLiteral("refused to serve"));
  }
  if (code_ == CURLE_OPERATION_TIMEDOUT) return server + QStringLiteral("did not answer in time");
  if (step == Step::kConnect) return server + QStringLiteral("could not be reached");
  return QStringLiteral("The connection to the mail server %1 broke off").arg(server_.host);
}

/// The server's own words when it refused, otherwise libcurl's.
QString CurlMailTransport::Connection::Reason() const {
  const bool saidNo = dialogue_.LastAnswer().startsWith(u'4') || dialogue_.LastAnswer().startsWith(u'5');
  return saidNo ? dialogue_.LastAnswer() : session_.ErrorText(code_);
}

bool CurlMailTransport::Connection::WasStale() const {
  const bool reused = session_.Info<long>(CURLINFO_NUM_CONNECTS) == 0;
  const bool dropped = dialogue_.Code() == 421 || (dialogue_.Code() == 0 && code_ != CURLE_OPERATION_TIMEDOUT);
  return code_ != CURLE_OK && reused && dropped && dialogue_.LastStep() < Step::kMessage;
}

bool CurlMailTransport::Connection::Quit(const std::function<void()>& pump) {
  if (!session_.Connected()) return true;
  dialogue_ = SmtpDialogue();
  quitsToAwait_ = 1;
  session_.AllowConnecting(false);
  session_.Set(CURLOPT_UPLOAD, 0L);
  session_.Set(CURLOPT_NOBODY, 1L);
  session_.Set(CURLOPT_CUSTOMREQUEST, "QUIT");
  session_.Set(CURLOPT_TIMEOUT, static_cast<long>(limits_.leaveSeconds));
  (void)session_.Perform([&pump] {
    if (pump) pump();
    return true;
  });
  // libcurl would send another QUIT when it closes the connection.
  Cut();
  return dialogue_.QuitCode() == 221;
}

CurlMailTransport::CurlMailTransport(QString authorityFile, const MailLimits& limits, std::function<void()> pump)
    : authorityFile_(std::move(authorityFile)), limits_(limits), pump_(std::move(pump)) {}

CurlMailTransport::~CurlMailTransport() {
  pump_ = {};
  Close();
}

MailResult CurlMailTransport::Send(const MailServer& server, const MailEnvelope& envelope,
                                   const std::function<void(int)>& progress) {
  if (!IsHostName(server.host)) {
    return {.error = QStringLiteral("\"%1\" is not the name of a mail server.").arg(server.host.simplified()),
            .transport = true,
            .unreachable = true};
  }
  MailResult problem = CheckEnvelope(envelope);
  if (!problem.error.isEmpty()) return problem;
  if (connection_ && !(connection_->Server() == server)) Close();
  const auto connect = [&] { return std::make_unique<Connection>(server, authorityFile_, limits_); };
  if (!connection_) connection_ = connect();
  MailResult result = connection_->Send(envelope, progress);
  if (connection_->WasStale()) {
    connection_->Cut();
    connection_ = connect();
    result = connection_->Send(envelope, progress);
  }
  if (result.transport) {
    connection_->Cut();
    connection_.reset();
  }
  return result;
}

bool CurlMailTransport::Close() {
  if (!connection_) return true;
  const bool clean = connection_->Quit(pump_);
  connection_.reset();
  return clean;
}

}  // namespace qbx
