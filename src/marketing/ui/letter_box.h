// The text box of a letter.

#pragma once

#include <QKeyEvent>
#include <QMimeData>
#include <QPaintEvent>
#include <QSize>
#include <QTextEdit>
#include <QWidget>

namespace qbx {

/// Black on white as on paper. Tab leaves the box and Ctrl+Tab inserts a tab. Cut, copy and paste move plain text,
/// which takes the format at its new place; dragging within the letter keeps formats and pictures. Page breaks are
/// shown as lines.
class LetterBox : public QTextEdit {
 public:
  explicit LetterBox(QWidget* parent = nullptr);

  /// Small, because the box fills the room that there is.
  [[nodiscard]] QSize sizeHint() const override;
  void CutText();
  void CopyText();

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  [[nodiscard]] QMimeData* createMimeDataFromSelection() const override;
  [[nodiscard]] bool canInsertFromMimeData(const QMimeData* source) const override;
  void insertFromMimeData(const QMimeData* source) override;

 private:
  void BreakParagraph(QKeyEvent* event);
};

}  // namespace qbx
