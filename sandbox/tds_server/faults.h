// What goes wrong on demand, and when.

#pragma once

#include <QString>
#include <mutex>
#include <optional>
#include <vector>

namespace qbx::tds {

enum class FaultKind {
  kHang,          ///< answers nothing any more, not even a cancelling
  kClose,         ///< ends the connection
  kReset,         ///< resets it
  kSlow,          ///< waits first; can be cancelled
  kError,         ///< answers with an error
  kNoEncryption,  ///< says that it cannot encrypt (at kConnect)
};

enum class FaultMoment {
  kConnect,   ///< before the first message
  kLogin,     ///< after the login has arrived
  kRequest,   ///< before a request is carried out
  kAnswered,  ///< after it was carried out, before its answer
  kRow,       ///< in the middle of a row of its answer
};

struct Fault {
  FaultKind kind = FaultKind::kClose;
  FaultMoment moment = FaultMoment::kRequest;
  QString match = {};      ///< counts only requests with this text, without regard to case; empty: all requests
  int skip = 0;            ///< so many requests go well first
  int times = 1;           ///< how often it happens; 0: until it is cleared
  int row = 1;             ///< of kRow: which one
  int milliseconds = 500;  ///< of kSlow
  int number = 50000;      ///< of kError, as text
  QString text = {};
};

/// The faults of one server. Any thread may ask for them and change them.
class Faults {
 public:
  void Add(const Fault& fault);
  void Clear();
  /// Counts one occasion.
  /// \return the fault that happens at it
  [[nodiscard]] std::optional<Fault> At(FaultMoment moment, const QString& text = {});
  /// How many have happened since they were cleared.
  [[nodiscard]] int Happened() const;

 private:
  struct Planned {
    Fault fault;
    int seen = 0;
    int happened = 0;
  };
  mutable std::mutex mutex_;
  std::vector<Planned> planned_;
};

}  // namespace qbx::tds
