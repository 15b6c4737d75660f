// One page of a report in the window.

#pragma once

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPointF>
#include <QRectF>
#include <QResizeEvent>
#include <QSizeF>
#include <QStringList>
#include <QWheelEvent>
#include <QWidget>
#include <optional>
#include <vector>

#include "reports/report_page.h"

namespace qbx {

/// Shows a page on its sheet. The keyboard scrolls it, and turns to the next page at its end.
class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class Fit { kWidth, kPage, kNone };

  explicit PageView(QWidget* parent = nullptr);

  void SetSheet(const QSizeF& sheet);
  /// \param pages  as for `PaintPage`
  void ShowPage(ReportPage page, int pages);
  /// Marks the places that a search found on the page.
  void MarkFound(std::vector<QRectF> places);
  /// \param scale  for Fit::kNone; 1 is the size on paper
  void SetZoom(Fit fit, qreal scale = 1);
  [[nodiscard]] qreal Scale() const { return scale_; }

 Q_SIGNALS:
  /// The user scrolled beyond the page. \param by  1 for the next page, -1 for the previous one
  void Turned(int by);
  /// Ctrl and the wheel. \param steps  above 0 for a larger view
  void Zoomed(int steps);
  /// A double-click on a group that hides its details. \param group  as in `DrillDown`
  void DrilledDown(const QStringList& group);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  void FitSheet();
  [[nodiscard]] QRectF SheetOnScreen() const;
  /// Screen pixels per unit of the page.
  [[nodiscard]] qreal UnitsOnScreen() const;
  bool ScrollOrTurn(int by);
  /// The group that hides its details at a place of the viewport; null for none.
  [[nodiscard]] const DrillDown* DrillDownAt(const QPointF& place) const;

  QSizeF sheet_;  // in full size on the screen
  std::optional<ReportPage> page_;
  int pages_ = 0;
  std::vector<QRectF> found_;
  Fit fit_ = Fit::kWidth;
  qreal scale_ = 1;
};

}  // namespace qbx
