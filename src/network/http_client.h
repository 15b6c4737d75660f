// HTTP GET, as the SMS gateway needs it.

#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace qbx {

/// What came of a GET: the body, or what went wrong. Exactly one of `body` and `error` is set.
struct HttpReply {
  std::optional<QString> body = {};  ///< decoded as Windows-1252 unless the answer says UTF-8
  QString error = {};                ///< one sentence for the user, no secrets (the address without its query)
  /// With an error: the server may have acted on the request. Either it went out and no complete answer came back, or the answer was a status
  /// that a proxy gives after it passed the request on (500, 502, 504). False means that it did not: nothing was sent, or it was refused.
  bool inDoubt = false;
  int status = 0;       ///< of the answer (RFC 9110); 0 when none came
  bool isHtml = false;  ///< the answer says that it is a web page (type text/html)
};

/// One HTTP client, with one connection kept between requests. Not thread-safe.
class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Fetches an address and waits for the whole answer. A request is never sent a second time by itself, since it may
  /// cost money. A status of 400 or more, a redirect, a broken-off answer and a time-out are transport failures.
  /// \param url  sent as it stands: it is already percent-encoded, ASCII only
  [[nodiscard]] virtual HttpReply Get(const QString& url) = 0;
};

/// The real one, over libcurl. See curl_http_client.h.

}  // namespace qbx
