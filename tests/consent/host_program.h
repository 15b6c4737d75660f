// The host product, which changes customers, options and rows while the program runs.

#pragma once

#include "consent/ledger.h"
#include "consent/store_world.h"

namespace qbx::consent {

/// Makes each change both in the database and in the model.
class HostProgram {
 public:
  HostProgram(World& world, Ledger& ledger, Story& story, std::unique_ptr<Session> database, quint64 seed)
      : world_(world), ledger_(ledger), story_(story), random_(seed, 21), database_(std::move(database)) {}

  /// A customer takes back an answer (or gives one), is set to "No Marketing" or deleted; or an option is switched on.
  void Withdraw();
  /// Another program deletes a row, takes its flag away or marks it.
  void ChangeRow();

  [[nodiscard]] RandomSource& Random() { return random_; }
  [[nodiscard]] Session& Database() const { return *database_; }

 private:
  [[nodiscard]] Customer* Choose();
  void WithdrawOne(Customer& customer);
  void Disturb(int customer);

  World& world_;
  Ledger& ledger_;
  Story& story_;
  RandomSource random_;
  std::unique_ptr<Session> database_;
};

}  // namespace qbx::consent
