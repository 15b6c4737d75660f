// What has become of every message of a campaign, and the rules that it is held against.

#pragma once

#include <QHash>
#include <set>

#include "consent/delivery.h"
#include "consent/rows.h"
#include "consent/story.h"
#include "dispatch/mailshot.h"

namespace qbx::consent {

/// What the database says of a row after a run.
struct StoredRow {
  qint64 record = 0;
  int customer = 0;
  QString vehicle;
  bool sms = false, mail = false, letter = false, processed = false;
  JournalEntry journal;
  bool letterDoubt = false;  ///< its letter was about to appear in a file
};

/// How a run went.
struct RunReport {
  bool finished = false;      ///< it came to the last row by itself, and no channel was paused
  bool textsSkipped = false;  ///< "No: Send Email Only"
  bool died = false;
  QStringList log;  ///< its lines of the results log
};

/// Whether a line of the results log names the customer: a reason.
[[nodiscard]] bool NamesCustomer(const QStringList& log, int customer);

/// Hears of everything that is sent. The rules:
///   1. Nobody who may not be contacted, as asked when the message was announced.
///   2. Nobody twice, unless the user agreed.
///   3. Nothing unmerged, and to the right address.
///   4. Every due message is sent, failed with a reason, left out with a reason, or in doubt. A row counts as processed
///      only when its messages went out.
class Ledger final : public Postbox {
 public:
  Ledger(const World& world, Story& story, const Clock& clock) : world_(world), story_(story), clock_(clock) {}

  std::vector<Row> rows;  ///< replaced by `Take` only
  MailshotTemplates templates;

  /// A query has replaced the rows.
  void Take(std::vector<Row> selected);
  [[nodiscard]] Row* Find(qint64 record);
  [[nodiscard]] Row* Whose(const Delivery& delivery);
  /// \param tag  "{lastname}/{regno}"
  [[nodiscard]] Row* WithTag(const QString& tag);

  // What a run does.
  void RunBegins();
  /// The program is about to announce a message of a row: what the customer says now counts.
  void Announces(qint64 record);
  /// What is true of a message now.
  [[nodiscard]] Announcement Look(const Row& row, Channel channel) const;
  void RowStarts(qint64 record);
  void Received(const Delivery& delivery, Outcome outcome, bool arrived) override;
  /// A mail server refused this recipient before it was given a message.
  void Refused(const QString& address);
  /// Question 1 was asked.
  /// \param customers  how many it named
  void AskedToRepeat(int customers, bool yes);
  /// Customers with a due row of which one half arrived.
  /// \param otherFailed  only those whose other half a server refused, and who may still be sent both
  [[nodiscard]] std::set<int> HalfDelivered(bool otherFailed) const;
  /// A message of this row was on its way when its process ended, or when another run looked.
  void MayBeInDoubt(qint64 record);
  /// A person has said what became of the messages of a row that were in doubt.
  void Settled(const StoredRow& before, const StoredRow& now, bool arrived);
  void RunEnds(const RunReport& report, const std::vector<StoredRow>& stored);

  /// Messages that reached somebody, over all runs.
  [[nodiscard]] int Arrived() const { return arrived_; }

 private:
  void CheckAnnounced(Row& row, Channel channel);
  void CheckContent(const Row& row, const Delivery& delivery);
  void CheckMark(Row& row, const StoredRow& stored);
  void CheckDoubt(const Row& row, const StoredRow& stored);
  void CheckDone(const Row& row, const StoredRow& stored, Channel channel, const RunReport& report);
  void Fault(const Row& row, Channel channel, const QString& what);

  const World& world_;
  Story& story_;
  const Clock& clock_;
  QHash<qint64, size_t> byRecord_;
  QHash<QString, size_t> byTag_;
  bool mustAsk_ = false;
  bool asked_ = false;
  bool repeating_ = false;
  QDate since_;  ///< the day when the message that comes next was begun
  int arrived_ = 0;
};

}  // namespace qbx::consent
