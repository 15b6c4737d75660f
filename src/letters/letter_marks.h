// Recording which letters went out.

#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/procedure.h"
#include "platform/user_interface.h"

namespace qbx {

/// Letters that were about to be saved to a file when the program ended. It is unknown whether the file holds them.
struct LettersInDoubt {
  std::vector<qint64> rows = {};
  QString file = {};
  QDateTime since = {};
};

/// Asks what became of the letters: Yes for went out, No for make them again, Cancel for not known yet.
[[nodiscard]] Message LettersInDoubtQuestion(const LettersInDoubt& doubt);

/// The marks of a campaign's letters. Each call sends all letters to the host at once. Calls throw DatabaseError.
///
/// A file is renamed first, and the marks follow. So the letters are recorded before the renaming (`AboutToAppear`). A
/// run that is killed in between leaves them in doubt.
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
  /// Records that the letters are in a complete file, which is about to be renamed.
  void AboutToAppear(int campaignId, const std::vector<qint64>& rows, const QString& file);
  /// Records that the file was not saved or did not go out: its letters are still due.
  void NotOut(int campaignId, const std::vector<qint64>& rows);
  [[nodiscard]] LettersInDoubt InDoubt(int campaignId);

 private:
  Connection& connection_;
  QString user_;
};

}  // namespace qbx
