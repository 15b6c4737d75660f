// Reading the gateway's answers.

#pragma once

#include <QString>
#include <optional>

namespace qbx {

/// The reply to a send: fields separated by "|", each wrapped in one delimiter character on both sides, with a
/// separator at the end.
struct SmsReply {
  double balance = 0;  ///< credits left
  int messageId = 0;   ///< the gateway's number of the text
  int code = 0;        ///< below 2 means accepted

  [[nodiscard]] bool Accepted() const { return code < 2; }
};

/// Codes that this client adds to the gateway's.
inline constexpr int kCodeAccountRefused = 1000;
inline constexpr int kCodeNoCredits = 1002;

/// Whether a web page came instead of a reply: an error page, or the log-in page of a hot spot. An answer with at least
/// `fields` fields whose first one is a number is the gateway's, whatever its content type.
/// \param isHtml  whether the answer says that it is a web page
[[nodiscard]] bool IsWebPage(const QString& body, bool isHtml, int fields);

/// Fields of a complete reply to a send and to a credit query.
inline constexpr int kSendFields = 4;
inline constexpr int kCreditFields = 2;

/// \return nothing when the reply has fewer than four fields
[[nodiscard]] std::optional<SmsReply> ParseSmsReply(const QString& body);

/// The reply to a credit query.
struct CreditReply {
  bool accepted = false;  ///< whether the account is known
  double balance = 0;     ///< 0 when it is unknown
};
/// \return nothing when the reply has fewer than two fields
[[nodiscard]] std::optional<CreditReply> ParseCreditReply(const QString& body);

/// Why a mailshot text was refused, for the results log.
[[nodiscard]] QString SendRefusalReason(int code, const QString& mobile);
/// Why a test text was refused, for a message box. The gateway's code 33 has another meaning in this case.
[[nodiscard]] QString TestRefusalReason(int code);

}  // namespace qbx
