#include "grids/ui/empty_grid_panel.h"

#include <QFont>
#include <QFrame>
#include <QLabel>
#include <QPalette>
#include <QTableView>
#include <QVBoxLayout>

namespace qbx {

EmptyGridPanel::~EmptyGridPanel() {
  delete frame_;
}

void EmptyGridPanel::Make() {
  frame_ = new QFrame(grid_->parentWidget());
  frame_->setObjectName(grid_->objectName() + QLatin1String("Frame"));
  frame_->setFrameShape(QFrame::StyledPanel);
  frame_->setAutoFillBackground(true);
  label_ = new QLabel(frame_);
  label_->setObjectName(grid_->objectName() + QLatin1String("Label"));
  label_->setAlignment(Qt::AlignCenter);
  label_->setWordWrap(true);
  label_->setTextFormat(Qt::PlainText);
  QFont font = label_->font();
  font.setFamily(QStringLiteral("Tahoma"));
  label_->setFont(font);
  (new QVBoxLayout(frame_))->addWidget(label_);
}

void EmptyGridPanel::Show(const QString& text, const QColor& background, const QColor& foreground) {
  if (!grid_ || grid_->parentWidget() == nullptr) return;
  if (!frame_) Make();
  QPalette palette = frame_->palette();
  palette.setColor(QPalette::Window, background);
  palette.setColor(QPalette::WindowText, foreground);
  frame_->setPalette(palette);
  label_->setPalette(palette);
  label_->setText(text);
  label_->setAccessibleName(text);
  Place();
  frame_->setVisible(!grid_->isHidden());
  frame_->raise();
}

void EmptyGridPanel::Hide() {
  if (frame_) frame_->hide();
}

void EmptyGridPanel::Place() {
  if (frame_ && grid_) frame_->setGeometry(grid_->geometry());
}

}  // namespace qbx
