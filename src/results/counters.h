// The numbers of letters, texts and e-mails that a campaign has to send and has sent.

#pragma once

#include <QString>

#include "database/statements.h"

namespace qbx {

/// Numbers of rows, as the host keeps them.
struct CounterValues {
  int letters = 0;     ///< rows to get a letter
  int sms = 0;         ///< rows to get a text
  int smsSent = 0;     ///< of these, already processed
  int emails = 0;      ///< rows to get an e-mail
  int emailsSent = 0;  ///< of these, already processed

  /// Processed rows with a text or an e-mail, added over both channels.
  [[nodiscard]] int Sent() const { return smsSent + emailsSent; }
  friend bool operator==(const CounterValues&, const CounterValues&) = default;
};

/// The cost of a campaign's texts, in credits.
struct CreditNeed {
  int inAll = 0;  ///< for every row with a text
  int sent = 0;   ///< for texts that went out, or whose row is processed
  int toGo = 0;   ///< for the texts of the next run: without rows in doubt and without customers who said no since

  friend bool operator==(const CreditNeed&, const CreditNeed&) = default;
};

/// Captions of the labels on tab 5, named as the controls.
struct CounterLabels {
  QString lblLetters;
  QString lblSMS0;
  QString lblSMS1;
  QString lblSMS2;
  QString lblEmail0;
  QString lblEmail1;
};

[[nodiscard]] CounterLabels MakeCounterLabels(const CounterValues& values, const CreditNeed& credits);

/// The text " (58 in all)" after the credits still to be spent; empty when both numbers are equal.
[[nodiscard]] QString InAllText(const CreditNeed& credits);

/// The program's counters.
class Counters {
 public:
  explicit Counters(Statements& statements);

  /// Reads the counters of a campaign; NULL becomes 0. When the host returns no row or fails (reported), they keep
  /// their values.
  void UpdateCounters(int campaignId);
  [[nodiscard]] const CounterValues& Values() const { return values_; }

 private:
  Statements& statements_;
  CounterValues values_;
};

}  // namespace qbx
