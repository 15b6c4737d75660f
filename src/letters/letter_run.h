// The letters of a campaign: made, shown or saved, and marked.

#pragma once

#include <QString>
#include <functional>
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

/// What making letters works with. References only.
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

/// How letters come out.
struct LetterChoices {
  QString pdfFile = {};       ///< where they are written; empty: they are shown
  int firstLetter = 0;        ///< of the file, 1 the first; 0: from the first
  int lastLetter = 0;         ///< 0: to the last
  bool markProcessed = true;  ///< false: nothing is written down of what came out
};

struct LetterSummary {
  bool done = false;  ///< false: refused, failed or cancelled; the user was told
  int letters = 0;    ///< made; of a file those that stand in it
  int leftOut = 0;    ///< for their address, or because the customer has said no
  int processed = 0;  ///< rows marked
};

/// Shows how far the making of letters is.
class LetterObserver {
 public:
  virtual ~LetterObserver() = default;
  /// \param total  letters at most
  virtual void Begins(int total) = 0;
  virtual void Progress(int done) = 0;
  virtual void Ends() = 0;
  /// Asked after each letter; true ends the making, and what was made is thrown away.
  [[nodiscard]] virtual bool Cancelled() = 0;
};

/// One run. A letter is written down as "sending" when it is made, refused to a customer who has said no since the query, and as "sent" once the letters were
/// printed or saved, at once; only rows with a new "sent" are marked. A run that was killed when its file was about to appear, made without a preview or saved from it, leaves its
/// letters in doubt, and the next one asks. A run that was broken off is repeated for the rows without one. Letters that are made
/// again leave what is on record as it is: they did go out once.
///
/// The campaign is held from the first letter until this object goes, so that no other run makes letters of it.
class LetterRun : private ReportFollower {
 public:
  LetterRun(const LetterServices& services, LetterObserver& observer);

  /// \param letter  the template, as it is stored
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
  void LogExport(const QString& path);
  void AboutToAppear(const TakenOut& taken, const QString& file) override;
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
  bool again_ = false;                  // also letters that went out
  bool marks_ = true;                   // what comes out
  bool lost_ = false;                   // another run took the campaign over
  Recordset rows_;                      // of the campaign, to be made
  QHash<qint64, JournalEntry> before_;  // what is on record of the campaign's rows
  std::vector<qint64> made_;            // rows whose letter was made, in the order of the letters
  QStringList keys_;                    // of their letters
  QSet<qint64> sent_;                   // rows that are written down as sent
  std::vector<qint64> announced_;       // rows that are written down as about to appear in the file
  LetterSummary summary_;
};

}  // namespace qbx
