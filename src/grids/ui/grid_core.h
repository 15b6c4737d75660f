// What the parts of a data grid share.

#pragma once

#include <QPointer>
#include <QString>
#include <QTableView>
#include <functional>

#include "database/recordset.h"
#include "database/statements.h"
#include "diagnostics/diagnostics.h"
#include "grids/ui/grid_model.h"
#include "grids/ui/grid_owner.h"
#include "settings/user_options.h"

namespace qbx {

/// The rows, the view that shows them, and where failures are reported.
struct GridCore {
  GridCore(Statements& usedStatements, Diagnostics toldDiagnostics, const UserOptions& userOptions)
      : statements(usedStatements), diagnostics(toldDiagnostics), options(userOptions) {}

  Statements& statements;
  Diagnostics diagnostics;
  const UserOptions& options;
  GridOwner* owner = nullptr;
  QPointer<QTableView> view;
  GridModel model;
  Recordset* records = nullptr;
  QString sortString;  ///< "[column] ASC" or "[column] DESC"; empty while unsorted

  [[nodiscard]] qint64 RowCount() const { return model.rowCount(); }
  /// The shown columns in their order.
  [[nodiscard]] std::vector<int> ShownColumns() const;
  /// The sorted column, -1 while unsorted.
  [[nodiscard]] int SortedColumn() const;
  /// Does work that may throw, and reports a failure under the routine's name. \return whether it succeeded
  bool Guarded(const char* routine, const std::function<void()>& work);
  void Say(const QString& text, MessageIcon icon);
};

}  // namespace qbx
