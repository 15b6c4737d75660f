// A library that is loaded before a program (LD_PRELOAD) and ends it at one of its calls that write, sync or send.
//
//   QBX_END_AT      number of the call, counted from 1; 0: count only
//   QBX_END_AFTER   "1": the call is made first
//   QBX_END_COUNT   file that gets the number of calls when the program ends by itself

#include <dlfcn.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/types.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cstdio>
#include <cstdlib>

namespace {

std::atomic<long> calls = 0;

long Wish(const char* name) {
  const char* text = std::getenv(name);
  return text == nullptr ? 0 : std::atol(text);
}

/// The next library's function of the same name.
template <typename Function>
Function Real(const char* name) {
  return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

/// Makes a call, unless the program ends before or after it.
template <typename Function, typename... Arguments>
auto Counted(Function function, Arguments... arguments) {
  static const long kEnd = Wish("QBX_END_AT");
  static const bool kAfter = Wish("QBX_END_AFTER") == 1;
  const bool ends = ++calls == kEnd;
  if (ends && !kAfter) raise(SIGKILL);
  const auto result = function(arguments...);
  if (ends) raise(SIGKILL);
  return result;
}

/// Standard output and error are for a person: nothing on a disk or a wire comes of them.
bool IsShown(int file) {
  return file == STDOUT_FILENO || file == STDERR_FILENO;
}

struct CountAtEnd {
  ~CountAtEnd() {
    const char* path = std::getenv("QBX_END_COUNT");
    if (path == nullptr) return;
    const long counted = calls;
    if (std::FILE* file = std::fopen(path, "w")) {
      std::fprintf(file, "%ld\n", counted);
      std::fclose(file);
    }
  }
} countAtEnd;

}  // namespace

#define QBX_COUNTED(result, name, declared, throws, ...)       \
  result name declared throws {                                \
    static const auto kReal = Real<result(*) declared>(#name); \
    return Counted(kReal, __VA_ARGS__);                        \
  }
#define QBX_COUNTED_FILE(result, name, declared, file, ...)                  \
  result name declared {                                                     \
    static const auto kReal = Real<result(*) declared>(#name);               \
    return IsShown(file) ? kReal(__VA_ARGS__) : Counted(kReal, __VA_ARGS__); \
  }

extern "C" {

QBX_COUNTED_FILE(ssize_t, write, (int file, const void* data, size_t size), file, file, data, size)
QBX_COUNTED_FILE(ssize_t, writev, (int file, const iovec* parts, int count), file, file, parts, count)
QBX_COUNTED(ssize_t, pwrite, (int file, const void* data, size_t size, off_t at), , file, data, size, at)
QBX_COUNTED(ssize_t, pwrite64, (int file, const void* data, size_t size, off64_t at), , file, data, size, at)
QBX_COUNTED(int, fsync, (int file), , file)
QBX_COUNTED(int, fdatasync, (int file), , file)
QBX_COUNTED(int, ftruncate, (int file, off_t size), noexcept, file, size)
QBX_COUNTED(int, ftruncate64, (int file, off64_t size), noexcept, file, size)
QBX_COUNTED(int, rename, (const char* from, const char* to), noexcept, from, to)
QBX_COUNTED(int, unlink, (const char* path), noexcept, path)
QBX_COUNTED(ssize_t, send, (int socket, const void* data, size_t size, int flags), , socket, data, size, flags)
QBX_COUNTED(ssize_t, sendmsg, (int socket, const msghdr* message, int flags), , socket, message, flags)
QBX_COUNTED(ssize_t, sendto,
            (int socket, const void* data, size_t size, int flags, const sockaddr* to, socklen_t length), , socket,
            data, size, flags, to, length)

}  // extern "C"
