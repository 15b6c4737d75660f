// What all measuring programs share: time, medians, ending after an error.

#pragma once

#include <sched.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <vector>

namespace qbx::bench {

/// Ends the program, because a wrong result must not be measured.
[[noreturn]] inline void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

[[nodiscard]] inline double Median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::sort(values.begin(), values.end());
  return values[values.size() / 2];
}

template <typename Work>
[[nodiscard]] double Milliseconds(const Work& work) {
  const auto start = std::chrono::steady_clock::now();
  work();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

/// The processor time of this thread, in milliseconds. Other programs that use the processor and the disk hardly change
/// it.
[[nodiscard]] inline double ThreadMilliseconds() {
  timespec time = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// The processor time of all threads of this process, in milliseconds.
[[nodiscard]] inline double ProcessMilliseconds() {
  timespec time = {};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Keeps this process on its present processor. On a busy computer, it matters more than all else whether two threads
/// that talk to each other run on the same processor.
inline void StayOnOneProcessor() {
  cpu_set_t processors;
  CPU_ZERO(&processors);
  CPU_SET(static_cast<std::size_t>(sched_getcpu()), &processors);
  sched_setaffinity(0, sizeof processors, &processors);
}

}  // namespace qbx::bench
