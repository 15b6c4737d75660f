// The options, lists and saved campaigns of the sample garage.

#pragma once

#include <QDate>

struct sqlite3;

namespace qbx {

/// The options of company "A". Texts and e-mail are switched on, but with servers that do not exist, so that nothing
/// can be sent by accident.
void FillSampleOptions(sqlite3* database);

/// Customer types, enquiry sources and makes.
void FillSampleLists(sqlite3* database);
inline constexpr int kSampleCustomerTypes = 12;  ///< numbered from 1
inline constexpr int kSampleEnquirySources = 10;

/// The saved campaigns, with dates relative to `asOf`. None of them has run yet.
void FillSampleCampaigns(sqlite3* database, QDate asOf);

}  // namespace qbx
