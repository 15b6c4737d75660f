// A page in a window that may be too small for it.

#pragma once

#include <QScrollArea>

namespace qbx {

/// The widget that it holds fills it and is squeezed as far as its layout goes; where that is not enough, it scrolls. What gets the keyboard
/// is scrolled to.
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
