// What a user does to the selected rows of step 3.

#pragma once

#include <QAction>
#include <QTableView>
#include <functional>
#include <vector>

#include "dispatch/row_changes.h"
#include "grids/ui/cDataGrid.h"
#include "wizard/result_edits.h"

namespace qbx {

/// The actions of the results grid, in its menu and by their keys: ticks and unticks a send flag of the selected rows, takes them out, and takes
/// the last change back.
class ResultsChanges {
 public:
  struct Parts {
    cDataGrid& grid;
    ResultEdits& edits;
    ResultsView& results;
    UserInterface& ui;
    std::function<void(const std::function<void()>& command)> run;
    std::function<void(const QString& text)> tell;  ///< what came of a change
  };
  /// \param parts  its grid has its view by now
  explicit ResultsChanges(Parts parts);

  /// Enables and names the actions for the rows that are selected now.
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
