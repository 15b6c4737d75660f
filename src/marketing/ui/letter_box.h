// The text of a letter while it is edited.

#pragma once

#include <QTextEdit>

namespace qbx {

/// Black on white as on paper. Tab leaves it and Ctrl+Tab puts a tab into the letter. Cutting, copying and pasting move plain
/// text, which takes the look of where it is put; dragging within the letter keeps looks and pictures. Page breaks are
/// shown as a line.
class LetterBox : public QTextEdit {
 public:
  explicit LetterBox(QWidget* parent = nullptr);

  /// Small: it takes the room that there is.
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
