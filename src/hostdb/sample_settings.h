// What surrounds the customers of the sample garage: its options, its lists, its saved campaigns.

#pragma once

#include <QDate>

struct sqlite3;

namespace qbx {

/// The options of company "A": texts and e-mail switched on, but with servers that do not exist, so that nothing can
/// leave by accident.
void FillSampleOptions(sqlite3* database);

/// Customer types, enquiry sources and makes.
void FillSampleLists(sqlite3* database);
inline constexpr int kSampleCustomerTypes = 12;  ///< numbered from 1
inline constexpr int kSampleEnquirySources = 10;

/// The saved campaigns, none of them run yet, laid around a day.
void FillSampleCampaigns(sqlite3* database, QDate asOf);

}  // namespace qbx
