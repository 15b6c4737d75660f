// How a driver reports a failure.

#pragma once

#include <QString>
#include <exception>
#include <vector>

namespace qbx {

/// Number of the provider's unspecified error (E_FAIL as a signed 32-bit number): the connection is lost.
inline constexpr int kUnspecifiedError = -2147467259;

// Numbers of the pending error when it is the provider's own or the client library's, as signed 32-bit numbers.
inline constexpr int kStatementFailed = -2147217900;       ///< the server refused the statement
inline constexpr int kConstraintFailed = -2147217873;      ///< a constraint was violated
inline constexpr int kCommandTimedOut = -2147217871;       ///< the command took too long, or a lock could not be had
inline constexpr int kCommandCancelled = -2147217842;      ///< the command was cancelled
inline constexpr int kAuthenticationFailed = -2147217843;  ///< login failed, or the database cannot be opened with it
inline constexpr int kItemNotFound = 3265;                 ///< no field or parameter of that name or position
inline constexpr int kWrongType = 3421;         ///< a value does not fit the field or parameter it is given to
inline constexpr int kNoDriver = 3706;          ///< this build has nothing that reaches such a server
inline constexpr int kObjectClosed = 3704;      ///< the object is closed
inline constexpr int kConnectionClosed = 3709;  ///< the connection is closed

/// One entry of the provider's error list.
struct ProviderError {
  int number = 0;       ///< SQL Server's own number (2627, 547, ...), 0 when the provider has none
  QString sqlState;     ///< five characters, empty when unknown
  QString description;  ///< with the source prefixes in brackets, if any
};

/// Thrown by sessions, recordsets and commands. `number` and `description` are those of the pending error; `errors` is
/// the whole list of the provider, in its order.
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
