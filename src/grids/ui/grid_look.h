// The columns of a grid, and how it looks.

#pragma once

#include <QSet>
#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <vector>

#include "grids/ui/empty_grid_panel.h"
#include "grids/ui/grid_core.h"
#include "grids/ui/grid_delegate.h"
#include "grids/ui/grid_position.h"
#include "grids/ui/grid_style.h"

namespace qbx {

class RegistryValues;

/// Styles, row height, the panel over an empty grid, and the columns with their layout; what `cDataGrid` says of them holds here.
class GridLook {
 public:
  explicit GridLook(GridCore& core) : core_(core), delegate_(core.model) {}

  /// The view has its model now. \param context  lives as long as what is connected
  void Attach(QObject& context);

  // Cells and rows.
  [[nodiscard]] bool bWrapped() const { return wrapped_; }
  void bWrapped(bool wrapped);
  [[nodiscard]] bool bWordWrap() const { return wordWrap_; }
  void bWordWrap(bool wrap);
  [[nodiscard]] QString sWrapColumn() const { return wrapColumn_; }
  void sWrapColumn(const QString& field);
  [[nodiscard]] int lCustomBackColor() const { return customBackColor_; }
  void lCustomBackColor(int colour);
  GridStyle& AddStyleSet(const QString& name) { return core_.model.NamedStyle(name); }
  void SetRowStyle(std::function<QString(qint64 row)> styleOf);
  void ApplyStyles();
  void ShowSortMark();

  // The panel over an empty grid.
  [[nodiscard]] bool bHideNoRecords() const { return hideNoRecords_; }
  void bHideNoRecords(bool hide);
  [[nodiscard]] QString Tag() const { return tag_; }
  void Tag(const QString& tagged);
  void ShowPanel();
  /// The view was moved, resized, shown or hidden.
  void Resize();

  // Columns.
  [[nodiscard]] bool bColResizing() const { return colResizing_; }
  void bColResizing(bool on);
  void FormatColumns(const QString& highlightedColumns);
  void SetCaption(const QString& field, const QString& caption) { core_.model.SetCaption(field, caption); }
  void HideColumns(const QStringList& fields, bool hide);
  [[nodiscard]] QSet<QString> HiddenFields() const { return hiddenByWindow_ + hiddenByUser_; }
  void LockColumns(const QStringList& fields, bool lock);
  void FlagColumns(const QStringList& fields) { core_.model.SetFlags(fields); }
  void SetFlagReasons(std::function<QString(qint64 row, const QString& field)> reasonOf);
  void AddEditButton(const QString& field);
  [[nodiscard]] bool HasEditButton(int column) const { return delegate_.HasEditButton(column); }
  /// A column that the user may show and hide.
  struct Choice {
    int column = 0;
    QString heading;
    bool shown = true;
    bool last = false;  ///< the only one that is shown, and stays so
  };
  /// In the order shown, hidden ones at their places.
  [[nodiscard]] std::vector<Choice> Choices() const;
  /// What the user chose; the last column that is shown stays.
  void ShowColumn(int column, bool show);
  /// Fits all columns to their headings and to the rows in view, also those that the user changed.
  void FitAllColumns();
  void KeepLayout(RegistryValues& registry, const QString& window);
  void SaveLayout();

  // Called when rows were bound.
  /// Columns are shown that were not shown before: brings their layout back.
  void LayOutColumns();
  void ApplyHidden();
  /// Wide enough for the heading and for what the first rows hold; measuring every row would cost seconds. Columns that the user changed stay.
  void FitColumns();
  /// The widths are those of rows, not of headings alone.
  [[nodiscard]] bool FittedToRows() const { return fittedToRows_; }

 private:
  void ApplyRowHeight();
  void ColumnChanged(int column);
  [[nodiscard]] QString FieldOf(int column) const;
  [[nodiscard]] KeptColumns Kept() const;
  void FitColumn(int column, qint64 firstRow);

  GridCore& core_;
  GridDelegate delegate_;
  std::unique_ptr<EmptyGridPanel> panel_;
  QString wrapColumn_;
  QString tag_;
  bool wrapped_ = false;
  bool wordWrap_ = false;
  bool colResizing_ = true;
  bool hideNoRecords_ = false;
  int customBackColor_ = -1;
  QSet<QString> windowFields_;  // fields in lower case, here and below: those that the window shows or hides
  QSet<QString> hiddenByWindow_;
  QSet<QString> hiddenByUser_;
  QSet<int> changedByUser_;  // columns moved or resized, in this session or one before
  bool layingOut_ = false;   // the grid moves and resizes columns itself
  bool fittedToRows_ = false;
  RegistryValues* registry_ = nullptr;
  QString layoutWindow_;
  int rowHeight_ = 0;  // as stored by the user's layout, 0: by the font
};

}  // namespace qbx
