// A driver's errors in the words and numbers that the rest of the program knows.

#pragma once

#include <QString>
#include <vector>

#include "database/database_error.h"

namespace qbx {

/// One diagnostic record of a driver.
struct NativeError {
  int number = 0;    ///< the native one: the server's, or the driver's own
  QString sqlState;  ///< five characters; drivers differ too much in it to go by it, but for a time-out
  QString text;      ///< with the prefixes in brackets
};

/// Whether it is an error of the server, not one of the driver's own.
[[nodiscard]] bool IsFromServer(const NativeError& record);

/// What the session knows about a failed call besides its records.
enum class CallEnd {
  kFailed,
  kTimedOut,   ///< its time was over, and it was cancelled for that
  kCancelled,  ///< the user cancelled it
};

/// The failure of a statement or a call. Today's servers no longer word some failures as the interpretation of errors
/// looks for them, and quote names with double quotes where it cuts at single ones: both are put back. Of the driver's
/// own records those that only say that something failed are left out.
/// \param records  all of them, in the driver's order
/// \param dead     whether the driver counts the connection as dead since the call. Then the error is that of a lost
///                 connection, with what the server said before it behind it; except where the time was over or the
///                 user cancelled: a repetition would take as long again, and the next call finds the connection dead.
[[nodiscard]] DatabaseError FailureOfCall(const std::vector<NativeError>& records, bool dead,
                                          CallEnd end = CallEnd::kFailed);

/// What came between the attempt to connect and the connection, as far as a driver tells.
enum class NoConnection {
  kTimedOut,
  kEnded,         ///< the server ended the connection before it answered the login
  kNotEncrypted,  ///< the certificate is not trusted, or there is none. FreeTDS says the same of a reset connection.
  kUnknown,
};

/// \param errors   of the failure to connect
/// \param encrypt  whether an encrypted connection was asked for
[[nodiscard]] NoConnection WhyNoConnection(const std::vector<ProviderError>& errors, bool encrypt);

/// The failure to connect. What the server said counts; without a word of it the error is kNoDriver where the driver is
/// missing, else kUnspecifiedError.
/// \param driver   its name
/// \param encrypt  whether an encrypted connection was asked for
[[nodiscard]] DatabaseError FailureToConnect(const std::vector<NativeError>& records, const QString& driver,
                                             bool encrypt);

}  // namespace qbx
