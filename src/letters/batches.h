// Committing a few rows at a time.

#pragma once

#include <functional>
#include <optional>

#include "database/connection.h"

namespace qbx {

/// Writes in batches of a few rows a commit; what was written before a failure stays. Call `Finish` after the last
/// write.
class Batches {
 public:
  explicit Batches(Connection& connection) : connection_(connection) { transaction_.emplace(connection); }
  ~Batches() {
    try {
      Commit();
    } catch (const DatabaseError&) {
      // The failure that ended the run is the one that is reported.
    }
  }
  Batches(const Batches&) = delete;
  Batches& operator=(const Batches&) = delete;

  /// Commits the last batch.
  /// \throws DatabaseError; the last batch is then lost
  void Finish() { Commit(); }
  /// Commits, runs `work`, and begins the next batch. Events that run in `work` must not find the tables locked.
  void Between(const std::function<void()>& work) {
    Commit();
    work();
    transaction_.emplace(connection_);
  }

 private:
  void Commit() {
    if (transaction_) transaction_->Commit();
    transaction_.reset();
  }

  Connection& connection_;
  std::optional<Transaction> transaction_;
};

}  // namespace qbx
