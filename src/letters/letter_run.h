// The letters of a campaign: they are made, shown or saved, and marked.

#pragma once

#include <QString>
#include <vector>

#include "dispatch/campaign_claim.h"
#include "dispatch/results_log.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"
#include "letters/letter_marks.h"
#include "letters/letters_table.h"
#include "printing/print_report.h"
#include "results/counters.h"

namespace qbx {

/// What making letters works with, by reference.
struct LetterServices {
  Statements& statements;
  EventLog& events;
  ResultsLog& resultsLog;
  Counters& counters;
  ReportPrinter& reports;
  const Options& options;
  const StartupValues& startup;
  const HostInfo& host;
  Diagnostics diagnostics;
};

/// What is to become of the letters.
struct LetterChoices {
  QString pdfFile = {};       ///< the file to write; empty to show the letters
  int firstLetter = 0;        ///< in the file, from 1; 0 for the first
  int lastLetter = 0;         ///< 0 for the last
  bool markProcessed = true;  ///< false: letters that come out are not recorded as sent
};

struct LetterSummary {
  bool done = false;  ///< false when refused, failed or cancelled; the user was told
  int letters = 0;    ///< number made; for a file, the number in it
  int leftOut = 0;    ///< because of their address, or because the customer said no
  int processed = 0;  ///< number of rows marked
};

/// Shows the progress of making letters.
class LetterObserver {
 public:
  virtual ~LetterObserver() = default;
  /// \param total  at most this many letters
  virtual void Begins(int total) = 0;
  virtual void Progress(int done) = 0;
  virtual void Ends() = 0;
  /// Asked after each letter. True ends the making; the letters made so far are dropped.
  [[nodiscard]] virtual bool Cancelled() = 0;
};

/// One run. A letter is recorded as "sending" when it is made, and as "sent" as soon as it was printed or saved; only
/// rows that become "sent" are marked. A customer who said no since the query gets none. A run that broke off can be
/// repeated: it makes the letters that did not go out. Letters that went out once and are made again keep their record.
///
/// A run that is killed while its file is being saved or handed to the printer leaves these letters in doubt, and so
/// does one that is not told whether the printer got them. The next run asks about them.
///
/// The campaign is claimed from the first letter until the destructor, so that no other run makes letters of it.
class LetterRun : private ReportFollower {
 public:
  LetterRun(const LetterServices& services, LetterObserver& observer);

  /// \param letter  the template in its stored form
  LetterSummary GenerateLetters(int campaignId, const QString& letter, const LetterChoices& choices);

 private:
  [[nodiscard]] bool MayBegin(const QString& letter);
  [[nodiscard]] bool SettleDoubt();
  [[nodiscard]] bool AskForAgain();
  [[nodiscard]] int CountLetters();
  [[nodiscard]] bool MakeLetters(const QString& letter, LettersTable& letters);
  /// \return false when it failed or was cancelled
  [[nodiscard]] bool CreateLetters(const QString& letter, LettersTable& letters);
  [[nodiscard]] bool WentOut(const Recordset& row) const;
  [[nodiscard]] bool MayGetLetter(const Recordset& row);
  [[nodiscard]] TakenOut OpenLetterReport(const LetterChoices& choices);
  bool MarkLettersAsProcessed(const TakenOut& taken);
  [[nodiscard]] std::vector<qint64> RowsOf(const TakenOut& taken) const;
  void NotOut();
  void LeaveInDoubt();
  void LogExport(const QString& path);
  void AboutToGoOut(const TakenOut& taken, const ReportPlace& place) override;
  void MayBeOut() override;
  void TookOut(const TakenOut& taken) override;
  [[nodiscard]] bool MayGoOn() override;
  void LeaveOut(const Recordset& row, const QString& reason);
  void Tell(const QString& text, MessageIcon icon);

  LetterServices services_;
  LetterObserver& observer_;
  SendJournal journal_;
  SendRefusals refusals_;
  LetterMarks letterMarks_;
  CampaignClaim claim_;
  int campaignId_ = 0;
  bool again_ = false;                  // whether letters that went out are made again
  bool marks_ = true;                   // whether letters that come out are recorded
  bool lost_ = false;                   // whether another run took the campaign over
  Recordset rows_;                      // rows of the campaign whose letters are to be made
  QHash<qint64, JournalEntry> before_;  // the records of the campaign's rows before this run
  std::vector<qint64> made_;            // rows whose letter was made, in the order of the letters
  QStringList keys_;                    // keys of these letters
  QSet<qint64> sent_;                   // rows that were recorded as sent
  std::vector<qint64> announced_;       // rows that were recorded as about to go out, and did not yet
  QSet<qint64> mayBeOut_;               // rows whose letter went out, or may have
  LetterSummary summary_;
};

}  // namespace qbx
