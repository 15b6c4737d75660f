// Which messages of a campaign the next run tries.

#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "database/statements.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"

namespace qbx {

/// What is on record about the rows of a campaign, and what their customers say now.
struct DueRows {
  QHash<qint64, JournalEntry> entries = {};
  QHash<qint64, RowRefusals> refused = {};

  /// What is on record about the messages that a row asks for.
  [[nodiscard]] JournalEntry Entry(qint64 recordId, bool wantsSms, bool wantsEmail) const {
    return entries.value(recordId).Wanted(wantsSms, wantsEmail);
  }
  /// Whether a run tries a message of an unprocessed row that asks for it.
  /// \param repeatDelivered  where one half of a row failed, the half that was delivered goes again
  [[nodiscard]] bool WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile,
                             bool repeatDelivered) const;
};

/// Reads them for a look at what a run would do.
/// \return nothing when they could not be read (already reported)
[[nodiscard]] std::optional<DueRows> ReadDueRows(Statements& statements, int campaignId);

}  // namespace qbx
