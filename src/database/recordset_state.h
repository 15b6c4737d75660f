// What a recordset holds.

#pragma once

#include <QHash>
#include <algorithm>

#include "database/packed_rows.h"
#include "database/recordset.h"
#include "database/sorted_rows.h"

namespace qbx {

/// Throws for a call that this kind of recordset does not allow.
[[noreturn]] inline void ThrowNotAllowed() {
  constexpr int kNotAllowed = 3219;
  throw DatabaseError(kNotAllowed, QStringLiteral("Operation is not allowed in this context."), {});
}

class Recordset::State {
 public:
  /// Rows and which of them are deleted; shared by clones.
  struct SharedRows {
    PackedRows rows;
    std::vector<bool> deleted = {};
    qint64 deletedCount = 0;
    qint64 changes = 0;  ///< number of changed cells
  };

  std::vector<Column> columns;
  QHash<QString, int> names;  // position by the name that was asked for, filled on demand

  std::unique_ptr<RowSource> source;  // of a forward-only recordset
  bool started = false;
  bool ended = false;

  std::shared_ptr<SharedRows> shared;  // of a client-side recordset
  std::vector<quint32> order;          // stored rows in the current order; may still hold rows deleted since `cleaned`
  qint64 cleaned = 0;                  // number of deletions already taken out of `order`
  SortedRows sorted;                   // all stored rows in sorted order
  qint64 current = 0;                  // index into `order`
  std::function<bool(const StoredRow& row)> filter;

  Session* session = nullptr;
  QString table;
  QString keyColumn;
  std::function<std::unique_ptr<RowSource>()> reader;
  bool adding = false;
  std::vector<QString> pendingColumns;
  std::vector<Value> pendingValues;

  [[nodiscard]] bool ClientSide() const { return shared != nullptr; }

  void Read(RowSource& rows) {
    auto read = std::make_shared<SharedRows>(SharedRows{.rows = PackedRows(static_cast<int>(rows.Columns().size()))});
    if (PackedRows* const packed = rows.Packed())
      read->rows = std::move(*packed);
    else
      while (rows.Next())
        read->rows.Append(rows);
    read->deleted.assign(static_cast<std::size_t>(read->rows.Count()), false);
    columns = rows.Columns();
    names.clear();
    shared = std::move(read);
    sorted.Forget();
    Arrange();
  }

  /// Builds `order` from the filter and the sort, and goes to the first row.
  void Arrange() {
    const bool isSorted = sorted.Column() >= 0 && sorted.Column() < static_cast<int>(columns.size());
    const std::vector<quint32>* bySort = isSorted ? &sorted.Of(shared->rows, shared->changes) : nullptr;
    const auto count = static_cast<quint32>(shared->rows.Count());
    order.clear();
    order.reserve(count);
    for (quint32 place = 0; place < count; ++place) {
      const quint32 row = bySort == nullptr ? place : (*bySort)[place];
      if (!shared->deleted[row] && (!filter || filter(StoredRow(shared->rows, row)))) order.push_back(row);
    }
    cleaned = shared->deletedCount;
    GoTo(0);
  }

  /// A change through a clone makes this recordset sort again.
  void PutCell(quint32 row, int column, const Value& value) {
    shared->rows.Set(row, column, value);
    sorted.Changed(row, column, ++shared->changes);
  }

  /// Values that were set and not written belong to the row that is left, and are dropped.
  void GoTo(qint64 row) {
    DropChanges();
    current = row;
  }

  void DropChanges() {
    adding = false;
    pendingColumns.clear();
    pendingValues.clear();
  }

  /// Takes rows that were deleted here or by a clone out of `order`. The current row stays current, or the next one
  /// that is left.
  void Clean() {
    if (cleaned == shared->deletedCount) return;
    const auto gone = [this](quint32 row) { return shared->deleted[row]; };
    const auto before = order.begin() + std::min<qint64>(current, static_cast<qint64>(order.size()));
    current -= std::count_if(order.begin(), before, gone);
    order.erase(std::remove_if(order.begin(), order.end(), gone), order.end());
    cleaned = shared->deletedCount;
  }

  void SkipDeleted() {
    if (cleaned == shared->deletedCount) return;
    while (current < static_cast<qint64>(order.size()) && shared->deleted[order[static_cast<std::size_t>(current)]])
      ++current;
  }

  /// Fetches the first row of a forward-only result when it is first needed.
  void Start() {
    if (started) return;
    started = true;
    ended = true;  // also when it fails
    ended = !source->Next();
  }

  [[nodiscard]] bool AtEnd() {
    if (ClientSide()) {
      SkipDeleted();
      return current >= static_cast<qint64>(order.size());
    }
    if (!source) return true;
    Start();
    return ended;
  }

  [[nodiscard]] Cell CurrentCell(int column) {
    if (AtEnd() || column < 0 || column >= static_cast<int>(columns.size())) return {};
    return ClientSide() ? shared->rows.At(order[static_cast<std::size_t>(current)], column) : source->At(column);
  }

  [[nodiscard]] int IndexOf(const QString& name) {
    if (const auto known = names.constFind(name); known != names.constEnd()) return *known;
    const auto found = std::find_if(columns.begin(), columns.end(), [&name](const Column& column) {
      return column.name.compare(name, Qt::CaseInsensitive) == 0;
    });
    const int index = found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
    names.insert(name, index);
    return index;
  }

  [[nodiscard]] Value CurrentKey() { return CurrentCell(IndexOf(keyColumn)).ToValue(); }

  void RequireWritable() const {
    if (session == nullptr || !ClientSide()) ThrowNotAllowed();
  }
};

}  // namespace qbx
