// The kinds of a campaign's rows: what each gets, and which need attention.

#pragma once

#include <QHash>
#include <QStringList>
#include <array>
#include <functional>
#include <memory>
#include <vector>

#include "database/recordset.h"

namespace qbx {

/// A row can be of several kinds. `RowKindNames` has the same order.
enum class RowKind {
  kAll,
  kText,        ///< Send_SMS is ticked, whether sent or not, as in the counters
  kEmail,       ///< Send_Email
  kLetter,      ///< Send_Letter
  kNothing,     ///< none of the three
  kFailed,      ///< a text or an e-mail failed, and the row is not processed
  kInDoubt,     ///< it is unknown whether a text or an e-mail went out
  kSameMobile,  ///< another row of the campaign has the same phone, whatever the two get
};
inline constexpr int kRowKinds = 8;

/// The names "all", "gets a text", "gets an e-mail", ... for a list.
[[nodiscard]] QStringList RowKindNames();

/// The kinds of every row of a recordset, including rows that its filter hides.
class RowKinds {
 public:
  RowKinds();

  /// Finds the kinds of all rows.
  /// \param rows      with the columns of [Campaign Results]
  /// \param troubles  the result of `proc_selp_Send_Troubles` for the campaign
  void Read(const Recordset& rows, Recordset troubles);
  /// Finds the kinds of some rows again, which were changed or deleted.
  /// \param fresh  `RecordID` and the send flags of the ones that still exist
  void ReadAgain(const Recordset& fresh, const std::vector<qint64>& changed, Recordset troubles);

  [[nodiscard]] bool Is(qint64 recordId, RowKind kind) const;
  /// The number of rows of a kind; for kAll, of all rows.
  [[nodiscard]] int Count(RowKind kind) const { return counts_[static_cast<std::size_t>(kind)]; }

  /// A condition for `Recordset::Filter`; none for kAll. It uses the present kinds, even after they were read again.
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

  std::shared_ptr<Rows> rows_;  // shared with the filters
  std::vector<qint64> troubled_;
  std::array<int, kRowKinds> counts_ = {};
};

}  // namespace qbx
