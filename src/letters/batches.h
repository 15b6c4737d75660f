// Writing a few rows a commit.

#pragma once

#include <functional>
#include <optional>

#include "database/connection.h"

namespace qbx {

/// Writes in batches: a few writes a commit, and what was written before a failure stays. `Finish` is called when all was written.
class Batches {
 public:
  explicit Batches(Session& session) : session_(session) { transaction_.emplace(session); }
  ~Batches() {
    try {
      Commit();
    } catch (const DatabaseError&) {
      // The failure that ended the run is the one that is told.
    }
  }
  Batches(const Batches&) = delete;
  Batches& operator=(const Batches&) = delete;

  /// Commits the last batch.
  /// \throws DatabaseError: what it held is not written
  void Finish() { Commit(); }
  /// Does what others see between two batches: events that run must not find the tables locked.
  void Between(const std::function<void()>& work) {
    Commit();
    work();
    transaction_.emplace(session_);
  }

 private:
  void Commit() {
    if (transaction_) transaction_->Commit();
    transaction_.reset();
  }

  Session& session_;
  std::optional<Transaction> transaction_;
};

}  // namespace qbx
