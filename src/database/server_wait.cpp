#include "database/server_wait.h"

#include <algorithm>
#include <memory>

namespace qbx {
namespace {

using std::chrono::milliseconds;

constexpr int kShowAfter = 1'000;           // milliseconds
constexpr auto kSlice = milliseconds(100);  // short, so that Cancel takes effect soon
// A command that was cancelled asks again sooner than that, and a person acts later.
constexpr int kSameCommand = 500;  // milliseconds

}  // namespace

/// One wait. The innermost says whether the user may cancel.
class ServerWait::Stretch {
 public:
  Stretch(ServerWait& all, MayCancel mayCancel) : all_(all), outer_(all.innermost_) {
    const bool around = outer_ != nullptr && outer_->mayCancel_;
    mayCancel_ = mayCancel == MayCancel::kAsAround ? around : mayCancel == MayCancel::kYes;
    all_.innermost_ = this;
    if (outer_ == nullptr) OpenBox();
  }
  ~Stretch() {
    all_.innermost_ = outer_;
    if (outer_ != nullptr) return;
    if (all_.box_->Cancelled()) all_.sinceCancelled_.start();
    all_.box_.reset();
  }
  Stretch(const Stretch&) = delete;
  Stretch& operator=(const Stretch&) = delete;

  [[nodiscard]] bool Wait(milliseconds time) {
    UserInterface& ui = all_.diagnostics_.ui;
    for (;; time -= kSlice) {
      if (!all_.box_->GoOn(mayCancel_)) {
        ++all_.cancellations_;
        return false;
      }
      if (time.count() <= 0) return true;
      ui.Wait(static_cast<int>(std::min(time, kSlice).count()));
      if (mayCancel_ && ui.QuitRequested()) return false;
    }
  }

 private:
  /// Cancel also holds for what the cancelled command asks next.
  void OpenBox() {
    all_.box_.emplace(all_.diagnostics_, QStringLiteral("Waiting for the database"), kShowAfter);
    if (all_.CancelHolds()) all_.box_->Cancel();
  }

  ServerWait& all_;
  Stretch* outer_;
  bool mayCancel_ = false;
};

WaitForServer ServerWait::Begin(MayCancel mayCancel) {
  const auto stretch = std::make_shared<Stretch>(*this, mayCancel);
  return [stretch](milliseconds time) { return stretch->Wait(time); };
}

bool ServerWait::CancelHolds() const {
  return sinceCancelled_.isValid() && sinceCancelled_.elapsed() < kSameCommand;
}

void ServerWait::TellOfFailure(const std::function<void()>& show) {
  const bool held = CancelHolds();
  show();
  if (held) sinceCancelled_.start();
}

}  // namespace qbx
