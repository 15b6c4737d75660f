// The columns and the look of a grid.

#pragma once

#include <QObject>
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

/// Styles, row height, the panel over an empty grid, and the columns with their layout. The comments of `cDataGrid`
/// hold here, too.
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
  /// A column that the user may show or hide.
  struct Choice {
    int column = 0;
    QString heading;
    bool shown = true;
    bool last = false;  ///< whether it is the only shown column, which cannot be hidden
  };
  /// In the order shown, with hidden columns at their places.
  [[nodiscard]] std::vector<Choice> Choices() const;
  /// Carries out the user's choice. The last shown column stays.
  void ShowColumn(int column, bool show);
  /// Fits all columns to their headings and the visible rows, including columns that the user resized.
  void FitAllColumns();
  void KeepLayout(RegistryValues& registry, const QString& window);
  void SaveLayout();

  // Called when rows were bound.
  /// New columns are shown: restores their layout.
  void LayOutColumns();
  void ApplyHidden();
  /// Makes columns wide enough for their headings and the first rows, because measuring every row would take seconds.
  /// Columns that the user resized stay.
  void FitColumns();
  /// Whether the widths were fitted to rows, and not only to headings.
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
  QSet<QString> windowFields_;  // fields in lower case, also below: those that the window shows or hides
  QSet<QString> hiddenByWindow_;
  QSet<QString> hiddenByUser_;
  QSet<int> changedByUser_;  // columns that the user moved or resized, now or in an earlier session
  bool layingOut_ = false;   // whether the grid itself is moving or resizing columns
  bool fittedToRows_ = false;
  RegistryValues* registry_ = nullptr;
  QString layoutWindow_;
  int rowHeight_ = 0;  // as stored in the user's layout; 0: by the font
};

}  // namespace qbx
