// When the customers of the sample garage came.

#pragma once

#include <vector>

#include "hostdb/random_source.h"

namespace qbx {

/// The kind of a customer, which decides when they were invoiced.
enum class CustomerHabit { kRegular, kLapsed, kOnce, kNew, kNever };

[[nodiscard]] CustomerHabit ChooseHabit(RandomSource& random);

/// One document of a customer.
struct SampleInvoice {
  int daysAgo = 0;     ///< below 0: in the future
  int recordType = 0;  ///< 0 invoice, 1 estimate, 2 booking
  int pence = 0;
};

/// Makes six years of documents, oldest first. A lapsed customer was last invoiced more than two years ago. A few
/// came back within the last five months, which does not count as being seen again.
/// \param invoices  cleared first
void MakeInvoices(RandomSource& random, CustomerHabit habit, std::vector<SampleInvoice>& invoices);

}  // namespace qbx
