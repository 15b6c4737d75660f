// Changing many rows of a campaign at once, and undoing the last change.

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

/// The result of a change.
struct RowChange {
  /// A run is sending the campaign, or that could not be found out; nothing was changed.
  std::optional<Message> refusal = {};
  std::vector<qint64> changed = {};       ///< keys of the rows that have changed
  std::map<QString, int> leftAlone = {};  ///< number of rows that were left alone, by the reason in a few words
  /// Whether the rows that are shown must be read again, because Undo brought rows back or left some alone.
  bool readAgain = false;

  [[nodiscard]] int LeftAlone() const;
};

/// The text "1 row" or "12 rows".
[[nodiscard]] QString RowsText(std::size_t rows);

/// A line for beside the rows, such as "12 rows ticked; 3 left alone: 2 no mobile, 1 the customer has opted out."
/// \param done  "ticked", "unticked", "taken out", "put back"
[[nodiscard]] QString ChangeText(const RowChange& change, const QString& done);

/// Changes rows by their keys. Each change and the check who is sending the campaign are one transaction. The last
/// change is kept for Undo. Calls throw DatabaseError; nothing was changed then.
class RowChanges {
 public:
  RowChanges(Connection& connection, ReplaceGuard& guard) : connection_(connection), guard_(guard) {}

  /// Ticks or unticks a send flag. Rows that have the value already are not counted; rows that cannot be ticked are
  /// left alone.
  [[nodiscard]] RowChange SetFlag(int campaignId, Channel flag, bool ticked, const std::vector<qint64>& rows);
  /// Takes rows out of the campaign, with their entries in the send journal.
  [[nodiscard]] RowChange TakeOut(int campaignId, const std::vector<qint64>& rows);
  /// A flag of a row, as the user saw it.
  struct SeenFlag {
    QString column;
    bool ticked = false;
  };
  /// Runs the change of one row's flag and keeps it for Undo. A send flag that another desk has turned round since the
  /// user saw it is as the user wants it, and stays. The change is made even when its earlier state cannot be read.
  /// \param seen    nothing when the row is not shown
  /// \param change  \return whether the change was made
  /// \return whether the flag is now as the user wants it
  bool Keep(int campaignId, qint64 recordId, const std::optional<SeenFlag>& seen, const QString& what,
            const std::function<bool()>& change);
  /// Runs the removal of one row and keeps it for Undo.
  bool KeepTakenOut(int campaignId, qint64 recordId, const std::function<bool()>& takeOut);

  /// Undoes the last change: rows, flags and entries of the send journal come back under their keys. A row that was
  /// changed since is left alone. Rows taken out are not put back once the campaign has newer ones. There is one step
  /// of Undo only.
  [[nodiscard]] RowChange Undo(int campaignId);
  /// What Undo would undo ("12 rows taken out"); empty when there is nothing.
  [[nodiscard]] const QString& Last() const { return last_.what; }
  void Forget() { last_ = {}; }

 private:
  struct KeptRow {
    qint64 recordId = 0;
    QByteArray before = {};  ///< the state before the change, or the whole row that was taken out, as the host wrote it
    QByteArray after = {};   ///< the state after the change
  };
  struct LastChange {
    QString what = {};
    bool tookOut = false;
    /// Key of the campaign's newest row when rows were taken out; a later query gives greater keys.
    qint64 newestRow = 0;
    std::vector<KeptRow> rows = {};
  };

  /// Changes one batch of rows. Fills in which rows were changed and left alone, and what Undo needs.
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
