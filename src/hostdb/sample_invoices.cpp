#include "hostdb/sample_invoices.h"

namespace qbx {

namespace {

constexpr int kSixYears = 2190;
constexpr int kOverTwoYears = 740;

int Amount(RandomSource& random) {
  const int kind = random.Between(0, 99);
  if (kind < 25) return 5485;                            // an MOT
  if (kind < 65) return random.Between(12000, 38000);    // a service
  if (kind < 95) return random.Between(4000, 95000);     // a repair
  if (kind < 99) return random.Between(100000, 350000);  // an engine, a gearbox
  return -random.Between(1000, 9000);                    // a credit
}

/// Adds visits from one number of days ago down to another.
void AddVisits(RandomSource& random, int from, int to, std::vector<SampleInvoice>& invoices) {
  for (int day = from; day >= to; day -= random.Between(120, 420)) {
    if (random.Chance(15)) invoices.push_back({day + 1, 1, Amount(random)});
    invoices.push_back({day, 0, Amount(random)});
  }
}

}  // namespace

CustomerHabit ChooseHabit(RandomSource& random) {
  const int share = random.Between(0, 99);
  if (share < 60) return CustomerHabit::kRegular;
  if (share < 72) return CustomerHabit::kLapsed;
  if (share < 80) return CustomerHabit::kOnce;
  if (share < 95) return CustomerHabit::kNew;
  return CustomerHabit::kNever;
}

void MakeInvoices(RandomSource& random, CustomerHabit habit, std::vector<SampleInvoice>& invoices) {
  invoices.clear();
  switch (habit) {
    case CustomerHabit::kRegular:
      AddVisits(random, random.Between(300, kSixYears), 0, invoices);
      break;
    case CustomerHabit::kLapsed:
      AddVisits(random, random.Between(1100, kSixYears), random.Between(kOverTwoYears, 1100), invoices);
      if (random.Chance(15)) invoices.push_back({random.Between(1, 150), 0, Amount(random)});
      break;
    case CustomerHabit::kOnce:
      invoices.push_back({random.Between(5, kSixYears), 0, Amount(random)});
      break;
    case CustomerHabit::kNew:
      AddVisits(random, random.Between(5, 540), 0, invoices);
      break;
    case CustomerHabit::kNever:
      break;
  }
  if (habit != CustomerHabit::kNever && random.Chance(5)) invoices.push_back({-random.Between(1, 30), 2, 0});
}

}  // namespace qbx
