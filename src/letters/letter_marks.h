// What is written down of the letters that come out.

#pragma once

#include <QDateTime>
#include <QSet>
#include <QString>
#include <vector>

#include "database/connection.h"
#include "database/procedure.h"
#include "platform/user_interface.h"

namespace qbx {

/// Letters that were about to appear in a file when the program ended: nobody knows whether they stand there.
struct LettersInDoubt {
  std::vector<qint64> rows = {};
  QString file = {};
  QDateTime since = {};
};

/// Asks what became of them: Yes, they went out; No, they are to be made again; Cancel, it is not known yet.
[[nodiscard]] Message LettersInDoubtQuestion(const LettersInDoubt& doubt);

/// The marks of a campaign's letters. Each call reaches the host once for all its letters. Calls throw DatabaseError.
///
/// A file takes its place in one moment, and the marks follow in another. So the letters are noted before it (`AboutToAppear`), and a run that is killed between
/// the two leaves them in doubt.
class LetterMarks {
 public:
  LetterMarks(Connection& connection, QString user);

  /// The rows whose letters went out, and how many of them were marked as processed.
  struct Marked {
    QSet<qint64> rows;
    int processed = 0;
  };
  /// Letters were printed or saved: they count as sent, and rows that get nothing else as processed. In one transaction.
  Marked WentOut(int campaignId, const std::vector<qint64>& rows);
  /// The letters stand in a file that is complete and takes its place next.
  void AboutToAppear(int campaignId, const std::vector<qint64>& rows, const QString& file);
  /// The file did not take its place, or did not go out: its letters are due.
  void NotOut(int campaignId, const std::vector<qint64>& rows);
  [[nodiscard]] LettersInDoubt InDoubt(int campaignId);

 private:
  Connection& connection_;
  QString user_;
};

}  // namespace qbx
