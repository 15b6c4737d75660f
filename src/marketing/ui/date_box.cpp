#include "marketing/ui/date_box.h"

#include <QAction>
#include <QApplication>
#include <QCalendarWidget>
#include <QColor>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPalette>
#include <QPoint>
#include <QString>
#include <QTimer>
#include <QWidget>

#include "platform/ui/contrast.h"
#include "platform/ui/drawn_icon.h"
#include "util/date_text.h"
#include "util/typed_date.h"

namespace qbx {

DateBox::DateBox(QWidget* parent) : QLineEdit(parent) {
  setPlaceholderText(QStringLiteral("DD/MM/YYYY"));
  setMaxLength(20);
  setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("DD/MM/YYYY")) + 52);
  setMaximumWidth(160);
  QAction* calendar = addAction(DrawnIcon(Drawing::kCalendar), QLineEdit::TrailingPosition);
  calendar->setToolTip(QStringLiteral("Choose a date (F4)"));
  connect(calendar, &QAction::triggered, this, &DateBox::OpenCalendar);
  connect(this, &QLineEdit::textEdited, this, &DateBox::TextTyped);
}

QDate DateBox::Date() const {
  return ParseTypedDate(text());
}

void DateBox::SetDate(const QDate& date) {
  setText(DayText(date));
  MarkText();
}

void DateBox::TextTyped() {
  MarkText();
  Q_EMIT Edited();
}

void DateBox::Choose(const QDate& date) {
  SetDate(date);
  Q_EMIT Edited();
}

void DateBox::MarkText() {
  const bool wrong = !text().trimmed().isEmpty() && !Date().isValid();
  QPalette colours;
  if (wrong)
    colours.setColor(QPalette::Text, Readable(QColor(0xC0, 0x39, 0x2B), Qt::white,
                                              {QApplication::palette().color(QPalette::Base)}, kTextContrast));
  setPalette(colours);
  setToolTip(wrong ? QStringLiteral("This is not a date. Write it as 31/12/2026.") : QString());
}

void DateBox::keyPressEvent(QKeyEvent* event) {
  const bool opens =
      event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && (event->modifiers() & Qt::AltModifier) != 0);
  if (opens) return OpenCalendar();
  const int days = event->key() == Qt::Key_Up ? 1 : event->key() == Qt::Key_Down ? -1 : 0;
  if (days == 0) return QLineEdit::keyPressEvent(event);
  const QDate date = Date().addDays(days);
  if (date.isValid() && date <= kLatestTypedDate) Choose(date);
}

// Selects the text, so that typing replaces the old date, even after a click.
void DateBox::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  QTimer::singleShot(0, this, &QLineEdit::selectAll);
}

void DateBox::focusOutEvent(QFocusEvent* event) {
  if (Date().isValid()) setText(DayText(Date()));
  deselect();
  QLineEdit::focusOutEvent(event);
}

void DateBox::OpenCalendar() {
  auto* popup = new QCalendarWidget(this);
  popup->setObjectName(objectName() + QStringLiteral("Calendar"));
  popup->setWindowFlag(Qt::Popup);
  popup->setAttribute(Qt::WA_DeleteOnClose);
  popup->setFirstDayOfWeek(Qt::Monday);
  popup->setMaximumDate(kLatestTypedDate);
  if (Date().isValid()) popup->setSelectedDate(Date());
  connect(popup, &QCalendarWidget::activated, this, [this, popup](QDate date) {
    popup->close();
    Choose(date);
  });
  connect(popup, &QCalendarWidget::clicked, this, [this, popup](QDate date) {
    popup->close();
    Choose(date);
  });
  popup->move(mapToGlobal(QPoint(0, height())));
  popup->show();
  popup->setFocus();
}

}  // namespace qbx
