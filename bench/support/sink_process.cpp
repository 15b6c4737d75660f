#include "sink_process.h"

#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "rounds.h"

namespace qbx::bench {

namespace {

void Put(int channel, int number) {
  if (::write(channel, &number, sizeof number) != static_cast<ssize_t>(sizeof number)) Fail("the sink is gone");
}

int Get(int channel) {
  int number = 0;
  if (::read(channel, &number, sizeof number) != static_cast<ssize_t>(sizeof number)) Fail("the sink is gone");
  return number;
}

/// Ends when the process at the other end of the channel ends.
[[noreturn]] void Serve(LoopbackSink::Protocol protocol, int channel) {
  LoopbackSink sink(protocol);
  Put(channel, sink.Port());
  char request = 0;
  while (::read(channel, &request, 1) == 1)
    Put(channel, sink.TakeCount());
  ::_exit(0);
}

}  // namespace

SinkProcess::SinkProcess(LoopbackSink::Protocol protocol) {
  int ends[2] = {};
  if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) Fail("no channel to the sink");
  process_ = ::fork();
  if (process_ < 0) Fail("no process for the sink");
  if (process_ == 0) {
    ::close(ends[0]);
    Serve(protocol, ends[1]);
  }
  ::close(ends[1]);
  channel_ = ends[0];
  port_ = Get(channel_);
}

SinkProcess::~SinkProcess() {
  ::close(channel_);
  ::waitpid(process_, nullptr, 0);
}

int SinkProcess::TakeCount() const {
  const char request = 1;
  if (::write(channel_, &request, 1) != 1) Fail("the sink is gone");
  return Get(channel_);
}

}  // namespace qbx::bench
