// The columns of a grid.

#include <QtWidgets>

#include "grids/ui/grid_look.h"
#include "grids/ui/grid_position.h"

namespace qbx {
namespace {

constexpr int kCellPadding = 18;    // left and right of a text, together
constexpr int kSortMarkWidth = 16;  // beside a heading
constexpr int kWidestFirst = 260;   // a long text does not push the others out of sight
constexpr qint64 kSample = 60;      // rows looked at for the first widths

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

void GridLook::bColResizing(bool on) {
  colResizing_ = on;
  if (core_.view)
    core_.view->horizontalHeader()->setSectionResizeMode(on ? QHeaderView::Interactive : QHeaderView::Fixed);
}

void GridLook::FormatColumns(const QString& highlightedColumns) {
  core_.Guarded("FormatColumns", [this, &highlightedColumns] { core_.model.Format(highlightedColumns); });
}

void GridLook::ColumnChanged(int column) {
  if (!layingOut_) changedByUser_.insert(column);
}

void GridLook::FitColumns() {
  if (core_.records == nullptr) return;
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  fittedToRows_ = core_.RowCount() > 0;
  QHeaderView& header = *core_.view->horizontalHeader();
  const QFontMetrics headingMetrics(core_.model.Styles().heading.font);
  const QFontMetrics rowMetrics(core_.model.Styles().odd.font);
  for (int column = 0; column < core_.model.columnCount(); ++column) {
    if (changedByUser_.contains(column)) continue;
    const GridColumn& format = *core_.model.ColumnAt(column);
    int width = headingMetrics.horizontalAdvance(format.heading) + kSortMarkWidth;
    if (format.format != GridFormat::kTick)
      width = std::max(width, rowMetrics.horizontalAdvance(Widest(*core_.records, column, format)));
    header.resizeSection(column, std::min(width, kWidestFirst) + kCellPadding);
  }
}

void GridLook::HideColumns(const QStringList& fields, bool hide) {
  core_.Guarded("HideColumns", [&] {
    for (const QString& field : fields) {
      if (hide)
        hidden_.insert(field.toLower());
      else
        hidden_.remove(field.toLower());
      const int column = core_.model.ColumnOf(field);
      if (core_.view && column >= 0) core_.view->setColumnHidden(column, hide);
    }
  });
}

void GridLook::ApplyHidden() {
  for (int column = 0; column < core_.model.columnCount(); ++column) {
    if (hidden_.contains(core_.model.ColumnAt(column)->field.toLower())) core_.view->setColumnHidden(column, true);
  }
}

void GridLook::LockColumns(const QStringList& fields, bool lock) {
  core_.Guarded("LockColumns", [&] { core_.model.Lock(fields, lock); });
}

void GridLook::AddEditButton(const QString& field) {
  delegate_.AddEditButton(field);
  if (core_.view) core_.view->viewport()->update();
}

void GridLook::KeepLayout(RegistryValues& registry, const QString& window) {
  registry_ = &registry;
  layoutWindow_ = window;
}

void GridLook::SaveLayout() {
  if (registry_ == nullptr || !core_.view || core_.model.columnCount() == 0) return;
  core_.Guarded("gridSavePosition",
                [this] { gridSavePosition(*registry_, layoutWindow_, true, *core_.view, changedByUser_); });
}

void GridLook::LayOutColumns() {
  ApplyStyles();  // the user's options may have been read since
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  QHeaderView& header = *core_.view->horizontalHeader();
  for (int i = 0; i < header.count(); ++i)
    header.moveSection(header.visualIndex(i), i);
  changedByUser_.clear();
  if (registry_ != nullptr) rowHeight_ = InitGridPosition(*registry_, layoutWindow_, *core_.view, changedByUser_);
  ApplyRowHeight();
}

}  // namespace qbx
