// Whether the process that left something behind still runs.

#pragma once

#include "platform/host_info.h"

namespace qbx {

/// Whether another process of this computer, which wrote down its number and start, still runs. The calling process
/// counts as gone: what bears its own number was left by an earlier process with the same number.
[[nodiscard]] inline bool RunsBeside(const HostInfo& host, qint64 process, qint64 start) {
  const qint64 running = host.ProcessStart(process);
  return process != host.ProcessId() && running != 0 && running == start;
}

}  // namespace qbx
