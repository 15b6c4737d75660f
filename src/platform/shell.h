// Handing work to the desktop and to the shell.

#pragma once

#include <QString>

namespace qbx {

class Shell {
 public:
  virtual ~Shell() = default;
  /// Opens an address or a document with the system's default program.
  /// \return whether the system accepted it
  virtual bool Open(const QString& target) = 0;
  /// Runs a command without a window and waits until it ends.
  virtual bool RunHidden(const QString& command) = 0;
};

/// The real one: xdg-open and /bin/sh. See system_shell.h.

}  // namespace qbx
