// The user's changes to the selected rows of step 3.

#pragma once

#include <QAction>
#include <QKeySequence>
#include <QString>
#include <functional>
#include <vector>

#include "dispatch/row_changes.h"
#include "grids/ui/cDataGrid.h"
#include "wizard/result_edits.h"

namespace qbx {

/// The actions of the results grid, in its menu and with their keys: ticking and unticking a send flag of the selected
/// rows, taking rows out, and undoing the last change.
class ResultsChanges {
 public:
  struct Parts {
    cDataGrid& grid;
    ResultEdits& edits;
    ResultsView& results;
    UserInterface& ui;
    std::function<void(const std::function<void()>& command)> run;
    std::function<void(const QString& text)> tell;  ///< called with the result of a change
  };
  /// \param parts  its grid must have its view
  explicit ResultsChanges(Parts parts);

  /// Enables and names the actions for the selected rows.
  void Update();
  void Undo();

 private:
  struct Flag {
    Channel channel;
    QString field;
    QAction* tick;
    QAction* untick;
  };

  QAction* Add(const char* name, const QString& text, const QKeySequence& keys, const std::function<void()>& command);
  void AddFlag(Channel channel, QLatin1String field, const QString& tick, const QString& untick, Qt::Key key);
  void SetFlag(Channel channel, bool ticked);
  void TakeOut();
  void Tell(const RowChange& change, const QString& done);

  Parts parts_;
  std::vector<Flag> flags_;
  QAction* takeOut_;
  QAction* undo_;
};

}  // namespace qbx
