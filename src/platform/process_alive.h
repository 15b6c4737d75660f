// Whether the process that left something behind still runs.

#pragma once

#include "platform/host_info.h"

namespace qbx {

/// Whether a process of this computer that wrote down its number and start runs beside the one that asks. The asking process itself counts as gone:
/// what bears its own number it left behind in an earlier life.
[[nodiscard]] inline bool RunsBeside(const HostInfo& host, qint64 process, qint64 start) {
  const qint64 running = host.ProcessStart(process);
  return process != host.ProcessId() && running != 0 && running == start;
}

}  // namespace qbx
