// The letters of a campaign: made, shown or saved, and marked.

#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "dispatch/campaign_claim.h"
#include "dispatch/results_log.h"
#include "dispatch/send_journal.h"
#include "dispatch/send_refusals.h"
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
/// printed or saved; only rows with a new "sent" are marked. A letter that went out and is made again stays "sent", whether the copy is
/// printed or not. A run that was broken off is repeated for the rows without one.
class LetterRun {
 public:
  LetterRun(const LetterServices& services, LetterObserver& observer);

  /// \param letter  the template, as it is stored
  LetterSummary GenerateLetters(int campaignId, const QString& letter, const LetterChoices& choices);

 private:
  [[nodiscard]] bool MayBegin(const QString& letter);
  [[nodiscard]] bool AskAboutProcessed(int campaignId);
  [[nodiscard]] bool WentOut(qint64 recordId) const;
  [[nodiscard]] int CountLetters(int campaignId);
  [[nodiscard]] bool MakeLetters(int campaignId, const QString& letter);
  /// \return false when it failed or was cancelled
  [[nodiscard]] bool CreateLetters(int campaignId, const QString& letter);
  [[nodiscard]] bool MayGetLetter(const Recordset& row, int campaignId);
  [[nodiscard]] bool OpenLetterReport(const LetterChoices& choices);
  void MarkLettersAsProcessed(int campaignId, bool cameOut);
  void LeaveOut(const Recordset& row, const QString& reason);
  void Tell(const QString& text, MessageIcon icon);

  LetterServices services_;
  LetterObserver& observer_;
  SendJournal journal_;
  SendRefusals refusals_;
  Recordset rows_;                      // of the campaign, to be made
  QHash<qint64, JournalEntry> before_;  // what is on record of the campaign's rows
  std::vector<qint64> made_;            // rows whose letter is "sending", in the order of the letters
  bool again_ = false;                  // letters that went out are made again
  bool marksAll_ = false;               // the user says so of letters that were only looked at
  LetterSummary summary_;
};

/// The plain text of a letter.
[[nodiscard]] QString LetterText(const QString& letter);

/// "n customers with a letter were processed by the mailshot and get none; make letters first.", empty when there is none.
/// \throws DatabaseError
[[nodiscard]] QString LettersMissedLine(Connection& connection, int campaignId);

}  // namespace qbx
