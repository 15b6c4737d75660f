// How many letters, texts and e-mails a campaign has to send, and how many are sent.

#pragma once

#include <QString>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"

namespace qbx {

/// Numbers of rows, as the host keeps them.
struct CounterValues {
  int letters = 0;     ///< rows to get a letter
  int sms = 0;         ///< rows to get a text
  int smsSent = 0;     ///< of these, already processed
  int emails = 0;      ///< rows to get an e-mail
  int emailsSent = 0;  ///< of these, already processed

  /// Rows whose message went out, over both channels.
  [[nodiscard]] int Sent() const { return smsSent + emailsSent; }
  friend bool operator==(const CounterValues&, const CounterValues&) = default;
};

/// What the texts of a campaign cost, in credits.
struct CreditNeed {
  int inAll = 0;  ///< every row with a text
  int sent = 0;   ///< texts that went out, or whose row is processed
  int toGo =
      0;  ///< texts that the next run is going to send; not the rows in doubt, nor those whose customer has said no since

  friend bool operator==(const CreditNeed&, const CreditNeed&) = default;
};

/// Captions of the labels of tab 5, named as the controls.
struct CounterLabels {
  QString lblLetters;
  QString lblSMS0;
  QString lblSMS1;
  QString lblSMS2;
  QString lblEmail0;
  QString lblEmail1;
};

[[nodiscard]] CounterLabels MakeCounterLabels(const CounterValues& values, const CreditNeed& credits);

/// " (58 in all)" behind the credits that are still to go, where that is another number; else empty.
[[nodiscard]] QString InAllText(const CreditNeed& credits);

/// The counters that the program holds.
class Counters {
 public:
  Counters(Statements& statements, Diagnostics diagnostics);

  /// Reads the counters of a campaign; NULL reads as 0. When the host returns no row, or fails (reported), they keep
  /// their values.
  void UpdateCounters(int campaignId);
  [[nodiscard]] const CounterValues& Values() const { return values_; }

 private:
  Statements& statements_;
  Diagnostics diagnostics_;
  CounterValues values_;
};

}  // namespace qbx
