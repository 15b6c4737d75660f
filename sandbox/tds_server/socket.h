// A connected socket that blocks, and how it can end.

#pragma once

#include <QByteArray>
#include <atomic>

namespace qbx::tds {

/// Owns a connected socket. One thread may read while another writes; Shut may come from any.
class Socket {
 public:
  explicit Socket(int handle);
  ~Socket();
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  /// Waits for bytes.
  /// \return none at the end of the connection
  [[nodiscard]] QByteArray Receive();
  /// \throws ProtocolError where the other side is gone
  void Send(QByteArrayView bytes);
  /// Wakes whoever reads or writes: the connection ends.
  void Shut();
  /// Frees it, once nobody reads or writes any more.
  void Close();
  /// Lets the connection end with a reset instead of a farewell, once nobody uses it any more.
  void ResetAtEnd();

 private:
  int handle_;
  int stop_;  // readable once it ends
  std::atomic<bool> resets_ = false;
};

}  // namespace qbx::tds
