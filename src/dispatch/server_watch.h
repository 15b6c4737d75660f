// Noticing that a server is away before every row of a run has failed.

#pragma once

namespace qbx {

/// What became of one message says about its server.
enum class ServerSign {
  kServes,       ///< it took the message, or refused it with a reason
  kUnknown,      ///< nothing: the message was not tried, or nobody knows what became of it
  kUnreachable,  ///< connecting or logging in failed
  kErrorPage,    ///< a status of 500 or more, or a web page of whatever status instead of a reply
};

/// Counts the failures in a row that say a server is away. One for each channel of a run.
class ServerWatch {
 public:
  static constexpr int kEnough = 3;  ///< failures in a row; texts that the user sees say "three"

  /// \return true when this failure is the one that says that the server is away; later ones do not say it again until it has served in between
  [[nodiscard]] bool Note(ServerSign sign) {
    if (sign == ServerSign::kServes) failures_ = 0;
    if (sign != ServerSign::kUnreachable && sign != ServerSign::kErrorPage) return false;
    return ++failures_ == kEnough;
  }

 private:
  int failures_ = 0;
};

}  // namespace qbx
