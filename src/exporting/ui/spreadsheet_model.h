// The cells of the spreadsheet window.

#pragma once

#include <QAbstractTableModel>

#include "exporting/export_sheet.h"
#include "grids/grid_columns.h"

namespace qbx {

/// Shows a sheet as far as it is filled, the headings as its first row when they are wanted.
class SpreadsheetModel final : public QAbstractTableModel {
 public:
  /// The sheet must outlive this.
  explicit SpreadsheetModel(const ExportSheet& sheet)
      : sheet_(sheet), columns_(gridFormatColumns(sheet.rows.Columns())) {}

  /// \param rows  rows of the sheet that are filled now, not fewer than before
  void Fill(qint64 rows);
  /// Puts the headings in front as a row, or takes that row out.
  void ShowHeadings(bool show);
  [[nodiscard]] bool HasHeadings() const { return headings_ == 1; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  /// Columns have letters, as in other spreadsheets.
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QVariant Heading(const ExportColumn& column, int role) const;
  [[nodiscard]] QString Text(qint64 row, const ExportColumn& column) const;

  const ExportSheet& sheet_;
  std::vector<GridColumn> columns_;  // of the recordset
  int headings_ = 0;                 // rows of headings
  int filled_ = 0;
};

}  // namespace qbx
