// The loopback sink in another process, so that this process only uses the processor time of the sender.

#pragma once

#include <sys/types.h>

#include "loopback_sink.h"

namespace qbx::bench {

/// Make it first in a program, because it forks, which a process with threads or windows must not do.
class SinkProcess {
 public:
  explicit SinkProcess(LoopbackSink::Protocol protocol);
  ~SinkProcess();
  SinkProcess(const SinkProcess&) = delete;
  SinkProcess& operator=(const SinkProcess&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  /// The number of messages or requests since the last call.
  [[nodiscard]] int TakeCount() const;

 private:
  int channel_ = -1;  // each request is one byte, each answer one number
  int port_ = 0;
  pid_t process_ = 0;
};

}  // namespace qbx::bench
