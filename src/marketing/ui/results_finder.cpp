#include "marketing/ui/results_finder.h"

#include <QEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QShortcut>
#include <QString>
#include <QTableView>
#include <QWidget>

namespace qbx {

using Search = cDataGrid::Search;

ResultsFinder::ResultsFinder(cDataGrid& grid, QLineEdit& box, QLabel& found, QWidget& page)
    : QObject(&page), grid_(grid), box_(box), found_(found) {
  box.installEventFilter(this);
  connect(&box, &QLineEdit::textEdited, this, [this] { Find(Search::kFromHere); });
  connect(&box, &QLineEdit::textChanged, this, [this](const QString& text) {
    if (text.isEmpty()) found_.clear();
  });
  const auto on = [this, &page](const QKeySequence& keys, auto command) {
    connect(new QShortcut(keys, &page), &QShortcut::activated, this, command);
  };
  on(QKeySequence(Qt::Key_F3), [this] { FindAgain(Search::kNext); });
  on(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { FindAgain(Search::kPrevious); });
  on(QKeySequence(Qt::CTRL | Qt::Key_F), [this] { GoToBox(); });
  grid.bFinding(true);
  connect(&grid, &cDataGrid::FindWanted, this, [this] { GoToBox(); });
}

void ResultsFinder::Find(Search search) {
  const bool found = box_.text().isEmpty() || grid_.FindText(box_.text(), search);
  found_.setText(found ? QString() : QStringLiteral("not found"));
}

void ResultsFinder::FindAgain(Search search) {
  if (box_.text().isEmpty())
    GoToBox();
  else
    Find(search);
}

void ResultsFinder::GoToBox() {
  box_.setFocus(Qt::ShortcutFocusReason);
  box_.selectAll();
}

/// Handles keys that would otherwise go from the box to the page, whose default button goes to the next step.
bool ResultsFinder::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  const auto& key = static_cast<const QKeyEvent&>(*event);
  switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Find(key.modifiers().testFlag(Qt::ShiftModifier) ? Search::kPrevious : Search::kNext);
      return true;
    case Qt::Key_Escape:
    case Qt::Key_Down:
      grid_.Grid()->setFocus(Qt::OtherFocusReason);
      return true;
    default:
      return QObject::eventFilter(watched, event);
  }
}

}  // namespace qbx
