// How a grid looks.

#include "grids/ui/grid_look.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QColor>
#include <QFontMetrics>
#include <QHeaderView>
#include <QObject>
#include <QTableView>
#include <QWidget>

#include "grids/grid_sort.h"
#include "util/tagged_string.h"

namespace qbx {
namespace {
constexpr int kRowPadding = 6;  // above and below a line, together
constexpr int kLinesWhenWrapped = 3;
}  // namespace

void GridLook::Attach(QObject& context) {
  QTableView& view = *core_.view;
  view.setItemDelegate(&delegate_);
  view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  view.setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
  view.setWordWrap(false);
  view.setCornerButtonEnabled(false);
  view.verticalHeader()->hide();
  view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view.verticalHeader()->setMinimumSectionSize(1);
  QHeaderView* header = view.horizontalHeader();
  header->setSectionsMovable(true);
  header->setHighlightSections(false);
  header->setTextElideMode(Qt::ElideRight);
  bColResizing(colResizing_);
  QObject::connect(header, &QHeaderView::sectionResized, &context, [this](int column, int before, int now) {
    if (before > 0 && now > 0) ColumnChanged(column);  // otherwise it was hidden or shown
  });
  QObject::connect(header, &QHeaderView::sectionMoved, &context, [this](int column) { ColumnChanged(column); });
  panel_ = std::make_unique<EmptyGridPanel>(view);
  ApplyStyles();
}

void GridLook::ApplyStyles() {
  if (!core_.view) return;
  const QWidget* parent = core_.view->parentWidget();
  const GridStyles styles =
      StylesOf(core_.options, core_.view->palette(), parent != nullptr ? parent->font() : QApplication::font());
  core_.model.SetStyles(styles, customBackColor_ >= 0 ? ColourOf(customBackColor_) : QColor());
  core_.view->setFont(styles.odd.font);
  core_.view->horizontalHeader()->setFont(styles.heading.font);
  ApplyRowHeight();
  ShowSortMark();
  ShowPanel();
  core_.view->viewport()->update();
}

void GridLook::ApplyRowHeight() {
  if (!core_.view) return;
  const int line = QFontMetrics(core_.model.Styles().odd.font).height();
  const int lines = wrapped_ ? kLinesWhenWrapped : 1;
  core_.view->verticalHeader()->setDefaultSectionSize(std::max(rowHeight_, line * lines + kRowPadding));
  core_.view->viewport()->update();
}

void GridLook::ShowSortMark() {
  if (!core_.view) return;
  const int column = core_.SortedColumn();
  QHeaderView& header = *core_.view->horizontalHeader();
  core_.model.SetSortedColumn(column);
  header.setSortIndicatorShown(column >= 0);
  if (column >= 0)
    header.setSortIndicator(column, ParseSort(core_.sortString).descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void GridLook::bWrapped(bool wrapped) {
  wrapped_ = wrapped;
  delegate_.SetWrap(wrapped_, wordWrap_, wrapColumn_);
  ApplyRowHeight();
}

void GridLook::bWordWrap(bool wrap) {
  wordWrap_ = wrap;
  bWrapped(wrapped_);
}

void GridLook::sWrapColumn(const QString& field) {
  wrapColumn_ = field;
  bWrapped(wrapped_);
}

void GridLook::lCustomBackColor(int colour) {
  customBackColor_ = colour;
  ApplyStyles();
}

void GridLook::bHideNoRecords(bool hide) {
  hideNoRecords_ = hide;
  ShowPanel();
}

void GridLook::Tag(const QString& tagged) {
  tag_ = tagged;
  ShowPanel();
}

void GridLook::ShowPanel() {
  if (!core_.view) return;
  if (core_.records == nullptr || hideNoRecords_ || core_.RowCount() > 0) return panel_->Hide();
  const QString message = strGetTag(tag_, QStringLiteral("MSG"));
  const QColor background = customBackColor_ >= 0 ? ColourOf(customBackColor_) : core_.model.Styles().odd.background;
  panel_->Show(message.isEmpty() ? QStringLiteral("No records to display") : message, background,
               ReadableOn(background));
}

void GridLook::Resize() {
  if (!panel_) return;
  panel_->Place();
  ShowPanel();
}

void GridLook::SetRowStyle(std::function<QString(qint64 row)> styleOf) {
  core_.model.SetRowStyle(std::move(styleOf));
  if (core_.view) core_.view->viewport()->update();
}

}  // namespace qbx
