#include "database/odbc/open_rows.h"

#include <utility>

namespace qbx {

OpenRows::OpenRows(std::shared_ptr<OdbcLink> link, std::unique_ptr<OdbcStatement> statement)
    : link_(std::move(link)),
      statement_(std::move(statement)),
      rows_(std::make_unique<OdbcRows>(statement_->Handle(), link_->DataAnywhere())) {
  columns_ = rows_->Columns();
  link_->openRows = this;
}

OpenRows::~OpenRows() {
  Release();
}

bool OpenRows::Next() {
  if (kept_) {
    if (++keptRow_ < kept_->Count()) return true;
    if (failure_) throw *std::exchange(failure_, std::nullopt);
    return false;
  }
  if (!rows_) return false;
  try {
    atRow_ = Fetch();
  } catch (...) {
    Release();
    throw;
  }
  if (!atRow_) Release();
  return atRow_;
}

bool OpenRows::Fetch() {
  const OdbcLink::Turn turn(*link_, statement_->Handle(), 0);
  try {
    if (rows_->Next()) return true;
  } catch (const OdbcFailure& failure) {
    link_->Fail(failure.records);
  }
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
    while (Fetch())
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
