#include "exporting/ui/spreadsheet_model.h"

#include <QFont>
#include <QModelIndex>
#include <QString>
#include <QVariant>

namespace qbx {

namespace {

bool IsNumber(ExportType type) {
  return type == ExportType::kInteger || type == ExportType::kDecimal;
}

/// The name of a column: "A" to "Z", "AA", "AB" ...
QString ColumnLetters(int column) {
  constexpr int kLetters = 26;
  QString letters;
  for (int rest = column + 1; rest > 0; rest = (rest - 1) / kLetters)
    letters.prepend(QChar(u'A' + (rest - 1) % kLetters));
  return letters;
}

}  // namespace

void SpreadsheetModel::Fill(qint64 rows) {
  if (rows <= filled_) return;
  beginInsertRows({}, headings_ + filled_, headings_ + static_cast<int>(rows) - 1);
  filled_ = static_cast<int>(rows);
  endInsertRows();
}

void SpreadsheetModel::ShowHeadings(bool show) {
  if (show == HasHeadings()) return;
  if (show) {
    beginInsertRows({}, 0, 0);
    headings_ = 1;
    endInsertRows();
  } else {
    beginRemoveRows({}, 0, 0);
    headings_ = 0;
    endRemoveRows();
  }
}

int SpreadsheetModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : headings_ + filled_;
}

int SpreadsheetModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(sheet_.columns.size());
}

QVariant SpreadsheetModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const ExportColumn& column = sheet_.columns[static_cast<std::size_t>(index.column())];
  if (index.row() < headings_) return Heading(column, role);
  const qint64 row = index.row() - headings_;
  switch (role) {
    case Qt::DisplayRole:
      if (column.type == ExportType::kTick) return {};
      [[fallthrough]];
    case Qt::AccessibleTextRole:
      return Text(row, column);
    case Qt::CheckStateRole:
      if (column.type != ExportType::kTick) return {};
      return sheet_.At(row, column).integer != 0 ? Qt::Checked : Qt::Unchecked;
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (IsNumber(column.type) ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

QVariant SpreadsheetModel::Heading(const ExportColumn& column, int role) const {
  if (role == Qt::DisplayRole) return column.heading;
  if (role != Qt::FontRole) return {};
  QFont bold;
  bold.setBold(true);
  return bold;
}

QString SpreadsheetModel::Text(qint64 row, const ExportColumn& column) const {
  const Cell cell = sheet_.At(row, column);
  if (cell.type == ValueType::kNull && IsNumber(column.type)) return QStringLiteral("0");
  return OneLine(GridText(cell, columns_[static_cast<std::size_t>(column.field)]));
}

QVariant SpreadsheetModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (role != Qt::DisplayRole) return {};
  return orientation == Qt::Vertical ? QVariant(section + 1) : QVariant(ColumnLetters(section));
}

}  // namespace qbx
