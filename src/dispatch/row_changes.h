// Changes to many rows of a campaign at once, and taking back the last of them.

#pragma once

#include <QHash>
#include <QString>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <vector>

#include "database/connection.h"
#include "dispatch/replace_guard.h"
#include "dispatch/send_journal.h"

namespace qbx {

/// What came of a change.
struct RowChange {
  std::optional<Message> refusal = {};    ///< a run sends the campaign, or it could not be told; nothing was changed
  std::vector<qint64> changed = {};       ///< keys of the rows that are different now
  std::map<QString, int> leftAlone = {};  ///< how many rows were passed over, by the reason in a few words
  bool readAgain =
      false;  ///< an Undo brought rows that had been taken out, or left some alone; those that are shown have to be read again

  [[nodiscard]] int LeftAlone() const;
};

/// "1 row", "12 rows"
[[nodiscard]] QString RowsText(std::size_t rows);

/// "12 rows ticked; 3 left alone: 2 no mobile, 1 the customer has opted out." and the like, for a line beside the rows.
/// \param done  "ticked", "unticked", "taken out", "put back"
[[nodiscard]] QString ChangeText(const RowChange& change, const QString& done);

/// Changes rows by their keys, each change in one transaction with the look at who is sending the campaign, and keeps what the last one needs to
/// be taken back. Calls throw DatabaseError; then nothing was changed.
class RowChanges {
 public:
  RowChanges(Connection& connection, ReplaceGuard& guard) : connection_(connection), guard_(guard) {}

  /// Ticks or unticks a send flag. Rows that have it so already are no change and are not counted; those that cannot be ticked are left alone.
  [[nodiscard]] RowChange SetFlag(int campaignId, Channel flag, bool ticked, const std::vector<qint64>& rows);
  /// Takes rows out of the campaign, with what the send journal holds of them.
  [[nodiscard]] RowChange TakeOut(int campaignId, const std::vector<qint64>& rows);
  /// Runs a change of one row's flags that somebody else makes, and keeps it like the others. When what it was cannot be kept, it is made all the same.
  /// \param change  \return whether it was made
  bool Keep(int campaignId, qint64 recordId, const QString& what, const std::function<bool()>& change);
  /// The same for a row that somebody else takes out.
  bool KeepTakenOut(int campaignId, qint64 recordId, const std::function<bool()>& takeOut);

  /// Takes back the last change: rows, flags and entries of the send journal come back under their keys. A row that was changed since is left
  /// alone, and so are rows of which the campaign has new ones. There is no going further back.
  [[nodiscard]] RowChange Undo(int campaignId);
  /// What Undo would take back ("12 rows taken out"); empty when there is nothing.
  [[nodiscard]] const QString& Last() const { return last_.what; }
  void Forget() { last_ = {}; }

 private:
  struct KeptRow {
    qint64 recordId = 0;
    QByteArray before = {};  ///< the state, or of a row that was taken out all of it; the host's text
    QByteArray after = {};   ///< the state that the change left
  };
  struct LastChange {
    QString what = {};
    bool tookOut = false;
    qint64 newestRow = 0;  ///< of the campaign, when rows were taken out: those of another query are newer
    std::vector<KeptRow> rows = {};
  };

  /// Changes one batch of rows, and notes what was changed, left alone, and has to be kept.
  using Work = std::function<void(std::span<const qint64> batch, RowChange& change, LastChange& kept)>;
  RowChange Change(int campaignId, const std::vector<qint64>& rows, const Work& work);
  bool KeepOne(int campaignId, LastChange kept, const std::function<void(LastChange& kept)>& read,
               const std::function<bool()>& change);
  [[nodiscard]] QHash<qint64, QByteArray> States(int campaignId, const std::vector<qint64>& rows);
  void KeepWhole(int campaignId, const QString& keys, LastChange& kept);
  void KeepAfter(int campaignId, LastChange& kept);
  void PutBack(int campaignId, RowChange& change);
  void TakeBack(int campaignId, RowChange& change);

  Connection& connection_;
  ReplaceGuard& guard_;
  LastChange last_;
};

}  // namespace qbx
