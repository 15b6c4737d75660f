// Observing a mailshot.

#pragma once

#include <QString>

#include "dispatch/send_journal.h"

namespace qbx {

/// The steps of one message of a row, in order.
enum class MailshotPoint {
  kRowStarted,
  kBeforeJournal,  ///< nothing about this message is recorded
  kAfterJournal,   ///< "sending" is on disk
  kAfterSend,      ///< the server answered, or no answer came
  kBeforeCommit,   ///< record, journal and mark are written but not committed
  kAfterCommit,
  kRowFinished,
};

/// Is told of every step of a run. Progress bars and the pause key are observers, and so is a test that ends the
/// process at a chosen step.
class MailshotObserver {
 public:
  virtual ~MailshotObserver() = default;
  /// All checks have passed and the rows are read.
  /// \param resumed  whether an earlier run sent, or tried to send, something of these rows
  virtual void Begins(bool resumed) { (void)resumed; }
  virtual void At(MailshotPoint point, qint64 recordId) {
    (void)point;
    (void)recordId;
  }
  /// Rows in doubt were skipped.
  /// \return where the user settles them: a sentence for the end of the line in the results log
  [[nodiscard]] virtual QString SettleHint(int campaignId) const {
    (void)campaignId;
    return {};
  }
  /// A message certainly failed: it was refused, or could not be tried.
  virtual void Failed(Channel channel) { (void)channel; }
  /// \param done   number of messages dealt with
  /// \param total  number of messages at the start of the run
  virtual void Progress(int done, int total) {
    (void)done;
    (void)total;
  }
};

}  // namespace qbx
