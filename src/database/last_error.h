// The process-wide last error, shared by statements and e-mail.

#pragma once

#include <QString>

namespace qbx {

/// Filled by a failed `dbExecute` and by a failed e-mail; read by those who show or log it. One, owned by the Application.
struct LastError {
  QString LastEmailError;
  int LastEmailErrorNo = 0;
  bool DbErrorShown = false;  ///< the error interpretation ran

  void Reset() { *this = {}; }
};

}  // namespace qbx
