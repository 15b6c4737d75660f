#include "dispatch/send_journal.h"

namespace qbx {

namespace {

constexpr int kLongestReason = 255;

}  // namespace

SendJournal::SendJournal(Connection& connection, QString user)
    : connection_(connection),
      user_(std::move(user)),
      read_(connection, "proc_selp_Send_Journal"),
      write_(connection, "proc_updp_Send_Journal"),
      forget_(connection, "proc_delp_Send_Journal") {}

QHash<qint64, JournalEntry> SendJournal::Read(int campaignId) {
  return Entries(read_.Open({{"@CampaignID", campaignId}}));
}

QHash<qint64, JournalEntry> SendJournal::Entries(Recordset rows) {
  QHash<qint64, JournalEntry> entries;
  entries.reserve(rows.RecordCount());
  const int record = rows.ColumnIndex(QStringLiteral("RecordID"));
  const int channel = rows.ColumnIndex(QStringLiteral("Channel"));
  const int state = rows.ColumnIndex(QStringLiteral("State"));
  for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) {
    JournalEntry& entry = entries[rows.Field(record).ToInt()];
    entry.At(static_cast<Channel>(rows.Field(channel).ToInt())) = static_cast<JournalState>(rows.Field(state).ToInt());
  }
  return entries;
}

bool SendJournal::Write(qint64 recordId, int campaignId, Channel channel, JournalState state, const QString& reason) {
  return write_.Finds({{"@RecordID", recordId},
                       {"@CampaignID", campaignId},
                       {"@Channel", static_cast<int>(channel)},
                       {"@State", static_cast<int>(state)},
                       {"@UserID", user_},
                       {"@Reason", reason.isEmpty() ? Value() : Value(reason.simplified().left(kLongestReason))}});
}

bool SendJournal::BeginAgain(qint64 recordId, int campaignId, Channel channel) {
  Transaction transaction(connection_);
  forget_.Execute({{"@RecordID", recordId}, {"@Channel", static_cast<int>(channel)}});
  if (!Write(recordId, campaignId, channel, JournalState::kSending)) return false;
  transaction.Commit();
  return true;
}

}  // namespace qbx
