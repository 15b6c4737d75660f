// Turns a driver's errors into DatabaseError, with the words and numbers that the program interprets.

#pragma once

#include <QString>
#include <vector>

#include "database/database_error.h"

namespace qbx {

/// One diagnostic record of a driver.
struct NativeError {
  int number = 0;    ///< the server's, or the driver's own
  QString sqlState;  ///< five characters; drivers disagree about most states, so few are looked at
  QString text;      ///< with its prefixes in brackets
};

/// Whether the record is the server's, not the driver's own.
[[nodiscard]] bool IsFromServer(const NativeError& record);

/// What the session knows about a failed call besides its records.
enum class CallEnd {
  kFailed,
  kTimedOut,   ///< cancelled because its time was over
  kCancelled,  ///< cancelled by the user
};

/// The failure of a statement or a call. Current servers word some errors differently from the words that the
/// interpretation of errors looks for, and put names in double quotes instead of single ones. The result has the words
/// and quotes of the interpretation. It leaves out the driver's records that only say that something failed.
/// \param records  all records, in the driver's order
/// \param dead     whether the connection was lost in this call. Then the error is that of a lost connection, followed
///                 by the server's errors. But a time-out and a cancelling keep their own error: the caller would
///                 repeat the call after a lost connection, which would take as long again. The next call reports the
///                 loss.
[[nodiscard]] DatabaseError FailureOfCall(const std::vector<NativeError>& records, bool dead,
                                          CallEnd end = CallEnd::kFailed);

/// Why an attempt to connect failed, as far as a driver tells it.
enum class NoConnection {
  kTimedOut,
  kEnded,         ///< the server ended the connection before it answered the login
  kNotEncrypted,  ///< there is no trusted certificate. FreeTDS reports a reset connection in the same way.
  kUnknown,
};

/// \param errors   the errors of the failed attempt
/// \param encrypt  whether the program wanted an encrypted connection
[[nodiscard]] NoConnection WhyNoConnection(const std::vector<ProviderError>& errors, bool encrypt);

/// The error of a failed attempt to connect: the server's error, if it sent one. Otherwise kNoDriver when the driver is
/// missing, else kUnspecifiedError.
/// \param driver   the driver's name
/// \param encrypt  whether the program wanted an encrypted connection
[[nodiscard]] DatabaseError FailureToConnect(const std::vector<NativeError>& records, const QString& driver,
                                             bool encrypt);

}  // namespace qbx
