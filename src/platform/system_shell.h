// The real desktop and the real shell.

#pragma once

#include <QString>

#include "platform/shell.h"

namespace qbx {

/// `target` with "http://" in front when it does not start with "http" (any case).
[[nodiscard]] QString WithHttpPrefix(const QString& target);

class SystemShell final : public Shell {
 public:
  /// \param timeout  for a hidden command, in milliseconds; a command that takes longer is ended
  explicit SystemShell(int timeout = 30000) : timeout_(timeout) {}

  /// Passes the target to xdg-open unchanged and does not wait.
  bool Open(const QString& target) override;
  /// Runs the command with /bin/sh, with an empty input. The output is dropped.
  /// \return whether it ended in time with the exit code 0
  bool RunHidden(const QString& command) override;

 private:
  int timeout_;
};

}  // namespace qbx
