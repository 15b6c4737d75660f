// The data grid: its columns, and how it looks.

#include <QtWidgets>

#include "grids/grid_sort.h"
#include "grids/ui/cDataGrid.h"
#include "grids/ui/grid_delegate.h"
#include "grids/ui/grid_model.h"
#include "grids/ui/grid_position.h"

namespace qbx {
namespace {

constexpr int kRowPadding = 6;      // above and below a line, together
constexpr int kCellPadding = 18;    // left and right of a text, together
constexpr int kSortMarkWidth = 16;  // beside a heading
constexpr int kWidestFirst = 260;   // a long text does not push the others out of sight
constexpr int kLinesWhenWrapped = 3;
constexpr qint64 kSample = 60;  // rows looked at for the first widths

QString Widest(const Recordset& records, int column, const GridColumn& format) {
  QString widest = format.type != ValueType::kDateTime      ? QString()
                   : format.format == GridFormat::kDateTime ? QStringLiteral("00/00/0000 00:00:00")
                                                            : QStringLiteral("00/00/0000");
  const qint64 count = std::min(records.RecordCount(), kSample);
  for (qint64 row = 0; row < count; ++row) {
    const QString text = OneLine(GridText(records.At(row, column), format));
    if (text.size() > widest.size()) widest = text;
  }
  return widest;
}

}  // namespace

void cDataGrid::FormatColumns(const QString& highlightedColumns) {
  Guarded("FormatColumns", [this, &highlightedColumns] { model_->Format(highlightedColumns); });
}

void cDataGrid::ColumnChanged(int column) {
  if (!layingOut_) changedByUser_.insert(column);
}

/// Wide enough for the heading and for what the first rows hold; measuring every row would cost seconds. Columns that the user changed stay.
void cDataGrid::FitColumns() {
  if (records_ == nullptr) return;
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  fittedToRows_ = RowCount() > 0;
  QHeaderView& header = *view_->horizontalHeader();
  const QFontMetrics headingMetrics(model_->Styles().heading.font);
  const QFontMetrics rowMetrics(model_->Styles().odd.font);
  for (int column = 0; column < model_->columnCount(); ++column) {
    if (changedByUser_.contains(column)) continue;
    const GridColumn& format = *model_->ColumnAt(column);
    int width = headingMetrics.horizontalAdvance(format.heading) + kSortMarkWidth;
    if (format.format != GridFormat::kTick)
      width = std::max(width, rowMetrics.horizontalAdvance(Widest(*records_, column, format)));
    header.resizeSection(column, std::min(width, kWidestFirst) + kCellPadding);
  }
}

void cDataGrid::SetCaption(const QString& field, const QString& caption) {
  model_->SetCaption(field, caption);
}

void cDataGrid::HideColumns(const QStringList& fields, bool hide) {
  Guarded("HideColumns", [&] {
    for (const QString& field : fields) {
      if (hide)
        hidden_.insert(field.toLower());
      else
        hidden_.remove(field.toLower());
      const int column = model_->ColumnOf(field);
      if (view_ && column >= 0) view_->setColumnHidden(column, hide);
    }
  });
}

void cDataGrid::ApplyHidden() {
  for (int column = 0; column < model_->columnCount(); ++column) {
    if (hidden_.contains(model_->ColumnAt(column)->field.toLower())) view_->setColumnHidden(column, true);
  }
}

void cDataGrid::LockColumns(const QStringList& fields, bool lock) {
  Guarded("LockColumns", [&] { model_->Lock(fields, lock); });
}

void cDataGrid::FlagColumns(const QStringList& fields) {
  model_->SetFlags(fields);
}

void cDataGrid::AddEditButton(const QString& field) {
  delegate_->AddEditButton(field);
  if (view_) view_->viewport()->update();
}

GridStyle& cDataGrid::AddStyleSet(const QString& name) {
  return model_->NamedStyle(name);
}

void cDataGrid::SetRowStyle(std::function<QString(qint64 row)> styleOf) {
  model_->SetRowStyle(std::move(styleOf));
  if (view_) view_->viewport()->update();
}

void cDataGrid::ApplyStyles() {
  if (!view_) return;
  const QWidget* parent = view_->parentWidget();
  const GridStyles styles =
      StylesOf(options_, view_->palette(), parent != nullptr ? parent->font() : QApplication::font());
  model_->SetStyles(styles, customBackColor_ >= 0 ? ColourOf(customBackColor_) : QColor());
  view_->setFont(styles.odd.font);
  view_->horizontalHeader()->setFont(styles.heading.font);
  ApplyRowHeight();
  ShowSortMark();
  ShowPanel();
  view_->viewport()->update();
}

void cDataGrid::ApplyRowHeight() {
  if (!view_) return;
  const int line = QFontMetrics(model_->Styles().odd.font).height();
  const int lines = wrapped_ ? kLinesWhenWrapped : 1;
  view_->verticalHeader()->setDefaultSectionSize(std::max(rowHeight_, line * lines + kRowPadding));
  view_->viewport()->update();
}

int cDataGrid::SortedColumn() const {
  const GridSort sort = ParseSort(sortString_);
  return sort.column.isEmpty() ? -1 : model_->ColumnOf(sort.column);
}

void cDataGrid::ShowSortMark() {
  if (!view_) return;
  const int column = SortedColumn();
  QHeaderView& header = *view_->horizontalHeader();
  model_->SetSortedColumn(column);
  header.setSortIndicatorShown(column >= 0);
  if (column >= 0)
    header.setSortIndicator(column, ParseSort(sortString_).descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void cDataGrid::HeadClick(int column) {
  const GridColumn* clicked = model_->ColumnAt(column);
  if (!colSorting_ || clicked == nullptr) return;
  if (RowCount() > 0)
    sSortString(SortText(SortAfterClick(ParseSort(sortString_), clicked->field)));
  else
    ShowSortMark();  // the heading turned its mark by itself
}

void cDataGrid::KeepLayout(RegistryValues& registry, const QString& window) {
  registry_ = &registry;
  layoutWindow_ = window;
}

void cDataGrid::SaveLayout() {
  if (registry_ == nullptr || !view_ || model_->columnCount() == 0) return;
  Guarded("gridSavePosition", [this] { gridSavePosition(*registry_, layoutWindow_, true, *view_, changedByUser_); });
}

}  // namespace qbx
