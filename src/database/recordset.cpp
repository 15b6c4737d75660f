// A result that can be walked, and, when it is kept on the client's side, counted, sorted, filtered and changed.

#include "database/recordset.h"

#include <QHash>
#include <algorithm>
#include <numeric>
#include <utility>

#include "database/packed_rows.h"
#include "database/row_order.h"

namespace qbx {
namespace {

constexpr int kNotAllowed = 3219;

/// Rows up to this number are sorted in one by one.
constexpr std::size_t kFewMoved = 64;

[[noreturn]] void ThrowNotAllowed() {
  throw DatabaseError(kNotAllowed, QStringLiteral("Operation is not allowed in this context."), {});
}

}  // namespace

class Recordset::State {
 public:
  /// Rows with what was deleted of them; shared by clones.
  struct SharedRows {
    PackedRows rows;
    std::vector<bool> deleted = {};
    qint64 deletedCount = 0;
    qint64 changes = 0;  ///< of cells
  };

  std::vector<Column> columns;
  QHash<QString, int> names;  // as asked for, filled as they are

  std::unique_ptr<RowSource> source;  // forward-only
  bool started = false;
  bool ended = false;

  std::shared_ptr<SharedRows> shared;  // client-side
  std::vector<quint32> order;          // stored rows in the current order; may still hold rows deleted since `cleaned`
  qint64 cleaned = 0;                  // deletions already taken out of `order`
  std::vector<quint32> sorted;         // all stored rows by the sort, once they were sorted
  qint64 sortedChanges = -1;           // `changes` that `sorted` has, but for those in `moved`
  std::vector<quint32> moved;          // stored rows that may stand elsewhere by the sort now
  qint64 current = 0;                  // index into `order`
  int sortColumn = -1;
  bool sortDescending = false;
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
    while (rows.Next())
      read->rows.Append(rows);
    read->deleted.assign(static_cast<std::size_t>(read->rows.Count()), false);
    columns = rows.Columns();
    names.clear();
    shared = std::move(read);
    sortedChanges = -1;
    Arrange();
  }

  /// Builds `order` from the filter and the sort, and goes to the first row.
  void Arrange() {
    const bool isSorted = sortColumn >= 0 && sortColumn < static_cast<int>(columns.size());
    if (isSorted) BringSorted();
    const auto count = static_cast<quint32>(shared->rows.Count());
    order.clear();
    order.reserve(count);
    for (quint32 place = 0; place < count; ++place) {
      const quint32 row = isSorted ? sorted[place] : place;
      if (!shared->deleted[row] && (!filter || filter(StoredRow(shared->rows, row)))) order.push_back(row);
    }
    cleaned = shared->deletedCount;
    GoTo(0);
  }

  /// Makes `sorted` hold all rows in order. Of rows that were sorted before only those that may have moved are sorted in.
  void BringSorted() {
    const bool isOfNow = sortedChanges == shared->changes && moved.size() <= kFewMoved;
    if (!isOfNow) {
      sorted.resize(static_cast<std::size_t>(shared->rows.Count()));
      std::iota(sorted.begin(), sorted.end(), 0U);
      SortRows(sorted, shared->rows, sortColumn, sortDescending);
    } else if (!moved.empty()) {
      std::erase_if(sorted, [this](quint32 row) { return std::find(moved.begin(), moved.end(), row) != moved.end(); });
      std::sort(moved.begin(), moved.end());
      moved.erase(std::unique(moved.begin(), moved.end()), moved.end());
      for (const quint32 row : moved)
        InsertRow(sorted, row, shared->rows, sortColumn, sortDescending);
    }
    moved.clear();
    sortedChanges = shared->changes;
  }

  /// What a clone changes makes the order of this one be worked out anew.
  void PutCell(quint32 row, int column, const Value& value) {
    shared->rows.Set(row, column, value);
    const bool wasOfNow = sortedChanges == shared->changes;
    ++shared->changes;
    if (!wasOfNow) return;
    sortedChanges = shared->changes;
    if (column == sortColumn && moved.size() <= kFewMoved) moved.push_back(row);
  }

  /// What was set and never written belongs to the row that is left.
  void GoTo(qint64 row) {
    DropChanges();
    current = row;
  }

  void DropChanges() {
    adding = false;
    pendingColumns.clear();
    pendingValues.clear();
  }

  /// Takes rows deleted meanwhile, here or by a clone, out of `order`; the current row, or the next that is left, stays
  /// current.
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

