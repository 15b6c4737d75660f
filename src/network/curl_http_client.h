// HTTP over libcurl.

#pragma once

#include <functional>
#include <memory>

#include "network/http_client.h"

namespace qbx {

struct HttpLimits {
  int connectSeconds = 10;  ///< to connect
  int totalSeconds = 30;    ///< for the whole answer
  int bodyBytes = 1 << 20;  ///< a longer answer is a failure
};

/// Fetches http:// and https:// addresses and verifies certificates. A kept connection that the server has closed is
/// replaced. When a connection breaks after a request was sent, the request is not repeated and is in doubt.
class CurlHttpClient final : public HttpClient {
 public:
  /// \param pump    called about every 50 ms during a transfer; returning false ends it. May be empty.
  /// \param authorityFile  path of a PEM file with more certificate authorities; empty for none
  explicit CurlHttpClient(std::function<bool()> pump = {}, const HttpLimits& limits = {},
                          const QString& authorityFile = {});
  ~CurlHttpClient() override;
  CurlHttpClient(const CurlHttpClient&) = delete;
  CurlHttpClient& operator=(const CurlHttpClient&) = delete;

  [[nodiscard]] HttpReply Get(const QString& url) override;

 private:
  class Transfer;

  std::unique_ptr<Transfer> transfer_;
};

}  // namespace qbx
