#include "database/odbc/native_errors.h"

#include <QRegularExpression>
#include <QStringList>
#include <algorithm>
#include <array>

#include "database/server_errors.h"
#include "util/text.h"

namespace qbx {
namespace {

enum NativeNumber {
  kConflict = 547,
  kTerminated = 3621,
  kCannotOpenDatabase = 4060,
  kDatabaseChanged = 5701,
  kLanguageChanged = 5703,
  kLoginFailed = 18456,
  // the range of FreeTDS's own numbers
  kFirstOfFreeTds = 20000,
  kConnectionFailed = 20002,
  kTimeOut = 20003,
  kUnexpectedEnd = 20017,
  kSeeServerErrors = 20018,
  kLastOfFreeTds = 20999,
};

const QLatin1String kServerPrefix("[SQL Server]");
const QLatin1String kWarningState("01000");
const QLatin1String kTimeOutState("HYT00");

/// The words of a current server for an error, and the words that the interpretation of errors looks for. When `today`
/// is empty, a text in another language gets the known words in front of it.
struct Wording {
  int number;
  const char* today;
  const char* known;
};

constexpr std::array kWordings = {
    Wording{kConflict, "conflicted with the REFERENCE constraint", "conflicted with COLUMN REFERENCE constraint"},
    Wording{kConflict, "conflicted with the SAME TABLE REFERENCE constraint",
            "conflicted with COLUMN REFERENCE constraint"},
    Wording{kConflict, "FOREIGN KEY SAME TABLE constraint", "FOREIGN KEY constraint"},
    Wording{kConflict, "table 'dbo.", "table '"},
    Wording{kTerminated, "", "The statement has been terminated"},
    Wording{kLoginFailed, "", "Login failed for user"},
};

/// Where the server's own text begins, after the prefixes.
qsizetype StartOfText(const QString& text) {
  const qsizetype server = text.indexOf(kServerPrefix);
  if (server >= 0) return server + kServerPrefix.size();
  qsizetype at = 0;
  while (at < text.size() && text[at] == u'[') {
    const qsizetype end = text.indexOf(u']', at);
    if (end < 0) break;
    at = end + 1;
  }
  return at;
}

}  // namespace

bool IsFromServer(const NativeError& record) {
  const bool freeTds = record.number >= kFirstOfFreeTds && record.number <= kLastOfFreeTds;
  return record.number > 0 && !freeTds && record.text.contains(kServerPrefix);
}

namespace {

/// Whether a record tells nothing about a failure.
bool IsNoise(const NativeError& record) {
  return record.number == kDatabaseChanged || record.number == kLanguageChanged || record.number == kSeeServerErrors;
}

QString KnownWords(const NativeError& record) {
  static const QRegularExpression kQuotedName(QStringLiteral("\"([^\"']*)\""));
  QString text = record.text;
  text.replace(kQuotedName, QStringLiteral("'\\1'"));
  text.replace(QLatin1String("Adaptive Server"), QLatin1String("SQL Server"));
  for (const Wording& wording : kWordings) {
    if (wording.number != record.number) continue;
    const QLatin1String today(wording.today);
    const QLatin1String known(wording.known);
    if (!today.isEmpty())
      text.replace(today, known, Qt::CaseInsensitive);
    else if (!text.contains(known, Qt::CaseInsensitive))
      text.insert(StartOfText(text), known + QLatin1String(". "));
  }
  return text;
}

std::vector<ProviderError> InKnownWords(const std::vector<NativeError>& records, bool fromServerOnly) {
  std::vector<ProviderError> errors;
  for (const NativeError& record : records) {
    if (IsNoise(record) || (fromServerOnly && !IsFromServer(record))) continue;
    errors.push_back({record.number, record.sqlState, KnownWords(record)});
  }
  return errors;
}

/// The error that gives the whole its number and text. A server also reports a failed login when it cannot open the
/// database; then the database's error leads.
const ProviderError& LeadingError(const std::vector<ProviderError>& errors) {
  auto lead = std::ranges::find(errors, static_cast<int>(kCannotOpenDatabase), &ProviderError::number);
  if (lead == errors.end())
    lead = std::ranges::find_if(errors, [](const ProviderError& error) { return error.sqlState != kWarningState; });
  return lead == errors.end() ? errors.front() : *lead;
}

/// An error with a text of the program, followed by the server's errors.
DatabaseError OwnError(int number, ProviderError own, const std::vector<NativeError>& records) {
  std::vector<ProviderError> errors = InKnownWords(records, true);
  QString text = own.description;
  errors.insert(errors.begin(), std::move(own));
  return DatabaseError(number, std::move(text), std::move(errors));
}

/// \param record  a NativeError or a ProviderError
bool SaysTimeOut(const auto& record) {
  return record.sqlState == kTimeOutState || record.number == kTimeOut;
}

bool SaysEncryption(const ProviderError& error) {
  return error.number == kConnectionFailed || error.description.contains(QLatin1String("SSL")) ||
         error.description.contains(QLatin1String("certificate"), Qt::CaseInsensitive);
}

bool SaysEnd(const ProviderError& error) {
  return error.number == kUnexpectedEnd;
}

/// Whether the driver manager reports that the driver is not registered, or that its library cannot be loaded.
bool SaysNoDriver(const NativeError& record) {
  return record.sqlState == QLatin1String("IM002") || record.sqlState == QLatin1String("IM003") ||
         record.text.contains(QLatin1String("Can't open lib"));
}

DatabaseError DriverMissing(const QString& driver) {
  const QString package = EqualsNoCase(driver, QStringLiteral("FreeTDS"))
                              ? QStringLiteral("Install the package tdsodbc.")
                              : QStringLiteral("Install it, or leave its name out to use FreeTDS (package tdsodbc).");
  const QString text =
      QStringLiteral(
          "A SQL Server is reached through the ODBC driver \"%1\", which is not installed on this computer. %2 Leave the server name empty to use the database in the program folder.")
          .arg(driver, package);
  return DatabaseError(kNoDriver, text, {{0, QStringLiteral("IM002"), text}});
}

QString WordsFor(NoConnection reason) {
  switch (reason) {
    case NoConnection::kTimedOut:
      return QStringLiteral("Timeout expired. The server does not answer.");
    case NoConnection::kEnded:
      return QStringLiteral("The server ended the connection during the log-in.");
    case NoConnection::kNotEncrypted:
      return QStringLiteral(
          "The server offers no encrypted connection, its certificate is not trusted, or the connection was lost during the log-in.");
    case NoConnection::kUnknown:
      break;
  }
  return QStringLiteral("SQL Server does not exist or access denied.");
}

}  // namespace

DatabaseError FailureOfCall(const std::vector<NativeError>& records, bool dead, CallEnd end) {
  if (end == CallEnd::kCancelled)
    return OwnError(kCommandCancelled, {0, QStringLiteral("HY008"), QStringLiteral("Operation cancelled by user")}, {});
  if (end == CallEnd::kTimedOut || std::ranges::any_of(records, SaysTimeOut<NativeError>))
    return OwnError(kCommandTimedOut, {0, kTimeOutState, QStringLiteral("Timeout expired")}, records);
  if (dead) {
    const DatabaseError lost = LostConnectionError();
    return OwnError(lost.Number(), lost.Errors().front(), records);
  }
  std::vector<ProviderError> errors = InKnownWords(records, false);
  if (errors.empty())
    return DatabaseError(kStatementFailed, QStringLiteral("The database driver failed and gave no reason."), {});
  const ProviderError lead = LeadingError(errors);
  return DatabaseError(PendingNumber(lead.number), lead.description.mid(StartOfText(lead.description)),
                       std::move(errors));
}

NoConnection WhyNoConnection(const std::vector<ProviderError>& errors, bool encrypt) {
  if (std::ranges::any_of(errors, SaysTimeOut<ProviderError>)) return NoConnection::kTimedOut;
  if (std::ranges::any_of(errors, SaysEnd)) return NoConnection::kEnded;
  const bool notEncrypted = encrypt && std::ranges::any_of(errors, SaysEncryption);
  return notEncrypted ? NoConnection::kNotEncrypted : NoConnection::kUnknown;
}

DatabaseError FailureToConnect(const std::vector<NativeError>& records, const QString& driver, bool encrypt) {
  if (std::ranges::any_of(records, SaysNoDriver)) return DriverMissing(driver);
  std::vector<NativeError> said;
  std::ranges::copy_if(records, std::back_inserter(said), IsFromServer);
  std::erase_if(said, IsNoise);
  if (!said.empty()) return FailureOfCall(said, false);
  QStringList words;
  std::vector<ProviderError> errors = InKnownWords(records, false);
  for (const ProviderError& error : errors)
    words << error.description.mid(StartOfText(error.description));
  QString text = WordsFor(WhyNoConnection(errors, encrypt));
  if (!words.isEmpty()) text += QLatin1String(" (") + words.join(QLatin1String("; ")) + u')';
  return DatabaseError(kUnspecifiedError, text, std::move(errors));
}

}  // namespace qbx
