#include "grids/ui/grid_finder.h"

#include <QFrame>
#include <QObject>
#include <QPalette>
#include <QRect>
#include <QTableView>

namespace qbx {
namespace {
constexpr int kPauseMilliseconds = 1000;
constexpr int kMargin = 6;
}  // namespace

GridFinder::GridFinder(QTableView& grid) : grid_(&grid) {
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMilliseconds);
  QObject::connect(&pause_, &QTimer::timeout, &pause_, [this] { Stop(); });
}

GridFinder::~GridFinder() {
  delete label_;
}

const QString& GridFinder::Add(const QString& letters) {
  pause_.start();
  return typed_ += letters;
}

const QString& GridFinder::Shorten() {
  pause_.start();
  typed_.chop(1);
  return typed_;
}

void GridFinder::Show(bool found) {
  if (!grid_ || typed_.isEmpty()) return Stop();
  if (!label_) {
    label_ = new QLabel(grid_->viewport());
    label_->setObjectName(grid_->objectName() + QLatin1String("Find"));
    label_->setTextFormat(Qt::PlainText);
    label_->setAutoFillBackground(true);
    label_->setMargin(3);
    label_->setFrameShape(QFrame::Box);
    label_->setBackgroundRole(QPalette::ToolTipBase);
    label_->setForegroundRole(QPalette::ToolTipText);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
  }
  label_->setText(found ? QStringLiteral("Find: ") + typed_ : QStringLiteral("Find: %1 (no match)").arg(typed_));
  label_->setAccessibleName(label_->text());
  label_->adjustSize();
  const QRect area = grid_->viewport()->rect();
  label_->move(area.right() - label_->width() - kMargin, area.bottom() - label_->height() - kMargin);
  label_->show();
}

void GridFinder::Stop() {
  pause_.stop();
  typed_.clear();
  if (label_) label_->hide();
}

}  // namespace qbx
