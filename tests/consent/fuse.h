// Ends a process at one of its calls to the database.

#pragma once

#include <span>

#include "consent/watch.h"
#include "database/connection.h"
#include "database/session_wrapper.h"

namespace qbx::consent {

/// Counts the calls of a process. At the last call the process ends, in the middle of a batch if there is one, or the
/// call fails.
struct Fuse {
  int left = 0;                 ///< calls up to and including the last one; 0: does not count
  QString procedure = {};       ///< the last call is the next one of this procedure
  bool fails = false;           ///< the last call fails, and the process lives on
  std::function<void()> burnt;  ///< removes the process from the running ones
};

/// A session whose every call burns the fuse.
class FusedSession final : public SessionWrapper {
 public:
  FusedSession(std::unique_ptr<Session> inner, Fuse& fuse) : SessionWrapper(std::move(inner)), fuse_(fuse) {}

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    const qsizetype second = batch.indexOf(QStringLiteral("; "));
    if (fuse_.left != 1 || second < 0 || fuse_.fails) return SessionWrapper::Execute(batch);
    fuse_.left = 0;
    (void)SessionWrapper::Execute(batch.left(second));
    End();
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    if (!fuse_.procedure.isEmpty() && procedure == fuse_.procedure) {
      fuse_ = {.left = 0, .procedure = {}, .fails = fuse_.fails, .burnt = fuse_.burnt};
      End();
    }
    const Pause pause(fuse_, procedure);
    return SessionWrapper::Call(procedure, parameters);
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    const Pause pause(fuse_, procedure);
    return SessionWrapper::DescribeProcedure(procedure);
  }

 protected:
  void Ask(const std::function<void()>& call) override {
    if (fuse_.left > 0 && --fuse_.left == 0) End();
    call();
  }

 private:
  /// Releases a claim for a destructor, which must not throw. So the fuse never stops this call.
  class Pause {
   public:
    Pause(Fuse& fuse, const QString& procedure) : fuse_(fuse), left_(fuse.left) {
      pauses_ = procedure == QStringLiteral("proc_delp_Campaign_Claim");
      if (pauses_) fuse_.left = 0;
    }
    ~Pause() {
      if (pauses_) fuse_.left = left_;
    }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    Fuse& fuse_;
    int left_;
    bool pauses_ = false;
  };

  [[noreturn]] void End() {
    if (fuse_.fails) throw DatabaseError(kStatementFailed, QStringLiteral("The disk is full."), {});
    fuse_.burnt();
    throw ProcessEnds{};
  }

  Fuse& fuse_;
};

}  // namespace qbx::consent