  /// Fetches the first row of a forward-only result, once somebody wants to know.
  void Start() {
    if (started) return;
    started = true;
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

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

Recordset Recordset::ReadAll(std::unique_ptr<RowSource> source) {
  Recordset result;
  if (!source) return result;
  result.state_ = std::make_unique<State>();
  result.state_->Read(*source);
  return result;
}

Recordset Recordset::Forward(std::unique_ptr<RowSource> source) {
  Recordset result;
  if (!source) return result;
  result.state_ = std::make_unique<State>();
  result.state_->columns = source->Columns();
  result.state_->source = std::move(source);
  return result;
}

void Recordset::SetWritable(Session& session, const QString& table, const QString& keyColumn) {
  if (!state_) ThrowNotAllowed();
  state_->session = &session;
  state_->table = table;
  state_->keyColumn = keyColumn;
}

void Recordset::SetSource(std::function<std::unique_ptr<RowSource>()> reader) {
  if (!state_) ThrowNotAllowed();
  state_->reader = std::move(reader);
}

bool Recordset::IsOpen() const {
  return state_ != nullptr;
}

bool Recordset::IsWritable() const {
  return state_ && state_->session != nullptr && state_->ClientSide();
}

void Recordset::Close() {
  state_.reset();
}

const std::vector<Column>& Recordset::Columns() const {
  static const std::vector<Column> kNone;
  return state_ ? state_->columns : kNone;
}

int Recordset::ColumnIndex(const QString& name) const {
  return state_ ? state_->IndexOf(name) : -1;
}

void Recordset::MoveFirst() {
  if (!state_) return;
  if (state_->ClientSide()) {
    state_->GoTo(0);
  } else if (state_->started) {
    ThrowNotAllowed();
  }
}

void Recordset::MoveNext() {
  if (!state_ || state_->AtEnd()) return;
  if (state_->ClientSide()) {
    state_->GoTo(state_->current + 1);
  } else {
    state_->ended = !state_->source->Next();
  }
}

void Recordset::MoveTo(qint64 row) {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  state_->Clean();
  state_->GoTo(std::clamp<qint64>(row, 0, static_cast<qint64>(state_->order.size())));
}

qint64 Recordset::Position() const {
  if (!state_ || !state_->ClientSide()) return -1;
  state_->Clean();
  return state_->current;
}

bool Recordset::Eof() const {
  return !state_ || state_->AtEnd();
}

qint64 Recordset::RecordCount() const {
  if (!state_) return 0;
  if (!state_->ClientSide()) return -1;
  state_->Clean();
  return static_cast<qint64>(state_->order.size());
}

qint64 Recordset::StoredCount() const {
  return state_ && state_->ClientSide() ? state_->shared->rows.Count() - state_->shared->deletedCount : 0;
}

Value Recordset::Field(const QString& name) const {
  if (!state_) return {};
  for (std::size_t i = 0; i < state_->pendingColumns.size(); ++i) {
    if (state_->pendingColumns[i].compare(name, Qt::CaseInsensitive) == 0) return state_->pendingValues[i];
  }
  return state_->adding ? Value() : Field(state_->IndexOf(name));
}

Value Recordset::Field(int column) const {
  return state_ ? state_->CurrentCell(column).ToValue() : Value();
}

Cell Recordset::At(qint64 row, int column) const {
  if (!state_ || !state_->ClientSide()) return {};
  state_->Clean();
  if (row < 0 || row >= static_cast<qint64>(state_->order.size())) return {};
  if (column < 0 || column >= static_cast<int>(state_->columns.size())) return {};
  return state_->shared->rows.At(state_->order[static_cast<std::size_t>(row)], column);
}

Cell StoredRow::At(int column) const {
  return rows_.At(row_, column);
}

void Recordset::Visit(const std::function<void(const StoredRow& row)>& look) const {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  const State::SharedRows& stored = *state_->shared;
  for (qint64 row = 0; row < stored.rows.Count(); ++row)
    if (!stored.deleted[static_cast<std::size_t>(row)]) look(StoredRow(stored.rows, row));
}

void Recordset::Amend(const std::function<void(AmendedRow& row)>& amend) {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  state_->DropChanges();
  State::SharedRows& stored = *state_->shared;
  quint32 row = 0;
  const AmendedRow::Writer write = [this, &row](int column, const Value& value) {
    state_->PutCell(row, column, value);
  };
  for (; row < stored.deleted.size(); ++row) {
    if (stored.deleted[row]) continue;
    AmendedRow amended(stored.rows, row, write);
    amend(amended);
    if (!amended.Dropped()) continue;
    stored.deleted[row] = true;
    ++stored.deletedCount;
  }
}

void Recordset::ArrangeAgain() {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  state_->Arrange();
}

void Recordset::Sort(int column, bool descending) {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  if (column != state_->sortColumn || descending != state_->sortDescending) state_->sortedChanges = -1;
  state_->sortColumn = column;
  state_->sortDescending = descending;
  state_->Arrange();
}

void Recordset::Filter(std::function<bool(const StoredRow& row)> predicate) {
  if (!state_) return;
  if (!state_->ClientSide()) ThrowNotAllowed();
  state_->filter = std::move(predicate);
  state_->Arrange();
}

void Recordset::Requery() {
  if (!state_ || !state_->reader) ThrowNotAllowed();
  state_->source.reset();
  std::unique_ptr<RowSource> rows = state_->reader();
  if (!rows) ThrowNotAllowed();
  if (state_->ClientSide()) {
    state_->Read(*rows);
  } else {
    state_->columns = rows->Columns();
    state_->names.clear();
    state_->source = std::move(rows);
    state_->started = false;
    state_->ended = false;
  }
}

Recordset Recordset::Clone() const {
  Recordset copy;
  if (!state_) return copy;
  if (!state_->ClientSide()) ThrowNotAllowed();
  copy.state_ = std::make_unique<State>();
  State& to = *copy.state_;
  to.columns = state_->columns;
  to.shared = state_->shared;
  to.order = state_->order;
  to.cleaned = state_->cleaned;
  to.sorted = state_->sorted;
  to.sortedChanges = state_->sortedChanges;
  to.moved = state_->moved;
  to.sortColumn = state_->sortColumn;
  to.sortDescending = state_->sortDescending;
  to.filter = state_->filter;
  to.session = state_->session;
  to.table = state_->table;
  to.keyColumn = state_->keyColumn;
  to.reader = state_->reader;
  return copy;
}

Recordset Recordset::Snapshot() const {
  Recordset copy = Clone();
  if (!copy.state_) return copy;
  const State::SharedRows& rows = *state_->shared;
  copy.state_->shared = std::make_shared<State::SharedRows>(State::SharedRows{
      .rows = rows.rows.Copy(), .deleted = rows.deleted, .deletedCount = rows.deletedCount, .changes = rows.changes});
  return copy;
}

void Recordset::Delete() {
  if (!state_ || state_->AtEnd()) ThrowNotAllowed();
  state_->RequireWritable();
  state_->session->DeleteRow(state_->table, state_->keyColumn, state_->CurrentKey());
  Drop();
}

void Recordset::Drop() {
  if (!state_ || !state_->ClientSide() || state_->AtEnd()) ThrowNotAllowed();
  state_->DropChanges();
  state_->shared->deleted[state_->order[static_cast<std::size_t>(state_->current)]] = true;
  ++state_->shared->deletedCount;
}

void Recordset::Put(qint64 row, int column, const Value& value) {
  if (!state_ || !state_->ClientSide()) ThrowNotAllowed();
  state_->Clean();
  if (row < 0 || row >= static_cast<qint64>(state_->order.size())) return;
  if (column < 0 || column >= static_cast<int>(state_->columns.size())) return;
  state_->PutCell(state_->order[static_cast<std::size_t>(row)], column, value);
}

void Recordset::AddNew() {
  if (!state_) ThrowNotAllowed();
  state_->RequireWritable();
  state_->DropChanges();
  state_->adding = true;
}

void Recordset::Set(const QString& column, const Value& value) {
  if (!state_) ThrowNotAllowed();
  state_->RequireWritable();
  if (state_->IndexOf(column) < 0) {
    throw DatabaseError(
        kItemNotFound,
        QStringLiteral("Item cannot be found in the collection corresponding to the requested name or ordinal."), {});
  }
  for (std::size_t i = 0; i < state_->pendingColumns.size(); ++i) {
    if (state_->pendingColumns[i].compare(column, Qt::CaseInsensitive) != 0) continue;
    state_->pendingValues[i] = value;
    return;
  }
  state_->pendingColumns.push_back(column);
  state_->pendingValues.push_back(value);
}

void Recordset::Update() {
  if (!state_) ThrowNotAllowed();
  State& state = *state_;
  state.RequireWritable();
  // Taken first, so that changes which the server refuses are not shown or written later.
  const bool adding = std::exchange(state.adding, false);
  const std::vector<QString> columns = std::exchange(state.pendingColumns, {});
  const std::vector<Value> values = std::exchange(state.pendingValues, {});
  if (adding) {
    state.session->InsertRow(state.table, columns, values);
  } else if (!columns.empty()) {
    if (state.AtEnd()) ThrowNotAllowed();
    state.session->UpdateRow(state.table, state.keyColumn, state.CurrentKey(), columns, values);
    const quint32 row = state.order[static_cast<std::size_t>(state.current)];
    for (std::size_t i = 0; i < columns.size(); ++i)
      state.PutCell(row, state.IndexOf(columns[i]), values[i]);
  }
}

}  // namespace qbx
