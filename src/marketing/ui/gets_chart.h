// The chart of who gets what.

#pragma once

#include <QColor>
#include <QPaintEvent>
#include <QPainter>
#include <QSize>
#include <QWidget>

#include "wizard/who_gets_what.h"

namespace qbx {

/// A bar with its number for each count. Its accessible description gives the numbers in words.
class GetsChart : public QWidget {
 public:
  explicit GetsChart(QWidget* parent = nullptr);

  void Show(const WhoGetsWhat& counts);
  /// Copies the chart to the clipboard, as a picture and in words.
  void Copy();

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int LineHeight() const { return fontMetrics().height() + 6; }
  [[nodiscard]] int Lines() const;
  /// Draws bars one below the other. \return the top of the next line
  int PaintBars(QPainter& painter, const std::vector<CountedRows>& bars, qint64 most, const QColor& colour,
                int top) const;

  WhoGetsWhat counts_;
};

}  // namespace qbx
