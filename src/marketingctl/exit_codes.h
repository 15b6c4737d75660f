// The exit codes, for schedulers.

#pragma once

namespace qbx::ctl {

enum ExitCode {
  kDone = 0,        ///< also when nothing was left to do
  kRefused = 1,     ///< refused or failed; the reason is on stderr
  kUsage = 2,       ///< the command line is wrong
  kSomeFailed = 3,  ///< some rows failed or are in doubt
  kPaused = 4,
};

}  // namespace qbx::ctl
