// A box for a date, which is typed or chosen or left empty.

#pragma once

#include <QDate>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QWidget>

namespace qbx {

/// Shows "dd/mm/yyyy" and reads what `ParseTypedDate` reads. A calendar opens with its button, F4 and Alt+Down; Up and
/// Down change the date by a day. Text that is no date stays as it was typed, in red, and counts as no date.
class DateBox : public QLineEdit {
  Q_OBJECT
 public:
  explicit DateBox(QWidget* parent = nullptr);

  /// Invalid while the box is empty or holds no date.
  [[nodiscard]] QDate Date() const;
  /// Shows a date, or empties the box; the user did not edit it then.
  void SetDate(const QDate& date);

 Q_SIGNALS:
  /// The user changed the text.
  void Edited();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void TextTyped();
  void Choose(const QDate& date);
  void OpenCalendar();
  void MarkText();
};

}  // namespace qbx
