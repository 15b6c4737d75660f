// A connected, blocking socket, and the ways it can end.

#pragma once

#include <QByteArray>
#include <atomic>

namespace qbx::tds {

/// Owns a connected socket. One thread may read while another writes. Shut may be called from any thread.
class Socket {
 public:
  explicit Socket(int handle);
  ~Socket();
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  /// Waits for bytes.
  /// \return none at the end of the connection
  [[nodiscard]] QByteArray Receive();
  /// \throws ProtocolError when the other side is gone
  void Send(QByteArrayView bytes);
  /// Ends the connection and wakes the threads that read or write.
  void Shut();
  /// Frees the socket. No thread may use it any more.
  void Close();
  /// Makes the connection end with a reset. No thread may use it any more.
  void ResetAtEnd();

 private:
  int handle_;
  int stop_;  // becomes readable at the end
  std::atomic<bool> resets_ = false;
};

}  // namespace qbx::tds
