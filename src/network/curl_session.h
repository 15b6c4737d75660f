// What the HTTP client and the mail transport share in using libcurl.

#pragma once

#include <curl/curl.h>

#include <QString>
#include <functional>
#include <memory>
#include <vector>

namespace qbx {

/// One easy handle. It keeps its connection from transfer to transfer. During a transfer it pumps events twenty times a
/// second.
class CurlSession {
 public:
  CurlSession();
  CurlSession(const CurlSession&) = delete;
  CurlSession& operator=(const CurlSession&) = delete;
  ~CurlSession();

  [[nodiscard]] CURL* Handle() const { return easy_.get(); }
  template <typename Value>
  void Set(CURLoption option, Value value) {
    curl_easy_setopt(easy_.get(), option, value);
  }
  template <typename Value>
  [[nodiscard]] Value Info(CURLINFO info) const {
    Value value{};
    curl_easy_getinfo(easy_.get(), info, &value);
    return value;
  }

  /// Trusts the certificate authorities of a PEM file in addition to the system's.
  /// \param authorityFile  empty for none
  void TrustAlso(const QString& authorityFile);

  /// Runs the transfer for which the handle is set up.
  /// \param pump  called about every 50 ms; returning false ends the transfer
  [[nodiscard]] CURLcode Perform(const std::function<bool()>& pump);
  /// Whether transfers may open connections, or must use the kept one.
  void AllowConnecting(bool allow) { mayConnect_ = allow; }
  [[nodiscard]] bool Connected() const { return !sockets_.empty(); }
  /// Breaks the connections, so that libcurl sends no QUIT to a server that is gone or may not answer.
  void CutConnections();
  /// Stops reading: whatever libcurl still waits for ends at once. What it has sent still goes out.
  void StopReading();
  /// libcurl's own text for the last failure.
  [[nodiscard]] QString ErrorText(CURLcode code) const;

 private:
  struct EasyDeleter {
    void operator()(CURL* handle) const { curl_easy_cleanup(handle); }
  };
  struct MultiDeleter {
    void operator()(CURLM* handle) const { curl_multi_cleanup(handle); }
  };

  static curl_socket_t OpenSocket(void* self, curlsocktype purpose, curl_sockaddr* address);
  static int CloseSocket(void* self, curl_socket_t socket);

  std::vector<curl_socket_t> sockets_;
  bool mayConnect_ = true;
  char errorBuffer_[CURL_ERROR_SIZE] = {};
  std::unique_ptr<CURLM, MultiDeleter> multi_;
  std::unique_ptr<CURL, EasyDeleter> easy_;
};

}  // namespace qbx
