#include "network/curl_http_client.h"

#include <QUrl>
#include <algorithm>

#include "network/curl_session.h"
#include "util/windows1252.h"

namespace qbx {
namespace {

/// The address as a user may see it: without user, password and query.
QString PublicAddress(const QUrl& url) {
  return url.adjusted(QUrl::RemoveUserInfo | QUrl::RemoveQuery | QUrl::RemoveFragment).toString();
}

/// The part of a malformed address that a user may see.
QString PublicText(const QString& malformed) {
  const QString text = malformed.section(u'?', 0, 0);
  const qsizetype at = text.lastIndexOf(u'@');
  return at < 0 ? text : QLatin1String("***") + text.mid(at);
}

bool IsWebAddress(const QString& url, const QString& host) {
  const auto isPrintableAscii = [](QChar character) {
    return character.unicode() > 0x20 && character.unicode() < 0x7F;
  };
  const bool isWeb = url.startsWith(QLatin1String("http://"), Qt::CaseInsensitive) ||
                     url.startsWith(QLatin1String("https://"), Qt::CaseInsensitive);
  return isWeb && std::all_of(url.begin(), url.end(), isPrintableAscii) && !host.isEmpty();
}

bool IsLoopback(const QString& host) {
  return host.compare(QLatin1String("localhost"), Qt::CaseInsensitive) == 0 || host.startsWith(QLatin1String("127.")) ||
         host == QLatin1String("::1");
}

/// A server or a proxy may answer with these after it acted on the request.
bool LeavesDoubt(long status) {
  return status == 500 || status == 502 || status == 504;
}

}  // namespace

class CurlHttpClient::Transfer {
 public:
  Transfer(std::function<bool()> pump, const HttpLimits& limits, const QString& authorityFile);

  [[nodiscard]] HttpReply Get(const QString& url);

 private:
  static std::size_t TakeBody(char* data, std::size_t size, std::size_t count, void* self);
  static int BeforeRequest(void* self, char*, char*, int, int);
  [[nodiscard]] QString Problem(CURLcode code, long status) const;
  [[nodiscard]] QByteArray Type() const;
  [[nodiscard]] QString Text() const;

  CurlSession session_;
  std::function<bool()> pump_;
  HttpLimits limits_;
  QByteArray body_;
  bool tooLong_ = false;
  bool requestSent_ = false;
};

CurlHttpClient::Transfer::Transfer(std::function<bool()> pump, const HttpLimits& limits, const QString& authorityFile)
    : pump_(std::move(pump)), limits_(limits) {
  session_.TrustAlso(authorityFile);
  session_.Set(CURLOPT_PROTOCOLS_STR, "http,https");
  session_.Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
  session_.Set(CURLOPT_FOLLOWLOCATION, 0L);
  session_.Set(CURLOPT_PATH_AS_IS, 1L);
  session_.Set(CURLOPT_CONNECTTIMEOUT, static_cast<long>(limits.connectSeconds));
  session_.Set(CURLOPT_TIMEOUT, static_cast<long>(limits.totalSeconds));
  session_.Set(CURLOPT_USERAGENT, "QBX-Marketing/1.0");
  session_.Set(CURLOPT_WRITEDATA, this);
  session_.Set(CURLOPT_WRITEFUNCTION, &Transfer::TakeBody);
  session_.Set(CURLOPT_PREREQDATA, this);
  session_.Set(CURLOPT_PREREQFUNCTION, &Transfer::BeforeRequest);
}

std::size_t CurlHttpClient::Transfer::TakeBody(char* data, std::size_t size, std::size_t count, void* self) {
  auto* transfer = static_cast<Transfer*>(self);
  const std::size_t bytes = size * count;
  const auto length = static_cast<qsizetype>(bytes);
  transfer->tooLong_ = transfer->body_.size() + length > transfer->limits_.bodyBytes;
  if (transfer->tooLong_) return 0;
  transfer->body_.append(data, length);
  return bytes;
}

/// libcurl repeats a request when a kept connection breaks before the answer. The server may have acted on the first
/// request, so the second is stopped here.
int CurlHttpClient::Transfer::BeforeRequest(void* self, char*, char*, int, int) {
  auto* transfer = static_cast<Transfer*>(self);
  if (transfer->requestSent_) return CURL_PREREQFUNC_ABORT;
  transfer->requestSent_ = true;
  return CURL_PREREQFUNC_OK;
}

HttpReply CurlHttpClient::Transfer::Get(const QString& url) {
  const QUrl parsed(url);
  const QString host = parsed.host();
  if (!IsWebAddress(url, host)) {
    return {.error = QStringLiteral("\"%1\" is not a web address.").arg(PublicText(url))};
  }
  body_.clear();
  tooLong_ = false;
  requestSent_ = false;
  session_.Set(CURLOPT_URL, url.toLatin1().constData());
  // The proxy named in the environment cannot reach servers of this computer.
  session_.Set(CURLOPT_PROXY, IsLoopback(host) ? "" : static_cast<const char*>(nullptr));
  const CURLcode code = session_.Perform(pump_);
  const auto status = session_.Info<long>(CURLINFO_RESPONSE_CODE);
  HttpReply reply;
  reply.status = static_cast<int>(status);
  reply.isHtml = Type().startsWith("text/html");
  if (code == CURLE_OK && status >= 200 && status < 300) {
    reply.body = Text();
  } else {
    reply.error = QStringLiteral("\"%1\" %2.").arg(PublicAddress(parsed), Problem(code, status));
    reply.inDoubt = code == CURLE_OK ? LeavesDoubt(status) : requestSent_;
  }
  return reply;
}

QString CurlHttpClient::Transfer::Problem(CURLcode code, long status) const {
  if (code == CURLE_OK && status >= 400) return QStringLiteral("answered with the error status %1").arg(status);
  if (code == CURLE_OK) return QStringLiteral("answered with the status %1 instead of a text").arg(status);
  if (tooLong_) return QStringLiteral("answered with more than %1 bytes").arg(limits_.bodyBytes);
  if (code == CURLE_ABORTED_BY_CALLBACK) {
    return requestSent_ ? QStringLiteral("was given up before the whole answer came") : QStringLiteral("was given up");
  }
  const QString reason = session_.ErrorText(code);
  if (!requestSent_) return QStringLiteral("could not be reached: %1").arg(reason);
  return QStringLiteral("did not answer completely: %1").arg(reason);
}

/// The content type of the answer in lower case; empty when it has none.
QByteArray CurlHttpClient::Transfer::Type() const {
  return QByteArray(session_.Info<const char*>(CURLINFO_CONTENT_TYPE)).trimmed().toLower();
}

QString CurlHttpClient::Transfer::Text() const {
  const QByteArray type = Type();
  const bool isUtf8 = type.contains("charset=utf-8") || type.contains("charset=\"utf-8\"");
  return isUtf8 ? QString::fromUtf8(body_) : FromWindows1252(body_);
}

CurlHttpClient::CurlHttpClient(std::function<bool()> pump, const HttpLimits& limits, const QString& authorityFile)
    : transfer_(std::make_unique<Transfer>(std::move(pump), limits, authorityFile)) {}

CurlHttpClient::~CurlHttpClient() = default;

HttpReply CurlHttpClient::Get(const QString& url) {
  return transfer_->Get(url);
}

}  // namespace qbx
