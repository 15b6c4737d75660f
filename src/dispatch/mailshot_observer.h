// Watching a mailshot run from outside.

#pragma once

#include <QString>

#include "dispatch/send_journal.h"

namespace qbx {

/// The steps of one message of a row, in order.
enum class MailshotPoint {
  kRowStarted,
  kBeforeJournal,  ///< nothing of this message is written down
  kAfterJournal,   ///< "sending" is on disk
  kAfterSend,      ///< the server answered, or did not
  kBeforeCommit,   ///< record, journal and mark are written, not yet on disk
  kAfterCommit,
  kRowFinished,
};

/// Told of every step of a run. Progress bars and the pause key are observers; so is a test that ends the process at a
/// chosen step.
class MailshotObserver {
 public:
  virtual ~MailshotObserver() = default;
  /// All checks have passed and the rows are read.
  /// \param resumed  something of these rows was sent, or tried, by an earlier run
  virtual void Begins(bool resumed) { (void)resumed; }
  virtual void At(MailshotPoint point, qint64 recordId) {
    (void)point;
    (void)recordId;
  }
  /// Rows are in doubt and were left alone.
  /// \return where the user settles them, a sentence that ends the line of the results log
  [[nodiscard]] virtual QString SettleHint(int campaignId) const {
    (void)campaignId;
    return {};
  }
  /// A message failed for certain: it was refused, or could not be tried.
  virtual void Failed(Channel channel) { (void)channel; }
  /// \param done   messages dealt with
  /// \param total  messages the run set out with
  virtual void Progress(int done, int total) {
    (void)done;
    (void)total;
  }
};

}  // namespace qbx
