// HTTP GET, as the SMS gateway needs it.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// The result of a GET: the body or the error. Exactly one of `body` and `error` is set.
struct HttpReply {
  std::optional<QString> body = {};  ///< decoded as Windows-1252 unless the answer says UTF-8
  /// One sentence for the user, without secrets (the address is shown without its query).
  QString error = {};
  /// Set only with an error: the server may have acted on the request. Either it was sent and no complete answer came,
  /// or the answer was a status that a proxy also gives after passing the request on (500, 502, 504). False means that
  /// nothing was sent or that the request was refused.
  bool inDoubt = false;
  int status = 0;       ///< of the answer (RFC 9110); 0 when there was none
  bool isHtml = false;  ///< whether the answer says that it is a web page (type text/html)
};

/// One HTTP client, with one connection kept between requests. Not thread-safe.
class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Fetches an address and waits for the whole answer. Never sends a request twice, because a request may cost money.
  /// A status of 400 or more, a redirect, an incomplete answer and a time-out are transport failures.
  /// \param url  sent unchanged: it is already percent-encoded, ASCII only
  [[nodiscard]] virtual HttpReply Get(const QString& url) = 0;
};

/// The real one uses libcurl. See curl_http_client.h.

}  // namespace qbx
