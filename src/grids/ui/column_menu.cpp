#include "grids/ui/column_menu.h"

#include <QAction>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QObject>
#include <QString>
#include <QWidget>
#include <utility>

namespace qbx {

ColumnMenu::ColumnMenu(GridLook& look, GridPlace& place, QWidget& parent) : QMenu(&parent), look_(look), place_(place) {
  setObjectName(QStringLiteral("mnuColumns"));
  setToolTipsVisible(true);
  QObject::connect(addAction(QStringLiteral("&Fit columns")), &QAction::triggered, this,
                   [this] { look_.FitAllColumns(); });
  QObject::connect(addAction(QStringLiteral("&Show all columns")), &QAction::triggered, this, [this] {
    for (const GridLook::Choice& choice : look_.Choices())
      if (!choice.shown) Show(choice.column, true);
  });
  addSeparator();
  AddColumns();
  ShowLast();
}

void ColumnMenu::AddColumns() {
  for (const GridLook::Choice& choice : look_.Choices()) {
    QString heading = choice.heading;
    QAction* entry = addAction(heading.replace(u'&', QLatin1String("&&")));
    entry->setCheckable(true);
    entry->setChecked(choice.shown);
    entry->setData(choice.column);
    QObject::connect(entry, &QAction::toggled, this, [this, entry](bool show) { Show(entry->data().toInt(), show); });
  }
}

void ColumnMenu::Show(int column, bool show) {
  look_.ShowColumn(column, show);
  place_.LeaveHiddenColumn();
  ShowLast();
}

/// Disables the tick of the last shown column, which cannot be hidden.
void ColumnMenu::ShowLast() {
  const std::vector<GridLook::Choice> choices = look_.Choices();
  for (QAction* entry : actions()) {
    if (!entry->isCheckable()) continue;
    const int column = entry->data().toInt();
    const bool last = std::any_of(choices.begin(), choices.end(),
                                  [column](const auto& choice) { return choice.column == column && choice.last; });
    entry->setEnabled(!last);
    entry->setToolTip(last ? QStringLiteral("One column stays.") : QString());
  }
}

void ColumnMenu::mousePressEvent(QMouseEvent* event) {
  pressed_ = actionAt(event->position().toPoint());
  QMenu::mousePressEvent(event);
}

/// Where the menu has no room below the mouse it opens under the pointer, so the release of the opening button is no
/// click.
void ColumnMenu::mouseReleaseEvent(QMouseEvent* event) {
  QAction* entry = actionAt(event->position().toPoint());
  const bool clicked = entry != nullptr && entry == std::exchange(pressed_, nullptr);
  if (entry == nullptr || !entry->isCheckable()) return QMenu::mouseReleaseEvent(event);
  if (clicked && entry->isEnabled()) entry->toggle();
}

void ColumnMenu::keyPressEvent(QKeyEvent* event) {
  QAction* entry = activeAction();
  if (event->key() == Qt::Key_Space && entry != nullptr && entry->isCheckable())
    entry->toggle();
  else
    QMenu::keyPressEvent(event);
}

}  // namespace qbx
