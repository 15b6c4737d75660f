// How a driver reports a failure.

#pragma once

#include <QString>
#include <exception>
#include <vector>

namespace qbx {

/// Number of the provider's unspecified error (E_FAIL as a signed 32-bit number): the connection is lost.
inline constexpr int kUnspecifiedError = -2147467259;

/// One entry of the provider's error list.
struct ProviderError {
  int number = 0;       ///< SQL Server's own number (2627, 547, ...), 0 when the provider has none
  QString sqlState;     ///< five characters, empty when unknown
  QString description;  ///< with the source prefixes in brackets, if any
};

/// Thrown by sessions, recordsets and commands. `number` and `description` are those of the pending error; `errors` is the whole list of the
/// provider, in its order.
class DatabaseError : public std::exception {
 public:
  DatabaseError(int number, QString description, std::vector<ProviderError> errors)
      : number_(number), description_(std::move(description)), errors_(std::move(errors)), what_(description_.toUtf8()) {}

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
