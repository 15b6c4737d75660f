#include "database/odbc/open_rows.h"

#include <utility>

#include "database/odbc/native_errors.h"

namespace qbx {

OpenRows::OpenRows(std::shared_ptr<OdbcLink> link, std::unique_ptr<OdbcStatement> statement,
                   std::optional<std::chrono::nanoseconds> left)
    : link_(std::move(link)),
      statement_(std::move(statement)),
      rows_(std::make_unique<OdbcRows>(statement_->Handle(), link_->DataAnywhere())),
      left_(left) {
  columns_ = rows_->Columns();
  link_->openRows = this;
}

OpenRows::~OpenRows() {
  Release();
}

Cell OpenRows::At(int column) const {
  if (kept_) return kept_->At(keptRow_, column);
  return rows_ ? rows_->At(column) : Cell();
}

bool OpenRows::Next() {
  if (kept_ && ++keptRow_ < kept_->Count()) return true;
  if (failure_) throw DatabaseError(*failure_);
  if (!rows_) return false;
  try {
    atRow_ = Fetch(OdbcLink::MayInterrupt::kYes);
  } catch (const DatabaseError& error) {
    failure_ = error;
    Release();
    throw;
  }
  if (!atRow_) Release();
  return atRow_;
}

/// Subtracts the time that it needs from `left_`.
bool OpenRows::Fetch(OdbcLink::MayInterrupt mayInterrupt) {
  if (left_ && left_->count() <= 0) throw FailureOfCall({}, false, CallEnd::kTimedOut);
  const OdbcLink::Turn turn(*link_, statement_->Handle(), left_, mayInterrupt);
  const auto started = std::chrono::steady_clock::now();
  bool row = false;
  try {
    row = rows_->Next();
  } catch (const OdbcFailure& failure) {
    link_->Fail(failure.records);
  }
  if (left_) *left_ -= std::chrono::steady_clock::now() - started;
  if (row) return true;
  const OdbcOutcome rest = statement_->ReadAll(::SQLMoreResults(statement_->Handle().Get()), {});
  if (!rest.errors.empty()) link_->Fail(rest.errors);
  return false;
}

void OpenRows::KeepRest() {
  if (!rows_) return;
  PackedRows kept(static_cast<int>(columns_.size()));
  if (atRow_) kept.Append(*rows_);
  keptRow_ = atRow_ ? 0 : -1;
  try {
    while (Fetch(OdbcLink::MayInterrupt::kNo))
      kept.Append(*rows_);
  } catch (const DatabaseError& error) {
    failure_ = error;
  }
  kept_ = std::move(kept);
  Release();
}

void OpenRows::Release() {
  rows_.reset();
  statement_.reset();
  if (link_->openRows == this) link_->openRows = nullptr;
}

}  // namespace qbx
