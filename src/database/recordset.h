// The rows of a result. When they are kept in memory, they can also be counted, sorted, filtered and changed.

#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <vector>

#include "database/connection.h"
#include "database/session.h"

namespace qbx {

class PackedRows;

/// A row as it was read, without order and filter. A filter tests it.
class StoredRow {
 public:
  StoredRow(const PackedRows& rows, qint64 row) : rows_(rows), row_(row) {}

  /// \param column  a column that the recordset has
  [[nodiscard]] Cell At(int column) const;

 private:
  const PackedRows& rows_;
  qint64 row_;
};

/// A row that `Recordset::Amend` changes in memory, because it was changed on the server.
class AmendedRow : public StoredRow {
 public:
  using Writer = std::function<void(int column, const Value& value)>;
  AmendedRow(const PackedRows& rows, qint64 row, const Writer& write) : StoredRow(rows, row), write_(write) {}

  void Put(int column, const Value& value) { write_(column, value); }
  /// Takes the row out: it is deleted on the server.
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
/// ReadAll keeps every row in memory (a client-side cursor). Forward reads each row when it is asked for, and no other.
/// Copies share the rows (Clone). A closed recordset (default-made) has no columns and is at its end. Calls that reach
/// the server may throw DatabaseError.
class Recordset {
 public:
  Recordset();
  ~Recordset();
  Recordset(Recordset&&) noexcept;
  Recordset& operator=(Recordset&&) noexcept;

  [[nodiscard]] static Recordset ReadAll(std::unique_ptr<RowSource> source);
  [[nodiscard]] static Recordset Forward(std::unique_ptr<RowSource> source);

  /// Sets the table and key column that Delete, AddNew and Update write to, and the session they use. The session must
  /// outlive this recordset or its next Close.
  void SetWritable(Session& session, const QString& table, const QString& keyColumn);
  /// Sets how Requery reads again.
  void SetSource(std::function<std::unique_ptr<RowSource>()> reader);

  [[nodiscard]] bool IsOpen() const;
  /// Whether SetWritable named a table, so that Delete, AddNew and Update can write.
  [[nodiscard]] bool IsWritable() const;
  void Close();

  [[nodiscard]] const std::vector<Column>& Columns() const;
  /// \return position of a column by name, without regard to case; -1 when there is none
  [[nodiscard]] int ColumnIndex(const QString& name) const;

  // Position. A forward-only recordset can only MoveNext.
  void MoveFirst();
  void MoveNext();
  void MoveTo(qint64 row);  ///< position in the current order, 0 the first
  [[nodiscard]] qint64 Position() const;
  [[nodiscard]] bool Eof() const;

  /// Number of rows that pass the filter; -1 for a forward-only recordset.
  [[nodiscard]] qint64 RecordCount() const;
  /// Number of rows of a client-side recordset, also those that the filter hides.
  [[nodiscard]] qint64 StoredCount() const;

  /// A field of the current row. An unknown name gives NULL.
  [[nodiscard]] Value Field(const QString& name) const;
  [[nodiscard]] Value Field(int column) const;
  /// Any cell of a client-side recordset by its position in the current order, for models. The current row stays. Valid
  /// until the recordset changes.
  [[nodiscard]] Cell At(qint64 row, int column) const;

  /// Calls `look` with every row, also with those that the filter hides, in the order in which they were read.
  void Visit(const std::function<void(const StoredRow& row)>& look) const;
  /// Changes rows in memory that were changed on the server. Goes through all rows as Visit does. Call `ArrangeAgain`
  /// afterwards, to sort and filter.
  void Amend(const std::function<void(AmendedRow& row)>& amend);
  /// Sorts and filters again, after `Amend` or when something else changed that the filter depends on. The first row
  /// becomes current. Of sorted rows only the changed ones are sorted again.
  void ArrangeAgain();

  /// Orders by one column: NULL first, text without regard to case; equal rows keep their order.
  void Sort(int column, bool descending);
  /// Shows only the rows for which the predicate is true; an empty predicate shows all. The sort stays, and the first
  /// row becomes current. Clones share the predicate, so it must not refer to this recordset.
  void Filter(std::function<bool(const StoredRow& row)> predicate);

  /// Reads again from the same source. The sort and the filter stay, and the first row becomes current. When reading
  /// fails, the rows stay as they were.
  void Requery();
  /// A second cursor over the same rows, with the same order and filter and its own position. A row deleted through
  /// either is gone from both.
  [[nodiscard]] Recordset Clone() const;
  /// A copy of the rows as they are now, with the same order and filter. Later changes here do not reach it. It shares
  /// their memory as far as possible.
  [[nodiscard]] Recordset Snapshot() const;

  /// Deletes the current row in memory and on the server. The next row becomes current.
  void Delete();
  /// Deletes, in memory and on the server, all rows for which `condemned` is true. Looks at every row as Visit does.
  /// When `condemned` throws, nothing is deleted.
  void DeleteRows(const std::function<bool(const StoredRow& row)>& condemned);
  /// Takes the current row out of memory, because it was deleted on the server. The next row becomes current.
  void Drop();
  /// Changes a cell in memory, because it was changed on the server. \param row  position in the current order
  void Put(qint64 row, int column, const Value& value);
  /// Starts a new row; Set fills it, and Update writes it to the server. The new row is not added to the rows in
  /// memory: Requery shows it. Set without AddNew changes the current row. The values set are dropped when Update fails
  /// or another row becomes current.
  void AddNew();
  void Set(const QString& column, const Value& value);
  void Update();

 private:
  class State;
  std::unique_ptr<State> state_;
};

}  // namespace qbx
