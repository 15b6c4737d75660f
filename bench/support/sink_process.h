// The loopback sink in a process of its own, so that the processor time of this one is the sender's alone.

#pragma once

#include <sys/types.h>

#include "loopback_sink.h"

namespace qbx::bench {

/// Made first thing in a program: it forks, which a process with threads or windows must not.
class SinkProcess {
 public:
  explicit SinkProcess(LoopbackSink::Protocol protocol);
  ~SinkProcess();
  SinkProcess(const SinkProcess&) = delete;
  SinkProcess& operator=(const SinkProcess&) = delete;

  [[nodiscard]] int Port() const { return port_; }
  /// Messages or requests taken since the last call.
  [[nodiscard]] int TakeCount() const;

 private:
  int channel_ = -1;  // a request is one byte, an answer one number
  int port_ = 0;
  pid_t process_ = 0;
};

}  // namespace qbx::bench
