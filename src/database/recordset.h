// A result that can be walked, and, when it is kept on the client's side, counted, sorted, filtered and changed.

#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "database/connection.h"
#include "database/session.h"

namespace qbx {

class PackedRows;

/// A row as it was read, whatever the order and filter; what a filter looks at.
class StoredRow {
 public:
  StoredRow(const PackedRows& rows, qint64 row) : rows_(rows), row_(row) {}

  /// \param column  one that the recordset has
  [[nodiscard]] Cell At(int column) const;

 private:
  const PackedRows& rows_;
  qint64 row_;
};

/// A row that is brought up to date with the server, here only.
class AmendedRow : public StoredRow {
 public:
  using Writer = std::function<void(int column, const Value& value)>;
  AmendedRow(const PackedRows& rows, qint64 row, const Writer& write) : StoredRow(rows, row), write_(write) {}

  void Put(int column, const Value& value) { write_(column, value); }
  /// The row is gone.
  void Drop() { dropped_ = true; }
  [[nodiscard]] bool Dropped() const { return dropped_; }

 private:
  const Writer& write_;
  bool dropped_ = false;
};

/// A cursor over a result.
///
///   Recordset rows = Recordset::ReadAll(connection.Driver().Execute(sql));
///   for (rows.MoveFirst(); !rows.Eof(); rows.MoveNext()) Use(rows.Field("Mobile").ToText());
///
/// ReadAll packs every row in memory (client-side cursor); Forward steps rows as they are asked for and fetches none
/// that are not. Copies share the packed rows (Clone). A closed recordset (default-made) has no columns and is at its
/// end. Calls that reach the server may throw DatabaseError.
class Recordset {
 public:
  Recordset();
  ~Recordset();
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;

  [[nodiscard]] static Recordset ReadAll(std::unique_ptr<RowSource> source);
  [[nodiscard]] static Recordset Forward(std::unique_ptr<RowSource> source);

  /// Names the table and key column that Delete, AddNew and Update write to, and the session they use (which must
  /// outlive this recordset or its next Close).
  void SetWritable(Session& session, const QString& table, const QString& keyColumn);
  /// How Requery reads again.
  void SetSource(std::function<std::unique_ptr<RowSource>()> reader);

  [[nodiscard]] bool IsOpen() const;
  /// Whether Delete, AddNew and Update have where to write to.
  [[nodiscard]] bool IsWritable() const;
  void Close();

  [[nodiscard]] const std::vector<Column>& Columns() const;
  /// \return position of a column by name without regard to case, -1 when there is none
  [[nodiscard]] int ColumnIndex(const QString& name) const;

  // Position. A forward-only recordset can only MoveNext.
  void MoveFirst();
  void MoveNext();
  void MoveTo(qint64 row);  ///< position in the current order, 0 the first
  [[nodiscard]] qint64 Position() const;
  [[nodiscard]] bool Eof() const;

  /// Rows in the current order and filter; of a forward-only recordset -1.
  [[nodiscard]] qint64 RecordCount() const;
  /// Rows of a client-side recordset, also those that the filter hides.
  [[nodiscard]] qint64 StoredCount() const;

  /// A field of the current row. An unknown name gives NULL.
  [[nodiscard]] Value Field(const QString& name) const;
  [[nodiscard]] Value Field(int column) const;
  /// Any cell of a client-side recordset by position in the current order, for models; as stored, without moving. Valid
  /// while the recordset is unchanged.
  [[nodiscard]] Cell At(qint64 row, int column) const;

  /// Looks at every row, also at those that the filter hides, in the order in which they were read.
  void Visit(const std::function<void(const StoredRow& row)>& look) const;
  /// Changes rows here only, after something else changed them on the server: goes through them as Visit does. Sort and filter take
  /// it in with `ArrangeAgain`.
  void Amend(const std::function<void(AmendedRow& row)>& amend);
  /// Sorts and filters anew after `Amend`, or since the filter looks at something else that changed; the first row becomes current. Rows that
  /// were sorted before are not sorted again, but for those that were changed.
  void ArrangeAgain();

  /// Orders by one column; NULL first, text without regard to case, equal rows stay in order.
  void Sort(int column, bool descending);
  /// Shows only rows for which the predicate is true; an empty one shows all. The sort stays; the first row becomes
  /// current. Clones share the predicate, so it must not refer to this recordset.
  void Filter(std::function<bool(const StoredRow& row)> predicate);

  /// Reads again with the same source; the sort and the filter stay, the first row becomes current. When reading fails
  /// the rows stay what they were.
  void Requery();
  /// A second cursor over the same rows, in the same order and filter, with its own position; rows deleted through
  /// either are gone from both.
  [[nodiscard]] Recordset Clone() const;
  /// The rows as they are now, in the same order and filter: what is changed, deleted or read again here does not change them. Shares their memory as far as it can.
  [[nodiscard]] Recordset Snapshot() const;

  /// Deletes the current row here and on the server; the next row becomes current.
  void Delete();
  /// Deletes the rows that are condemned here and on the server, in one go. Looks at every row as Visit does; what it throws leaves all as it was.
  void DeleteRows(const std::function<bool(const StoredRow& row)>& condemned);
  /// Takes the current row out here only, after something else deleted it on the server; the next row becomes current.
  void Drop();
  /// Changes a cell here only, after something else changed it on the server. \param row  position in the current order
  void Put(qint64 row, int column, const Value& value);
  /// Starts a new row; Set fills it, Update writes it to the server. It is not added to the rows held here: Requery
  /// shows it. Set without AddNew changes the current row. What was set is forgotten when Update fails or another row
  /// becomes current.
  void AddNew();
  void Set(const QString& column, const Value& value);
  void Update();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace qbx
