// Flipping the flags of a result row.

#pragma once

#include <QString>
#include <functional>
#include <utility>

#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "results/results_view.h"

namespace qbx {

/// Handles a click on a flag cell of the results grid.
class ResultFlags {
 public:
  ResultFlags(Statements& statements, ResultsView& view, Diagnostics diagnostics);

  using Flip = std::function<bool()>;
  /// Sets a function in which every flip is run. It returns what the flip returned: whether it was made. It may throw
  /// DatabaseError when the flip was not made.
  void Around(std::function<bool(const QString& column, qint64 recordId, const Flip& flip)> around) {
    around_ = std::move(around);
  }

  /// Whether a click on a column (its data field, ignoring case) flips a flag.
  [[nodiscard]] static bool IsFlag(const QString& column);

  /// Handles a left click on a cell. "Send_SMS", "Send_Email" and "Send_Letter" are flipped at once, "Processed" after
  /// the user agreed once (Question::kChangeProcessedFlags). Any other column is ignored.
  /// \param column    data field of the column, ignoring case
  /// \param recordId  key of the row
  void ClickCell(const QString& column, qint64 recordId);

  /// Flips a 0/1 column of a row and shows it. A key that is not above 0 is ignored.
  void ToggleCheckBox(const QString& column, qint64 recordId);

  /// Whether the user agreed to change "Processed" flags. This holds as long as the window.
  [[nodiscard]] bool ProcessedChangeConfirmed() const { return processedChangeConfirmed_; }

 private:
  Statements& statements_;
  ResultsView& view_;
  Diagnostics diagnostics_;
  std::function<bool(const QString& column, qint64 recordId, const Flip& flip)> around_;
  bool processedChangeConfirmed_ = false;
};

}  // namespace qbx
