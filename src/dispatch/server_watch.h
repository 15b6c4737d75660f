// Noticing that a server is unavailable before every row of a run has failed.

#pragma once

namespace qbx {

/// What the result of one message says about its server.
enum class ServerSign {
  kServes,       ///< the server accepted the message, or refused it with a reason
  kUnknown,      ///< nothing: the message was not tried, or its result is unknown
  kUnreachable,  ///< connecting or logging in failed
  kErrorPage,    ///< a status of 500 or more, or a web page with any status instead of a reply
};

/// Counts successive failures that mean that a server is unavailable. Each channel of a run has one.
class ServerWatch {
 public:
  static constexpr int kEnough = 3;  ///< successive failures; texts for the user say "three"

  /// \return true for the failure that makes the server count as unavailable; not for later ones, until the server has
  ///         served again
  [[nodiscard]] bool Note(ServerSign sign) {
    if (sign == ServerSign::kServes) failures_ = 0;
    if (sign != ServerSign::kUnreachable && sign != ServerSign::kErrorPage) return false;
    return ++failures_ == kEnough;
  }

 private:
  int failures_ = 0;
};

}  // namespace qbx
