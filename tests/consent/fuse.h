// Ends a process at one of its calls to the database.

#pragma once

#include <span>

#include "consent/watch.h"
#include "database/connection.h"
#include "database/session_wrapper.h"

namespace qbx::consent {

/// What happens at the last call. After the first one no process is left; the others fail the call.
enum class Burns { kEndsProcess, kDiskFull, kDeadlock };

/// Counts the calls of a process. At the last call the process ends, in the middle of a batch if there is one, or the
/// call fails.
struct Fuse {
  int left = 0;            ///< calls up to and including the last one; 0: does not count
  QString procedure = {};  ///< the last call is the next one of this procedure
  Burns burns = Burns::kEndsProcess;
  std::function<void()> burnt;  ///< removes the process from the running ones

  void PutOut() { *this = {.burnt = burnt}; }
};

/// A session whose every call burns the fuse.
class FusedSession final : public SessionWrapper {
 public:
  FusedSession(std::unique_ptr<Session> inner, Fuse& fuse) : SessionWrapper(std::move(inner)), fuse_(fuse) {}

  std::unique_ptr<RowSource> Execute(const QString& batch) override {
    const qsizetype second = batch.indexOf(QStringLiteral("; "));
    if (fuse_.left != 1 || second < 0 || fuse_.burns != Burns::kEndsProcess) return SessionWrapper::Execute(batch);
    fuse_.left = 0;
    (void)SessionWrapper::Execute(batch.left(second));
    End();
  }
  std::unique_ptr<RowSource> Call(const QString& procedure, std::span<Parameter> parameters) override {
    if (!fuse_.procedure.isEmpty() && procedure == fuse_.procedure) {
      fuse_.left = 0;
      if (fuse_.burns != Burns::kDiskFull) fuse_.procedure.clear();  // a full disk stays full
      End();
    }
    const Pause pause(fuse_, procedure);
    return SessionWrapper::Call(procedure, parameters);
  }
  [[nodiscard]] std::vector<Parameter> DescribeProcedure(const QString& procedure) override {
    const Pause pause(fuse_, procedure);
    return SessionWrapper::DescribeProcedure(procedure);
  }
  void Rollback() override {
    doomed_ = false;
    SessionWrapper::Rollback();
  }

 protected:
  void Ask(const std::function<void()>& call) override {
    if (doomed_) Deadlock();
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
    if (fuse_.burns == Burns::kDiskFull) throw DatabaseError(kStatementFailed, QStringLiteral("The disk is full."), {});
    if (fuse_.burns == Burns::kDeadlock) {
      doomed_ = InTransaction();
      Deadlock();
    }
    fuse_.burnt();
    throw ProcessEnds{};
  }
  [[noreturn]] static void Deadlock() {
    const QString text = QStringLiteral("Transaction was deadlocked. Rerun the transaction.");
    throw DatabaseError(kStatementFailed, text, {{1205, QStringLiteral("40001"), text}});
  }

  Fuse& fuse_;
  bool doomed_ = false;  ///< its transaction can only be rolled back
};

}  // namespace qbx::consent
