// The sample garage: a believable made-up business to try the program on, to demonstrate it and to measure it.

#pragma once

#include <QDate>

#include "hostdb/host_database.h"

namespace qbx {

/// What the sample depends on. The same values give the same file, byte for byte.
struct SampleGarageSettings {
  int customers = 2000;
  quint64 seed = 1;
  QDate asOf;  ///< the day that reminders, invoices and the saved campaigns are laid around; invalid is refused
};

/// Makes a garage at `path`: customers with vehicles, invoices of six years and reminders, lists, options (texts on,
/// nothing that leads to a real server) and saved campaigns, among them "Lapsed customers" and "MOT due". No record
/// belongs to anybody: mobile numbers come from the range kept free for fiction, mail addresses from the example
/// domains. About one customer in fifty is awkward on purpose (docs/host-database.md lists how), so that what breaks on
/// real data breaks here. Memory does not grow with the number of customers.
[[nodiscard]] HostDatabaseProblem MakeSampleGarage(const QString& path, const SampleGarageSettings& settings,
                                                   ExistingFile existing);

}  // namespace qbx
