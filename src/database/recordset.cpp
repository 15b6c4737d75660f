#include "database/recordset.h"

#include <algorithm>
#include <utility>

#include "database/recordset_state.h"

namespace qbx {

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
    state_->ended = true;  // also when it fails
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
  state_->sorted.SortBy(column, descending);
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

void Recordset::DeleteRows(const std::function<bool(const StoredRow& row)>& condemned) {
  if (!state_) ThrowNotAllowed();
  state_->RequireWritable();
  State::SharedRows& stored = *state_->shared;
  const int keyColumn = state_->IndexOf(state_->keyColumn);
  if (keyColumn < 0) ThrowNotAllowed();
  std::vector<qint64> rows;
  std::vector<Value> keys;
  for (qint64 row = 0; row < stored.rows.Count(); ++row) {
    if (stored.deleted[static_cast<std::size_t>(row)] || !condemned(StoredRow(stored.rows, row))) continue;
    rows.push_back(row);
    keys.push_back(stored.rows.At(row, keyColumn).ToValue());
  }
  if (rows.empty()) return;
  state_->session->DeleteRows(state_->table, state_->keyColumn, keys);
  state_->DropChanges();
  for (const qint64 row : rows)
    stored.deleted[static_cast<std::size_t>(row)] = true;
  stored.deletedCount += static_cast<qint64>(rows.size());
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
  // Taken first, so that changes that the server refuses are not shown or written later.
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
