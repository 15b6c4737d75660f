// Recording which letters went out.

#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/procedure.h"
#include "platform/user_interface.h"
#include "printing/report_place.h"

namespace qbx {

/// Letters that were about to be saved to a file or printed, and were not marked. It is unknown whether they were.
struct LettersInDoubt {
  std::vector<qint64> rows = {};
  ReportPlace place = {};
  QDateTime since = {};
};

/// Asks what became of the letters: Yes for went out, No for make them again, Cancel for not known yet.
[[nodiscard]] Message LettersInDoubtQuestion(const LettersInDoubt& doubt);

/// The marks of a campaign's letters. Each call sends all letters to the host at once. Calls throw DatabaseError.
///
/// A file is renamed or handed to the printer first, and the marks follow. So the letters are recorded before
/// (`AboutToGoOut`). A run that is killed in between leaves them in doubt.
class LetterMarks {
 public:
  LetterMarks(Connection& connection, QString user);

  /// Rows whose letters went out, and how many of them were marked as processed.
  struct Marked {
    QSet<qint64> rows;
    int processed = 0;
  };
  /// Records that letters were printed or saved: they count as sent, and rows that get nothing else as processed. In
  /// one transaction.
  Marked WentOut(int campaignId, const std::vector<qint64>& rows);
  /// Records that the letters are complete, and about to be saved or printed there.
  void AboutToGoOut(int campaignId, const std::vector<qint64>& rows, const ReportPlace& place);
  /// Records that the letters did not go out: they are still due.
  void NotOut(int campaignId, const std::vector<qint64>& rows);
  [[nodiscard]] LettersInDoubt InDoubt(int campaignId);

 private:
  Connection& connection_;
  QString user_;
};

}  // namespace qbx
