// Ends a process at one of its calls to the database.

#pragma once

#include "consent/watch.h"
#include "database/connection.h"
#include "database/session_wrapper.h"

namespace qbx::consent {

/// Counts the calls of a process; when it has burnt down the process ends, in the middle of a batch if there is one.
struct Fuse {
  int left = 0;                 ///< calls that are still made; 0: none is counted
  std::function<void()> burnt;  ///< takes the process out of the list of those that live
};

/// A session whose every call burns the fuse.
class FusedSession final : public SessionWrapper {
 public:
  FusedSession(std::unique_ptr<Session> inner, Fuse& fuse) : SessionWrapper(std::move(inner)), fuse_(fuse) {}

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    const qsizetype second = batch.indexOf(QStringLiteral("; "));
    if (fuse_.left != 1 || second < 0) return SessionWrapper::Execute(batch);
    fuse_.left = 0;
    (void)SessionWrapper::Execute(batch.left(second));
    End();
  }

 protected:
  void Ask(const std::function<void()>& call) override {
    if (fuse_.left > 0 && --fuse_.left == 0) End();
    call();
  }

 private:
  [[noreturn]] void End() {
    fuse_.burnt();
    throw ProcessEnds{};
  }

  Fuse& fuse_;
};

}  // namespace qbx::consent
