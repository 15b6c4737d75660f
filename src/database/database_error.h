// How a driver reports a failure.

#pragma once

#include <QString>
#include <exception>
#include <vector>

namespace qbx {

/// The provider's number of an unspecified error (E_FAIL as a signed 32-bit number): the connection is lost.
inline constexpr int kUnspecifiedError = -2147467259;

// Numbers of the pending error when the provider or the client library sets them, as signed 32-bit numbers.
inline constexpr int kStatementFailed = -2147217900;       ///< the server refused the statement
inline constexpr int kConstraintFailed = -2147217873;      ///< a constraint was violated
inline constexpr int kCommandTimedOut = -2147217871;       ///< the command took too long, or waited too long for a lock
inline constexpr int kCommandCancelled = -2147217842;      ///< the command was cancelled
inline constexpr int kAuthenticationFailed = -2147217843;  ///< the login failed, or may not open the database
inline constexpr int kUnusableSetting = 3001;              ///< a setting cannot be used; nothing was sent to a server
inline constexpr int kItemNotFound = 3265;                 ///< there is no field or parameter of that name or position
inline constexpr int kWrongType = 3421;                    ///< a value does not fit its field or parameter
inline constexpr int kNoDriver = 3706;                     ///< this build has no driver for the server
inline constexpr int kConnectionClosed = 3709;             ///< the connection is closed

/// One entry of the provider's error list.
struct ProviderError {
  int number = 0;       ///< SQL Server's own number (2627, 547, ...); 0 when the provider gives none
  QString sqlState;     ///< five characters, empty when unknown
  QString description;  ///< with the source prefixes in brackets, if any
};

/// Thrown by sessions, recordsets and commands. `number` and `description` are the pending error; `errors` is the
/// provider's whole list, in its order.
class DatabaseError : public std::exception {
 public:
  DatabaseError(int number, QString description, std::vector<ProviderError> errors)
      : number_(number),
        description_(std::move(description)),
        errors_(std::move(errors)),
        what_(description_.toUtf8()) {}

  [[nodiscard]] int Number() const { return number_; }
  [[nodiscard]] const QString& Description() const { return description_; }
  [[nodiscard]] const std::vector<ProviderError>& Errors() const { return errors_; }
  [[nodiscard]] bool ConnectionLost() const { return number_ == kUnspecifiedError; }
  [[nodiscard]] const char* what() const noexcept override { return what_.constData(); }

 private:
  int number_;
  QString description_;
  std::vector<ProviderError> errors_;
  QByteArray what_;
};

}  // namespace qbx
