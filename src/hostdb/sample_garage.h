// The sample garage: a made-up business to try, demonstrate and measure the program with.

#pragma once

#include <QDate>

#include "hostdb/host_database.h"

namespace qbx {

/// What the sample depends on. The same values make the same file, byte for byte.
struct SampleGarageSettings {
  int customers = 2000;
  quint64 seed = 1;
  QDate asOf;  ///< the day that dates of reminders, invoices and campaigns are relative to; an invalid day is refused
};

/// Makes a garage at `path`: customers with vehicles, invoices of six years, reminders, lists, options (texts are on,
/// no real server is named) and saved campaigns, among them "Lapsed customers" and "MOT due". No record is of a real
/// person: mobile numbers come from the range reserved for fiction, mail addresses from the example domains. About one
/// customer in fifty is awkward on purpose (docs/host-database.md lists how), to show here what would fail with real
/// data. Memory does not grow with the number of customers.
[[nodiscard]] HostDatabaseProblem MakeSampleGarage(const QString& path, const SampleGarageSettings& settings,
                                                   ExistingFile existing);

}  // namespace qbx
