// A user's changes to one or many rows between two steps, and their undoing.

#include <algorithm>

#include "consent/round_course.h"

namespace qbx::consent {
namespace {

std::map<qint64, StoredRow> ByRecord(const std::vector<StoredRow>& stored) {
  std::map<qint64, StoredRow> rows;
  for (const StoredRow& row : stored)
    rows[row.record] = row;
  return rows;
}

bool SameState(const StoredRow& a, const StoredRow& b) {
  return a.sms == b.sms && a.mail == b.mail && a.letter == b.letter && a.processed == b.processed &&
         a.journal.sms == b.journal.sms && a.journal.email == b.journal.email;
}

bool CanBeTicked(const Row& row, Channel channel, const World& world) {
  const bool reaches = channel == Channel::kSms
                           ? row.mobile.size() >= kShortestMobileToSend && NumberOf(row.mobile).has_value()
                           : !AddressesOf(row.email).isEmpty();
  return reaches && AskAgain(row, channel, world) == Verdict::kMust;
}

}  // namespace

/// Some of the rows, in any order.
std::vector<qint64> Round::SomeRows() {
  std::vector<qint64> records;
  const int percent = random_.Pick(std::array{10, 50, 100});
  for (const Row& row : ledger_.rows)
    if (!row.gone && random_.Chance(percent)) records.push_back(row.record);
  std::reverse(records.begin(), records.end());
  return records;
}

/// PAT makes a change, which can then be undone.
/// \param records  the rows that it changes
void Round::Changes(const std::vector<qint64>& records, const std::function<void()>& change) {
  LastChange last{.run = counts_.runs};
  for (const qint64 record : records)
    last.rows.push_back({.before = *ledger_.Find(record)});
  change();
  if (records.empty()) return;
  const std::map<qint64, StoredRow> stored = ByRecord(ReadRows(host_.Database(), campaign_));
  for (ChangedRow& row : last.rows)
    if (const auto found = stored.find(row.before.record); found != stored.end()) row.after = found->second;
  last_ = std::move(last);
}

void Round::ChangeMany() {
  // Another computer cannot see that the process of a claim has died: it waits.
  LongSilence();
  user_->desk->results.DisplayResults(campaign_);
  const int die = random_.Between(0, 99);
  if (die < 40) {
    TickMany(random_.Chance(50) ? Channel::kSms : Channel::kEmail, random_.Chance(60));
  } else if (die < 65) {
    TakeManyOut();
  } else {
    UndoLast();
  }
  CheckRows();
}

void Round::TickMany(Channel channel, bool ticked) {
  const std::vector<qint64> records = SomeRows();
  std::vector<qint64> due;
  for (const qint64 record : records) {
    const Row& row = *ledger_.Find(record);
    if (row.Of(channel).wanted != ticked && (!ticked || CanBeTicked(row, channel, world_))) due.push_back(record);
  }
  std::sort(due.begin(), due.end());
  story_.Tell(QStringLiteral("PAT sets the %1 of %2 rows to %3").arg(NameOf(channel)).arg(records.size()).arg(ticked));
  Changes(due, [&] {
    RowChange change = user_->desk->edits.SetFlag(channel, ticked, records);
    std::sort(change.changed.begin(), change.changed.end());
    if (change.changed != due)
      story_.Fault(QStringLiteral("%1 rows changed; %2 had to: ").arg(change.changed.size()).arg(due.size()) +
                   ChangeText(change, QStringLiteral("set")));
    for (const qint64 record : due)
      ledger_.Find(record)->Of(channel).wanted = ticked;
  });
}

void Round::TakeManyOut() {
  const std::vector<qint64> records = SomeRows();
  story_.Tell(QStringLiteral("PAT takes %1 rows out").arg(records.size()));
  Changes(records, [&] {
    if (user_->desk->edits.TakeOut(records).changed.size() != records.size())
      story_.Fault(QStringLiteral("rows were left in"));
    for (const qint64 record : records)
      ledger_.Find(record)->gone = true;
  });
}

/// Undoes the last change. A row comes back unchanged if nothing happened to it since. After a run, only rows that were
/// taken out must come back.
void Round::UndoLast() {
  if (!last_) {
    if (user_->desk->edits.LastChange().isEmpty()) return;
    return story_.Fault(QStringLiteral("there is something to take back: ") + user_->desk->edits.LastChange());
  }
  story_.Tell(QStringLiteral("PAT takes back: ") + user_->desk->edits.LastChange());
  const std::map<qint64, StoredRow> stored = ByRecord(ReadRows(host_.Database(), campaign_));
  const RowChange change = user_->desk->edits.Undo();
  for (const ChangedRow& row : last_->rows) {
    const qint64 record = row.before.record;
    const auto found = stored.find(record);
    const bool untouched =
        row.after ? found != stored.end() && SameState(found->second, *row.after) : found == stored.end();
    const bool back = std::find(change.changed.begin(), change.changed.end(), record) != change.changed.end();
    if (back && !untouched) story_.Fault(row.before.Name() + QStringLiteral(" changed meanwhile, and was taken back"));
    if (!back && untouched && (!row.after || last_->run == counts_.runs))
      story_.Fault(row.before.Name() + QStringLiteral(" was not taken back"));
    if (back) *ledger_.Find(record) = row.before;
  }
  last_.reset();
}

/// Checks that the rows are all that nobody took out, with the model's flags.
void Round::CheckRows() {
  const std::vector<StoredRow> stored = ReadRows(host_.Database(), campaign_);
  CompareFlags(stored, ledger_, story_);
  const auto there = std::count_if(ledger_.rows.begin(), ledger_.rows.end(), [](const Row& row) { return !row.gone; });
  if (there != static_cast<std::ptrdiff_t>(stored.size()))
    story_.Fault(QStringLiteral("%1 rows are there; %2 must be").arg(stored.size()).arg(there));
}

}  // namespace qbx::consent
