#include "dispatch/row_changes.h"

#include <QByteArrayList>
#include <QHash>
#include <QStringList>
#include <algorithm>
#include <array>
#include <numeric>
#include <span>

#include "database/procedure.h"
#include "dispatch/tick_reasons.h"
#include "results/flag_columns.h"
#include "results/key_list.h"

namespace qbx {

namespace {

/// Rows in one procedure call, so that its texts stay small.
constexpr std::size_t kBatch = 10'000;

/// The name of a flag and the question whether it can be ticked.
struct Flag {
  QLatin1String column;
  const char* address;
  const char* refusal;
  QString (*whyNot)(const QString& address, Refusal refused);
  const char* caption;

  [[nodiscard]] QString WhyNot(const Recordset& row) const {
    return whyNot(row.Field(QLatin1String(address)).ToText(),
                  static_cast<Refusal>(row.Field(QLatin1String(refusal)).ToInt()));
  }
};

constexpr std::array kFlags = {Flag{kSendSmsFlag, "Mobile", "SMS_Refusal", WhyNoText, "Send SMS"},
                               Flag{kSendEmailFlag, "Email", "Email_Refusal", WhyNoEmail, "Send Email"},
                               Flag{kSendLetterFlag, "Address", "Letter_Refusal", WhyNoLetter, "Send Letter"}};

const Flag& FlagOf(Channel channel) {
  return kFlags[static_cast<std::size_t>(channel) - 1];
}

QByteArray Bytes(const Recordset& rows, const char* column) {
  return rows.Field(QString::fromLatin1(column)).ToText().toUtf8();
}

qint64 Number(const Recordset& rows, const char* column) {
  return rows.Field(QString::fromLatin1(column)).ToInt();
}

/// Calls `work` for each batch of the rows.
template <typename Rows, typename Work>
void InBatches(const Rows& rows, const Work& work) {
  for (std::size_t first = 0; first < rows.size(); first += kBatch)
    work(std::span(rows).subspan(first, std::min(kBatch, rows.size() - first)));
}

QString Keys(std::span<const qint64> batch) {
  return KeyList({batch.begin(), batch.end()});
}

QString JsonList(const QByteArrayList& items) {
  return QString::fromUtf8('[' + items.join(',') + ']');
}

constexpr char kChangedSince[] = "changed since";
constexpr char kNotThere[] = "no longer in the results";

}  // namespace

QString RowsText(std::size_t rows) {
  return rows == 1 ? QStringLiteral("1 row") : QStringLiteral("%1 rows").arg(rows);
}

int RowChange::LeftAlone() const {
  return std::accumulate(leftAlone.begin(), leftAlone.end(), 0,
                         [](int sum, const auto& reason) { return sum + reason.second; });
}

QString ChangeText(const RowChange& change, const QString& done) {
  QString text = RowsText(change.changed.size()) + u' ' + done;
  if (change.leftAlone.empty()) return text + u'.';
  QStringList reasons;
  for (const auto& [reason, rows] : change.leftAlone)
    reasons += QStringLiteral("%1 %2").arg(rows).arg(reason);
  return text + QStringLiteral("; %1 left alone: ").arg(change.LeftAlone()) + reasons.join(QStringLiteral(", ")) + u'.';
}

/// The states of rows by key.
QHash<qint64, QByteArray> RowChanges::States(int campaignId, const std::vector<qint64>& rows) {
  QHash<qint64, QByteArray> states;
  Procedure read(connection_, "proc_selp_Results_Rows");
  InBatches(rows, [&](std::span<const qint64> batch) {
    Recordset found = read.Open({{"@CampaignID", campaignId}, {"@RecordIDs", Keys(batch)}});
    for (; !found.Eof(); found.MoveNext())
      states.insert(Number(found, "RecordID"), Bytes(found, "State"));
  });
  return states;
}

RowChange RowChanges::Change(int campaignId, const std::vector<qint64>& rows, const Work& work) {
  RowChange change;
  std::vector<qint64> keys = rows;
  std::sort(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  // No run can claim the campaign until the transaction ends. The embedded database has one writer at a time. On a
  // server, reading the claim and the rows locks them.
  Transaction transaction(connection_);
  change.refusal = guard_.LookAtClaim(campaignId);
  if (change.refusal) return change;
  LastChange kept;
  InBatches(keys, [&](std::span<const qint64> batch) { work(batch, change, kept); });
  if (!kept.tookOut) KeepAfter(campaignId, kept);
  transaction.Commit();
  std::erase_if(change.leftAlone, [](const auto& reason) { return reason.second == 0; });
  for (const KeptRow& row : kept.rows)
    change.changed.push_back(row.recordId);
  // A change without effect leaves the earlier one to Undo.
  if (kept.rows.empty()) return change;
  kept.what = RowsText(kept.rows.size()) + u' ' + kept.what;
  last_ = std::move(kept);
  return change;
}

/// Reads the states after a change.
void RowChanges::KeepAfter(int campaignId, LastChange& kept) {
  std::vector<qint64> keys;
  for (const KeptRow& row : kept.rows)
    keys.push_back(row.recordId);
  const QHash<qint64, QByteArray> states = States(campaignId, keys);
  for (KeptRow& row : kept.rows)
    row.after = states.value(row.recordId);
}

RowChange RowChanges::SetFlag(int campaignId, Channel flag, bool ticked, const std::vector<qint64>& rows) {
  const Flag& named = FlagOf(flag);
  Procedure read(connection_, "proc_selp_Results_Rows");
  Procedure set(connection_, "proc_updp_Results_Flag");
  return Change(campaignId, rows, [&](std::span<const qint64> batch, RowChange& change, LastChange& kept) {
    kept.what = QLatin1String(ticked ? "ticked: " : "unticked: ") + QLatin1String(named.caption);
    std::vector<qint64> due;
    Recordset found = read.Open({{"@CampaignID", campaignId}, {"@RecordIDs", Keys(batch)}});
    change.leftAlone[QLatin1String(kNotThere)] +=
        static_cast<int>(batch.size()) - static_cast<int>(found.RecordCount());
    for (; !found.Eof(); found.MoveNext()) {
      if (found.Field(QLatin1String(named.column)).ToBool() == ticked) continue;
      const QString reason = ticked ? named.WhyNot(found) : QString();
      if (!reason.isEmpty()) {
        ++change.leftAlone[reason];
        continue;
      }
      due.push_back(Number(found, "RecordID"));
      kept.rows.push_back({.recordId = due.back(), .before = Bytes(found, "State")});
    }
    if (due.empty()) return;
    set.Execute({{"@CampaignID", campaignId},
                 {"@RecordIDs", KeyList(due)},
                 {"@Column", QString::fromLatin1(named.column)},
                 {"@Ticked", ticked}});
  });
}

RowChange RowChanges::TakeOut(int campaignId, const std::vector<qint64>& rows) {
  Procedure takeOut(connection_, "proc_delp_Results_Rows");
  return Change(campaignId, rows, [&](std::span<const qint64> batch, RowChange& change, LastChange& kept) {
    kept.what = QStringLiteral("taken out");
    kept.tookOut = true;
    const std::size_t before = kept.rows.size();
    KeepWhole(campaignId, Keys(batch), kept);
    change.leftAlone[QLatin1String(kNotThere)] += static_cast<int>(batch.size() - (kept.rows.size() - before));
    takeOut.Execute({{"@CampaignID", campaignId}, {"@RecordIDs", Keys(batch)}});
  });
}

/// Keeps the whole rows that are about to be taken out.
void RowChanges::KeepWhole(int campaignId, const QString& keys, LastChange& kept) {
  Recordset found =
      Procedure(connection_, "proc_selp_Results_Rows_Whole").Open({{"@CampaignID", campaignId}, {"@RecordIDs", keys}});
  for (; !found.Eof(); found.MoveNext()) {
    // Earlier batches may have taken out the newest rows, so the maximum is kept.
    kept.newestRow = std::max(kept.newestRow, Number(found, "Newest_Row"));
    kept.rows.push_back({.recordId = Number(found, "RecordID"), .before = Bytes(found, "Whole")});
  }
}

bool RowChanges::Keep(int campaignId, qint64 recordId, const std::optional<SeenFlag>& seen, const QString& what,
                      const std::function<bool()>& change) {
  bool turned = false;
  const auto read = [&](LastChange& kept) {
    const Recordset row = Procedure(connection_, "proc_selp_Results_Rows")
                              .Open({{"@CampaignID", campaignId}, {"@RecordIDs", KeyList({recordId})}});
    if (row.Eof()) return;
    turned = seen && row.ColumnIndex(seen->column) >= 0 && row.Field(seen->column).ToBool() != seen->ticked;
    if (!turned) kept.rows.push_back({.recordId = recordId, .before = Bytes(row, "State")});
  };
  return KeepOne(campaignId, {.what = what}, read, [&] { return turned || change(); });
}

bool RowChanges::KeepTakenOut(int campaignId, qint64 recordId, const std::function<bool()>& takeOut) {
  const auto read = [&](LastChange& kept) { KeepWhole(campaignId, KeyList({recordId}), kept); };
  return KeepOne(campaignId, {.what = QStringLiteral("1 row taken out"), .tookOut = true}, read, takeOut);
}

bool RowChanges::KeepOne(int campaignId, LastChange kept, const std::function<void(LastChange& kept)>& read,
                         const std::function<bool()>& change) {
  std::optional<Transaction> transaction;
  try {
    transaction.emplace(connection_);
    read(kept);
  } catch (const DatabaseError&) {
    // For example after a lost connection, which the change opens again. The change matters more than Undo.
    transaction.reset();
    Forget();
    return change();
  }
  if (!change()) return false;
  if (!kept.tookOut) KeepAfter(campaignId, kept);
  transaction->Commit();
  if (!kept.rows.empty()) last_ = std::move(kept);
  return true;
}

RowChange RowChanges::Undo(int campaignId) {
  RowChange change;
  Transaction transaction(connection_);
  change.refusal = guard_.LookAtClaim(campaignId);
  if (change.refusal) return change;
  if (last_.tookOut)
    PutBack(campaignId, change);
  else
    TakeBack(campaignId, change);
  transaction.Commit();
  const auto left = static_cast<int>(last_.rows.size() - change.changed.size());
  if (left > 0) change.leftAlone[QLatin1String(kChangedSince)] = left;
  change.readAgain = last_.tookOut || left > 0;
  Forget();
  return change;
}

/// Puts rows back that were taken out.
void RowChanges::PutBack(int campaignId, RowChange& change) {
  Procedure put(connection_, "proc_addp_Results_Rows_Back");
  InBatches(last_.rows, [&](std::span<const KeptRow> batch) {
    QByteArrayList rows;
    for (const KeptRow& row : batch)
      rows += row.before;
    Recordset came =
        put.Open({{"@CampaignID", campaignId}, {"@NewestRow", last_.newestRow}, {"@Rows", JsonList(rows)}});
    for (; !came.Eof(); came.MoveNext())
      change.changed.push_back(Number(came, "RecordID"));
  });
}

/// Restores the states of rows.
void RowChanges::TakeBack(int campaignId, RowChange& change) {
  std::vector<qint64> keys;
  for (const KeptRow& row : last_.rows)
    keys.push_back(row.recordId);
  const QHash<qint64, QByteArray> now = States(campaignId, keys);
  Procedure put(connection_, "proc_updp_Results_Rows_Back");
  InBatches(last_.rows, [&](std::span<const KeptRow> batch) {
    QByteArrayList rows;
    for (const KeptRow& row : batch) {
      if (now.value(row.recordId) != row.after) continue;
      rows += '[' + QByteArray::number(row.recordId) + ',' + row.before + ']';
      change.changed.push_back(row.recordId);
    }
    if (!rows.isEmpty()) put.Execute({{"@CampaignID", campaignId}, {"@Rows", JsonList(rows)}});
  });
}

}  // namespace qbx
