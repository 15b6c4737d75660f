#include "grids/ui/grid_model.h"

#include <QBrush>
#include <QColor>
#include <QModelIndex>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <limits>

namespace qbx {
namespace {

const QColor kBlue(0x00, 0x00, 0xFF);
const QColor kLightBlue(0x8A, 0xB4, 0xF8);
const QColor kMark(0xFF, 0xE0, 0x82);

bool HasAny(const QSet<QString>& set, const QString& field) {
  return !set.isEmpty() && set.contains(field.toLower());
}

}  // namespace

void GridModel::Bind(const Recordset* records) {
  beginResetModel();
  records_ = records != nullptr && records->IsOpen() ? records : nullptr;
  columns_.clear();
  if (records_ != nullptr) columns_ = gridFormatColumns(records_->Columns(), highlightedColumns_);
  Decorate();
  rows_ = records_ == nullptr
              ? 0
              : static_cast<int>(std::min<qint64>(records_->RecordCount(), std::numeric_limits<int>::max()));
  highlightedRow_ = -1;
  flippedRow_ = -1;
  endResetModel();
}

void GridModel::RowsChanged() {
  beginResetModel();
  rows_ = records_ == nullptr || !records_->IsOpen() ? 0 : static_cast<int>(records_->RecordCount());
  highlightedRow_ = -1;
  flippedRow_ = -1;
  endResetModel();
}

int GridModel::ColumnOf(const QString& field) const {
  return records_ == nullptr ? -1 : records_->ColumnIndex(field);
}

const GridColumn* GridModel::ColumnAt(int column) const {
  return column < 0 || column >= columnCount() ? nullptr : &columns_[static_cast<std::size_t>(column)];
}

void GridModel::Format(const QString& highlightedColumns) {
  highlightedColumns_ = highlightedColumns;
  if (records_ == nullptr) return;
  columns_ = gridFormatColumns(records_->Columns(), highlightedColumns_);
  Decorate();
  if (!columns_.empty()) headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

/// Applies captions and flags to the columns. They are kept by field for columns that are shown later.
void GridModel::Decorate() {
  for (GridColumn& column : columns_) {
    const QString field = column.field.toLower();
    if (const auto caption = captions_.constFind(field); caption != captions_.constEnd()) column.heading = *caption;
    if (flags_.contains(field)) column.format = GridFormat::kTick;
  }
}

void GridModel::SetCaption(const QString& field, const QString& caption) {
  captions_.insert(field.toLower(), caption);
  Format(highlightedColumns_);
}

void GridModel::SetFlags(const QStringList& fields) {
  flags_.clear();
  for (const QString& field : fields)
    flags_.insert(field.toLower());
  Format(highlightedColumns_);
}

void GridModel::Lock(const QStringList& fields, bool lock) {
  for (const QString& field : fields) {
    if (lock)
      locked_.insert(field.toLower());
    else
      locked_.remove(field.toLower());
  }
}

bool GridModel::IsTick(int column) const {
  const GridColumn* found = ColumnAt(column);
  return found != nullptr && found->format == GridFormat::kTick;
}

bool GridModel::IsFlag(int column) const {
  const GridColumn* found = ColumnAt(column);
  return found != nullptr && HasAny(flags_, found->field);
}

QString GridModel::FlagReason(const QModelIndex& index) const {
  if (!flagReasonOf_ || !IsFlag(index.column())) return {};
  return flagReasonOf_(index.row(), ColumnAt(index.column())->field);
}

void GridModel::SetEditor(Editor editor, std::function<bool()> mayEdit) {
  editor_ = std::move(editor);
  mayEdit_ = std::move(mayEdit);
}

void GridModel::SetStyles(GridStyles styles, QColor customBackground) {
  styles_ = std::move(styles);
  customBackground_ = customBackground;
}

GridStyle& GridModel::NamedStyle(const QString& name) {
  const auto found = named_.find(name);
  if (found != named_.end()) return found->second;
  GridStyle style{styles_.odd.font, {}, {}};
  style.font.setFamily(QStringLiteral("Tahoma"));
  return named_.emplace(name, std::move(style)).first->second;
}

void GridModel::SetSortedColumn(int column) {
  sortedColumn_ = column;
  if (!columns_.empty()) headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

void GridModel::SetFilteredColumns(QSet<int> columns) {
  filteredColumns_ = std::move(columns);
  if (!columns_.empty()) headerDataChanged(Qt::Horizontal, 0, columnCount() - 1);
}

/// The colour of a marked heading; invalid for an ordinary one.
QColor GridModel::HeadingColour(int column) const {
  if (column == sortedColumn_) return styles_.sorted;
  return filteredColumns_.contains(column) ? styles_.filtered : QColor();
}

void GridModel::ShowFlipped(qint64 row, int column) {
  flippedRow_ = row;
  flippedColumn_ = column;
}

QString GridModel::TextOf(const QModelIndex& index) const {
  QString text =
      GridText(records_->At(index.row(), index.column()), columns_[static_cast<std::size_t>(index.column())]);
  if (index.row() != flippedRow_ || index.column() != flippedColumn_) return text;
  return text == QLatin1String("Yes") ? QStringLiteral("No") : QStringLiteral("Yes");
}

void GridModel::Highlight(qint64 row, int column) {
  const auto changed = [this](qint64 of, int at) {
    if (of < 0 || of >= rows_) return;
    const QModelIndex cell = index(static_cast<int>(of), at);
    dataChanged(cell, cell);
  };
  const qint64 oldRow = std::exchange(highlightedRow_, row);
  const int oldColumn = std::exchange(highlightedColumn_, column);
  changed(oldRow, oldColumn);
  changed(row, column);
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

const GridStyle& GridModel::StyleOf(qint64 row) const {
  if (styleOf_) {
    const QString name = styleOf_(row);
    if (name == QLatin1String("Section")) return styles_.section;
    if (const auto found = named_.find(name); found != named_.end()) return found->second;
  }
  return row % 2 == 0 ? styles_.odd : styles_.even;
}

QColor GridModel::ForegroundOf(const QModelIndex& index, const GridStyle& style) const {
  if (index.row() == highlightedRow_ && index.column() == highlightedColumn_) return ReadableOn(kMark);
  const QColor& background = customBackground_.isValid() ? customBackground_ : style.background;
  const bool lightText = background.isValid() && ReadableOn(background) == Qt::white;
  if (columns_[static_cast<std::size_t>(index.column())].highlighted) return lightText ? kLightBlue : kBlue;
  return customBackground_.isValid() ? ReadableOn(customBackground_) : style.foreground;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_ || index.column() >= columnCount()) return {};
  const GridColumn& column = columns_[static_cast<std::size_t>(index.column())];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      return TextOf(index);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (column.format == GridFormat::kTick ? Qt::AlignHCenter
                                                     : column.IsNumber()                ? Qt::AlignRight
                                                                                        : Qt::AlignLeft));
    case Qt::BackgroundRole: {
      if (index.row() == highlightedRow_ && index.column() == highlightedColumn_) return QBrush(kMark);
      const QColor& colour = customBackground_.isValid() ? customBackground_ : StyleOf(index.row()).background;
      return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    case Qt::ForegroundRole: {
      const QColor colour = ForegroundOf(index, StyleOf(index.row()));
      return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
      return FlagReason(index);
    case Qt::FontRole:
      return styleOf_ ? QVariant(StyleOf(index.row()).font) : QVariant();
    default:
      return {};
  }
}

bool GridModel::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (role != Qt::EditRole || !editor_ || !editor_(index.row(), index.column(), value.toString())) return false;
  dataChanged(index, index);
  return true;
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  const GridColumn* column = orientation == Qt::Horizontal ? ColumnAt(section) : nullptr;
  if (column == nullptr) return {};
  switch (role) {
    case Qt::DisplayRole:
    case Qt::ToolTipRole:
      return column->heading;
    case Qt::BackgroundRole: {
      const QColor colour = HeadingColour(section);
      return colour.isValid() ? QVariant(QBrush(colour)) : QVariant();
    }
    case Qt::ForegroundRole: {
      const QColor colour = HeadingColour(section);
      return colour.isValid() ? QVariant(QBrush(ReadableOn(colour))) : QVariant();
    }
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(Qt::AlignVCenter | (column->IsNumber() ? Qt::AlignRight : Qt::AlignLeft));
    default:
      return {};
  }
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  if (!index.isValid() || index.row() >= rows_) return Qt::NoItemFlags;
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  const GridColumn* column = ColumnAt(index.column());
  if (column != nullptr && records_->IsWritable() && mayEdit_ && mayEdit_() && !HasAny(locked_, column->field))
    flags |= Qt::ItemIsEditable;
  return flags;
}

}  // namespace qbx
