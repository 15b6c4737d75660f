// The process-wide last error, shared by statements and e-mail.

#pragma once

#include <QString>

namespace qbx {

/// Set by a failed `dbExecute` and by a failed e-mail; read by whoever shows or logs it. The Application owns the only
/// one.
struct LastError {
  QString LastEmailError;
  int LastEmailErrorNo = 0;
  bool DbErrorShown = false;  ///< the error interpretation ran

  void Reset() { *this = {}; }
};

}  // namespace qbx
