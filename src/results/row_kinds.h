// What the rows of a campaign are: who gets what, and what needs a look.

#pragma once

#include <QHash>
#include <QStringList>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "database/recordset.h"

namespace qbx {

/// A row can be of several kinds. The positions are those of `RowKindNames`.
enum class RowKind {
  kAll,
  kText,        ///< Send_SMS is ticked, sent or not, as the counters count
  kEmail,       ///< Send_Email
  kLetter,      ///< Send_Letter
  kNothing,     ///< none of the three
  kFailed,      ///< a text or an e-mail failed, and the row is not processed
  kInDoubt,     ///< nobody knows whether a text or an e-mail went out
  kSameMobile,  ///< another row of the campaign has the same phone, whatever either of them gets
};
inline constexpr int kRowKinds = 8;

/// "all", "gets a text", "gets an e-mail", ... as a list shows them.
[[nodiscard]] QStringList RowKindNames();

/// The kinds of every row of a recordset, also of those that its filter hides.
class RowKinds {
 public:
  RowKinds();

  /// Looks at every row.
  /// \param rows      columns of [Campaign Results]
  /// \param troubles  what `proc_selp_Send_Troubles` says of the campaign
  void Read(const Recordset& rows, Recordset troubles);
  /// Looks again at some rows that were changed or are gone.
  /// \param fresh  those of them that are there: `RecordID` and the send flags
  void ReadAgain(const Recordset& fresh, const std::vector<qint64>& changed, Recordset troubles);

  [[nodiscard]] bool Is(qint64 recordId, RowKind kind) const;
  /// How many rows are of a kind; of kAll, how many there are.
  [[nodiscard]] int Count(RowKind kind) const { return counts_[static_cast<std::size_t>(kind)]; }

  /// A condition for `Recordset::Filter`; none for kAll. It goes on telling what the kinds are after these were read again.
  /// \param rows  the recordset that is filtered
  [[nodiscard]] std::function<bool(const StoredRow& row)> Filter(RowKind kind, const Recordset& rows) const;

 private:
  struct Row {
    quint8 kinds = 0;  ///< a bit for each kind
    quint32 phone = 0;
  };
  using Rows = QHash<qint64, Row>;

  void Complete(Recordset troubles);
  void SetTroubles(Recordset troubles);
  void SetKinds(Row& row, quint8 kinds);

  std::shared_ptr<Rows> rows_;  // the filters look at it, too
  std::vector<qint64> troubled_;
  std::array<int, kRowKinds> counts_ = {};
};

}  // namespace qbx
