// The cells of the spreadsheet window.

#pragma once

#include <QAbstractTableModel>
#include <QModelIndex>
#include <QString>
#include <QVariant>

#include "exporting/export_sheet.h"
#include "grids/grid_columns.h"

namespace qbx {

/// Shows the filled rows of a sheet, with the headings as the first row if they are wanted.
class SpreadsheetModel final : public QAbstractTableModel {
 public:
  /// The sheet must outlive this object.
  explicit SpreadsheetModel(const ExportSheet& sheet)
      : sheet_(sheet), columns_(gridFormatColumns(sheet.rows.Columns())) {}

  /// \param rows  the number of filled rows of the sheet, not smaller than before
  void Fill(qint64 rows);
  /// Adds the headings as the first row, or removes them.
  void ShowHeadings(bool show);
  [[nodiscard]] bool HasHeadings() const { return headings_ == 1; }

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  /// Columns are named by letters, as in other spreadsheet programs.
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QVariant Heading(const ExportColumn& column, int role) const;
  [[nodiscard]] QString Text(qint64 row, const ExportColumn& column) const;

  const ExportSheet& sheet_;
  std::vector<GridColumn> columns_;  // of the recordset
  int headings_ = 0;                 // number of rows of headings
  int filled_ = 0;
};

}  // namespace qbx
