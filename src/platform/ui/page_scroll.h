// Scrolling a page in a window that may be too small for it.

#pragma once

#include <QEvent>
#include <QResizeEvent>
#include <QScrollArea>
#include <QSize>
#include <QWidget>

namespace qbx {

/// The page fills the area and shrinks as far as its layout allows; below that it scrolls. A widget that gets the focus
/// is scrolled into view.
class PageScroll : public QScrollArea {
 public:
  explicit PageScroll(QWidget* parent = nullptr);
  ~PageScroll() override;

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Fit();
  void ShowFocus();
};

}  // namespace qbx
