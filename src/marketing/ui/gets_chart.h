// Who gets what, as a small chart.

#pragma once

#include <QWidget>

#include "wizard/who_gets_what.h"

namespace qbx {

/// A bar for each count, its number beside it. The words for who cannot see it are its accessible description.
class GetsChart : public QWidget {
 public:
  explicit GetsChart(QWidget* parent = nullptr);

  void Show(const WhoGetsWhat& counts);
  /// Puts the chart on the clipboard, as a picture and in words.
  void Copy();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int LineHeight() const { return fontMetrics().height() + 6; }
  [[nodiscard]] int Lines() const;
  /// Draws bars one below the other. \return where the next line begins
  int PaintBars(QPainter& painter, const std::vector<CountedRows>& bars, qint64 most, const QColor& colour,
                int top) const;

  WhoGetsWhat counts_;
};

}  // namespace qbx
