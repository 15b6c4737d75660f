// How the customers of the sample garage come and go.

#pragma once

#include <vector>

#include "hostdb/random_source.h"

namespace qbx {

/// What kind of customer somebody is; decides when they were invoiced.
enum class CustomerHabit { kRegular, kLapsed, kOnce, kNew, kNever };

[[nodiscard]] CustomerHabit ChooseHabit(RandomSource& random);

/// One document of a customer.
struct SampleInvoice {
  int daysAgo = 0;     ///< below 0: ahead
  int recordType = 0;  ///< 0 invoice, 1 estimate, 2 booking
  int pence = 0;
};

/// Six years of documents, oldest first. A lapsed customer was invoiced more than two years ago and not since (some
/// came back within the last five months, which does not count as seen again).
/// \param invoices  cleared first
void MakeInvoices(RandomSource& random, CustomerHabit habit, std::vector<SampleInvoice>& invoices);

}  // namespace qbx
