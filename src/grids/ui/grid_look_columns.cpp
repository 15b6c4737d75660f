// The columns of a grid.

#include <QFontMetrics>
#include <QHeaderView>
#include <QScopedValueRollback>
#include <QSet>
#include <QString>
#include <QStringList>

#include "grids/ui/grid_look.h"

namespace qbx {
namespace {

constexpr int kCellPadding = 18;    // left and right of a text, together
constexpr int kSortMarkWidth = 16;  // beside a heading
constexpr int kWidestFirst = 260;   // keeps a long text from pushing the other columns out of view
constexpr qint64 kSample = 60;      // number of rows measured for the first widths

QString Widest(const Recordset& records, int column, const GridColumn& format, qint64 firstRow) {
  QString widest = format.type != ValueType::kDateTime      ? QString()
                   : format.format == GridFormat::kDateTime ? QStringLiteral("00/00/0000 00:00:00")
                                                            : QStringLiteral("00/00/0000");
  const qint64 end = std::min(records.RecordCount(), firstRow + kSample);
  for (qint64 row = firstRow; row < end; ++row) {
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

QString GridLook::FieldOf(int column) const {
  return core_.model.ColumnAt(column)->field.toLower();
}

void GridLook::FitColumn(int column, qint64 firstRow) {
  const GridColumn& format = *core_.model.ColumnAt(column);
  int width = QFontMetrics(core_.model.Styles().heading.font).horizontalAdvance(format.heading) + kSortMarkWidth;
  if (format.format != GridFormat::kTick) {
    const QFontMetrics metrics(core_.model.Styles().odd.font);
    width = std::max(width, metrics.horizontalAdvance(Widest(*core_.records, column, format, firstRow)));
  }
  core_.view->horizontalHeader()->resizeSection(column, std::min(width, kWidestFirst) + kCellPadding);
}

void GridLook::FitColumns() {
  if (core_.records == nullptr) return;
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  fittedToRows_ = core_.RowCount() > 0;
  for (int column = 0; column < core_.model.columnCount(); ++column) {
    if (!changedByUser_.contains(column)) FitColumn(column, 0);
  }
}

void GridLook::FitAllColumns() {
  if (core_.records == nullptr) return;
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  for (int column = 0; column < core_.model.columnCount(); ++column)
    FitColumn(column, std::max(0, core_.view->rowAt(0)));
}

void GridLook::HideColumns(const QStringList& fields, bool hide) {
  core_.Guarded("HideColumns", [&] {
    for (const QString& name : fields) {
      const QString field = name.toLower();
      windowFields_.insert(field);
      hiddenByUser_.remove(field);
      if (hide)
        hiddenByWindow_.insert(field);
      else
        hiddenByWindow_.remove(field);
    }
    ApplyHidden();
  });
}

/// Hides the columns that the user hid, unless no column would be left: the host may have other columns now.
void GridLook::ApplyHidden() {
  if (!core_.view || core_.model.columnCount() == 0) return;
  bool any = false;
  for (int column = 0; column < core_.model.columnCount(); ++column)
    any = any || !HiddenFields().contains(FieldOf(column));
  if (!any) hiddenByUser_.clear();
  const QSet<QString> hidden = HiddenFields();
  for (int column = 0; column < core_.model.columnCount(); ++column)
    core_.view->setColumnHidden(column, hidden.contains(FieldOf(column)));
}

std::vector<GridLook::Choice> GridLook::Choices() const {
  std::vector<Choice> choices;
  const QHeaderView& header = *core_.view->horizontalHeader();
  for (int position = 0; position < core_.model.columnCount(); ++position) {
    const int column = header.logicalIndex(position);
    if (windowFields_.contains(FieldOf(column))) continue;
    const bool shown = !header.isSectionHidden(column);
    const bool last = shown && header.hiddenSectionCount() == header.count() - 1;
    choices.push_back({column, core_.model.ColumnAt(column)->heading, shown, last});
  }
  return choices;
}

void GridLook::ShowColumn(int column, bool show) {
  const QHeaderView& header = *core_.view->horizontalHeader();
  if (!show && header.hiddenSectionCount() == header.count() - 1) return;
  if (show)
    hiddenByUser_.remove(FieldOf(column));
  else
    hiddenByUser_.insert(FieldOf(column));
  ApplyHidden();
  ColumnChanged(column);
}

void GridLook::LockColumns(const QStringList& fields, bool lock) {
  core_.Guarded("LockColumns", [&] { core_.model.Lock(fields, lock); });
}

void GridLook::SetFlagReasons(std::function<QString(qint64 row, const QString& field)> reasonOf) {
  core_.model.SetFlagReasons(std::move(reasonOf));
  if (core_.view) core_.view->viewport()->update();
}

void GridLook::AddEditButton(const QString& field) {
  delegate_.AddEditButton(field);
  if (core_.view) core_.view->viewport()->update();
}

void GridLook::KeepLayout(RegistryValues& registry, const QString& window) {
  registry_ = &registry;
  layoutWindow_ = window;
}

KeptColumns GridLook::Kept() const {
  KeptColumns kept{{}, changedByUser_, windowFields_};
  for (const GridColumn& column : core_.model.Columns())
    kept.fields += column.field;
  return kept;
}

void GridLook::SaveLayout() {
  if (registry_ == nullptr || !core_.view || core_.model.columnCount() == 0) return;
  core_.Guarded("gridSavePosition",
                [this] { gridSavePosition(*registry_, layoutWindow_, false, *core_.view, Kept()); });
}

void GridLook::LayOutColumns() {
  ApplyStyles();  // the user's options may have been read since
  const QScopedValueRollback<bool> layingOut(layingOut_, true);
  QHeaderView& header = *core_.view->horizontalHeader();
  for (int i = 0; i < header.count(); ++i)
    header.moveSection(header.visualIndex(i), i);
  KeptColumns kept = Kept();
  if (registry_ != nullptr) rowHeight_ = InitGridPosition(*registry_, layoutWindow_, *core_.view, kept, hiddenByUser_);
  changedByUser_ = registry_ != nullptr ? kept.columns : QSet<int>();
  ApplyRowHeight();
}

}  // namespace qbx
