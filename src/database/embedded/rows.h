// A result of the embedded engine.

#pragma once

#include "database/embedded/prepared.h"
#include "database/session.h"

namespace qbx {

/// Steps a statement each time a row is asked for.
class SqliteRows final : public RowSource {
 public:
  /// \param stepped  whether the statement was stepped once already
  /// \param atRow    whether that step found a row
  SqliteRows(StatementLease lease, bool stepped, bool atRow);

  [[nodiscard]] const std::vector<Column>& Columns() const override { return lease_->Columns(); }
  bool Next() override;
  [[nodiscard]] Cell At(int column) const override;

 private:
  StatementLease lease_;
  std::vector<ColumnReading> readings_;
  bool stepped_;
  bool atRow_;
};

/// Reads "yyyy-mm-dd" with or without " hh:mm:ss[.zzz]" (or "T" before the time) as milliseconds since 1970-01-01 of
/// the wall clock.
/// \return false when the text is no such date
[[nodiscard]] bool ParseDateTime(std::string_view text, qint64& milliseconds);

}  // namespace qbx
