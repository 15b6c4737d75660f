// Knows what happened to each message of a campaign, and checks it against the rules.

#pragma once

#include <QHash>
#include <set>

#include "consent/delivery.h"
#include "consent/rows.h"
#include "consent/story.h"
#include "dispatch/mailshot.h"

namespace qbx::consent {

/// A row in the database after a run.
struct StoredRow {
  qint64 record = 0;
  int customer = 0;
  QString vehicle;
  bool sms = false, mail = false, letter = false, processed = false;
  JournalEntry journal;
  QString letterPlace = {};  ///< the file or printer that may have its letter; empty: it is not in doubt
};

/// The outcome of a run.
struct RunReport {
  bool finished = false;      ///< it reached the last row, and no channel was paused
  bool textsSkipped = false;  ///< "No: Send Email Only"
  bool died = false;
  QStringList log;  ///< its lines of the results log
};

/// Whether a line of the results log gives a reason for the customer.
[[nodiscard]] bool NamesCustomer(const QStringList& log, int customer);

/// Is told of everything that is sent. The rules:
///   1. Nobody gets a message against their consent at the time when it was announced.
///   2. Nobody gets a message twice, unless the user agreed.
///   3. Every message is merged, and goes to the right address.
///   4. Every due message is sent, failed with a reason, left out with a reason, or in doubt. A row counts as processed
///      only when its messages went out.
class Ledger final : public Postbox {
 public:
  Ledger(const World& world, Story& story, const Clock& clock) : world_(world), story_(story), clock_(clock) {}

  std::vector<Row> rows;  ///< replaced by `Take` only
  MailshotTemplates templates;

  /// Call it after a query replaced the rows.
  void Take(std::vector<Row> selected);
  [[nodiscard]] Row* Find(qint64 record);
  [[nodiscard]] Row* Whose(const Delivery& delivery);
  /// \param tag  "{lastname}/{regno}"
  [[nodiscard]] Row* WithTag(const QString& tag);

  // The events of a run.
  void RunBegins();
  /// The program is about to announce a message of a row. The present consent counts.
  void Announces(qint64 record);
  /// The present state of a message.
  [[nodiscard]] Announcement Look(const Row& row, Channel channel) const;
  void RowStarts(qint64 record);
  void Received(const Delivery& delivery, Outcome outcome, bool arrived) override;
  /// A mail server refused this recipient before it got a message.
  void Refused(const QString& address);
  /// Question 1 was asked.
  /// \param customers  the number in the question
  void AskedToRepeat(int customers, bool yes);
  /// The number of customers with a due row of which only one message arrived.
  /// \param otherFailed  counts only customers whose other message a server refused, and who still may get both
  [[nodiscard]] std::set<int> HalfDelivered(bool otherFailed) const;
  /// A message of this row was on its way when its process ended, or when another run read the rows.
  void MayBeInDoubt(qint64 record);
  /// A person decided about the messages of a row that were in doubt.
  void Settled(const StoredRow& before, const StoredRow& now, bool arrived);
  void RunEnds(const RunReport& report, const std::vector<StoredRow>& stored);

  /// The number of messages that arrived, in all runs.
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
  QDate since_;  ///< the day on which the next message was begun
  int arrived_ = 0;
};

}  // namespace qbx::consent
