// The real desktop and the real shell.

#pragma once

#include <QString>

#include "platform/shell.h"

namespace qbx {

/// `target` with "http://" in front when it does not start with "http" (any case).
[[nodiscard]] QString WithHttpPrefix(const QString& target);

class SystemShell final : public Shell {
 public:
  /// \param timeout  of a hidden command, in milliseconds; it is ended then
  explicit SystemShell(int timeout = 30000) : timeout_(timeout) {}

  /// Hands the target to xdg-open, as it stands, without waiting.
  bool Open(const QString& target) override;
  /// Runs the command with /bin/sh; its input is empty and its output is dropped.
  /// \return true when it ended in time with the exit code 0
  bool RunHidden(const QString& command) override;

 private:
  int timeout_;
};

}  // namespace qbx
