// HTTP GET, as the SMS gateway needs it.

#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace qbx {

/// What came of a GET: the body, or what went wrong. Exactly one of the two is set.
struct HttpReply {
  std::optional<QString> body;  ///< decoded as Windows-1252 unless the answer says UTF-8
  QString error;                ///< one sentence for the user, no secrets (the address without its query)
  bool uncertain = false;       ///< with an error: the request was written and no complete answer came, so it may have been acted on
};

/// One HTTP client, with one connection kept between requests. Not thread-safe.
class HttpClient {
 public:
  virtual ~HttpClient() = default;

  /// Fetches an address and waits for the whole answer.
  /// A status of 400 or more, a redirect, a broken-off answer and a time-out are transport failures.
  /// \param url  sent as it stands: it is already percent-encoded, ASCII only
  [[nodiscard]] virtual HttpReply Get(const QString& url) = 0;
};

/// The real one, over libcurl. See curl_http_client.h.

}  // namespace qbx
