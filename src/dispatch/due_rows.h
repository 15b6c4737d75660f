// Which messages of a campaign the next run sends.

#pragma once

#include <QHash>
#include <QString>
#include <optional>

#include "database/statements.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"

namespace qbx {

/// The journal entries of a campaign's rows, and the refusals of their customers.
struct DueRows {
  QHash<qint64, JournalEntry> entries = {};
  QHash<qint64, RowRefusals> refused = {};

  /// The journal entry of a row, without messages that the row does not ask for.
  [[nodiscard]] JournalEntry Entry(qint64 recordId, bool wantsSms, bool wantsEmail) const {
    return entries.value(recordId).Wanted(wantsSms, wantsEmail);
  }
  /// Whether a run tries to send a message that an unprocessed row asks for.
  /// \param repeatDelivered  whether a delivered message is sent again when the other message of its row failed
  [[nodiscard]] bool WillTry(qint64 recordId, const JournalEntry& entry, Channel channel, const QString& mobile,
                             bool repeatDelivered) const;
};

/// Reads the rows to find out what a run would do.
/// \return nothing when they could not be read (already reported)
[[nodiscard]] std::optional<DueRows> ReadDueRows(Statements& statements, int campaignId);

}  // namespace qbx
