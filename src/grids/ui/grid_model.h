// The model of a grid: a recordset as the table view reads it.

#pragma once

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QModelIndex>
#include <QSet>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <functional>
#include <map>

#include "database/recordset.h"
#include "grids/grid_columns.h"
#include "grids/ui/grid_style.h"

namespace qbx {

/// Reads cells from the recordset when they are drawn. Keeps only the number of rows.
class GridModel final : public QAbstractTableModel {
 public:
  /// Takes the text that the user typed into a cell. \return whether the recordset accepted it
  using Editor = std::function<bool(qint64 row, int column, const QString& text)>;

  /// Shows a recordset; null for none.
  void Bind(const Recordset* records);
  /// Tells the view that the rows or their order have changed.
  void RowsChanged();

  [[nodiscard]] const Recordset* Records() const { return records_; }
  [[nodiscard]] const std::vector<GridColumn>& Columns() const { return columns_; }
  [[nodiscard]] int ColumnOf(const QString& field) const;
  [[nodiscard]] const GridColumn* ColumnAt(int column) const;
  void Format(const QString& highlightedColumns);

  void SetCaption(const QString& field, const QString& caption);
  void SetFlags(const QStringList& fields);
  void Lock(const QStringList& fields, bool lock);
  [[nodiscard]] bool IsTick(int column) const;
  [[nodiscard]] bool IsFlag(int column) const;
  void SetFlagReasons(std::function<QString(qint64 row, const QString& field)> reasonOf) {
    flagReasonOf_ = std::move(reasonOf);
  }
  /// Why a flag has no effect; empty when it has one, and for other cells.
  [[nodiscard]] QString FlagReason(const QModelIndex& index) const;
  /// \param mayEdit  asked for every cell that the user wants to edit
  void SetEditor(Editor editor, std::function<bool()> mayEdit);

  void SetStyles(GridStyles styles, QColor customBackground);
  [[nodiscard]] const GridStyles& Styles() const { return styles_; }
  GridStyle& NamedStyle(const QString& name);
  void SetRowStyle(std::function<QString(qint64)> styleOf) { styleOf_ = std::move(styleOf); }
  void SetSortedColumn(int column);
  void SetFilteredColumns(QSet<int> columns);
  /// Shows the opposite tick in one cell until the rows change; row -1 for none.
  void ShowFlipped(qint64 row, int column);
  /// Marks one cell; row -1 for none.
  void Highlight(qint64 row, int column);

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  [[nodiscard]] const GridStyle& StyleOf(qint64 row) const;
  [[nodiscard]] QString TextOf(const QModelIndex& index) const;
  [[nodiscard]] QColor HeadingColour(int column) const;
  [[nodiscard]] QColor ForegroundOf(const QModelIndex& index, const GridStyle& style) const;
  void Decorate();

  const Recordset* records_ = nullptr;
  int rows_ = 0;
  std::vector<GridColumn> columns_;
  QString highlightedColumns_;
  QHash<QString, QString> captions_;  // fields in lower case, also below
  QSet<QString> flags_;
  QSet<QString> locked_;
  std::function<QString(qint64, const QString&)> flagReasonOf_;
  Editor editor_;
  std::function<bool()> mayEdit_;
  GridStyles styles_;
  QColor customBackground_;
  std::map<QString, GridStyle> named_;
  std::function<QString(qint64)> styleOf_;
  int sortedColumn_ = -1;
  QSet<int> filteredColumns_;
  qint64 highlightedRow_ = -1;
  int highlightedColumn_ = -1;
  qint64 flippedRow_ = -1;
  int flippedColumn_ = -1;
};

}  // namespace qbx
