#include "network/curl_session.h"

#include <sys/socket.h>
#include <unistd.h>

#include <QElapsedTimer>
#include <QFile>

namespace qbx {
namespace {

constexpr int kPumpInterval = 50;  // milliseconds

}  // namespace

CurlSession::CurlSession() : multi_(curl_multi_init()), easy_(curl_easy_init()) {
  curl_multi_setopt(multi_.get(), CURLMOPT_MAXCONNECTS, 1L);
  Set(CURLOPT_ERRORBUFFER, errorBuffer_);
  Set(CURLOPT_NOSIGNAL, 1L);
  Set(CURLOPT_OPENSOCKETDATA, this);
  Set(CURLOPT_OPENSOCKETFUNCTION, &CurlSession::OpenSocket);
  Set(CURLOPT_CLOSESOCKETDATA, this);
  Set(CURLOPT_CLOSESOCKETFUNCTION, &CurlSession::CloseSocket);
}

CurlSession::~CurlSession() = default;

curl_socket_t CurlSession::OpenSocket(void* self, curlsocktype, curl_sockaddr* address) {
  auto* session = static_cast<CurlSession*>(self);
  if (!session->mayConnect_) return CURL_SOCKET_BAD;
  const int made = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
  if (made < 0) return CURL_SOCKET_BAD;
  session->sockets_.push_back(made);
  return made;
}

int CurlSession::CloseSocket(void* self, curl_socket_t socket) {
  std::erase(static_cast<CurlSession*>(self)->sockets_, socket);
  return ::close(socket);
}

void CurlSession::CutConnections() {
  for (const curl_socket_t socket : sockets_)
    ::shutdown(socket, SHUT_RDWR);
}

void CurlSession::StopReading() {
  for (const curl_socket_t socket : sockets_)
    ::shutdown(socket, SHUT_RD);
}

void CurlSession::TrustAlso(const QString& authorityFile) {
  // The system's authorities still count: libcurl reads them from their own folder.
  if (!authorityFile.isEmpty()) Set(CURLOPT_CAINFO, QFile::encodeName(authorityFile).constData());
}

CURLcode CurlSession::Perform(const std::function<bool()>& pump) {
  errorBuffer_[0] = '\0';
  curl_multi_add_handle(multi_.get(), easy_.get());
  QElapsedTimer sincePump;
  sincePump.start();
  bool aborted = false;
  int running = 1;
  while (!aborted && curl_multi_perform(multi_.get(), &running) == CURLM_OK && running > 0) {
    curl_multi_poll(multi_.get(), nullptr, 0, kPumpInterval, nullptr);
    if (pump && sincePump.hasExpired(kPumpInterval)) {
      aborted = !pump();
      sincePump.start();
    }
  }
  CURLcode result = aborted ? CURLE_ABORTED_BY_CALLBACK : CURLE_FAILED_INIT;
  int left = 0;
  while (const CURLMsg* message = curl_multi_info_read(multi_.get(), &left)) {
    if (message->msg == CURLMSG_DONE) result = message->data.result;
  }
  curl_multi_remove_handle(multi_.get(), easy_.get());
  return result;
}

QString CurlSession::ErrorText(CURLcode code) const {
  const QString text = QString::fromUtf8(errorBuffer_[0] == '\0' ? curl_easy_strerror(code) : errorBuffer_);
  return text.trimmed();
}

}  // namespace qbx
