#include "marketing/ui/preview_walk.h"

#include <QDate>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QString>

namespace qbx {

PreviewWalk::PreviewWalk(QWidget* parent)
    : QWidget(parent),
      back_(new QPushButton(QStringLiteral("<"), this)),
      forward_(new QPushButton(QStringLiteral(">"), this)),
      label_(new QLabel(this)) {
  back_->setAccessibleName(QStringLiteral("Customer before"));
  forward_->setAccessibleName(QStringLiteral("Next customer"));
  label_->setTextFormat(Qt::PlainText);
  auto* line = new QHBoxLayout(this);
  line->setContentsMargins(0, 0, 0, 0);
  for (QPushButton* button : {back_, forward_}) {
    button->setFixedWidth(button->sizeHint().height() + button->fontMetrics().horizontalAdvance(QLatin1Char('<')));
    button->setAutoRepeat(true);
  }
  line->addWidget(back_);
  line->addWidget(label_);
  line->addWidget(forward_);
  line->addStretch();
  connect(back_, &QPushButton::clicked, this, [this] { Go(-1); });
  connect(forward_, &QPushButton::clicked, this, [this] { Go(1); });
}

void PreviewWalk::Begin(Statements& statements, int campaignId, Channel channel) {
  back_->setObjectName(objectName() + QStringLiteral("Back"));
  forward_->setObjectName(objectName() + QStringLiteral("Forward"));
  label_->setObjectName(objectName() + QStringLiteral("Place"));
  rows_.emplace(statements);
  channel_ = channel;
  count_ = rows_->Read(campaignId, channel) ? rows_->Count() : 0;
  place_ = 0;
  ShowPlace();
}

void PreviewWalk::ReadAgain(int campaignId) {
  const qint64 shown = place_ > 0 ? rows_->RecordAt(place_ - 1) : 0;
  count_ = rows_->Read(campaignId, channel_) ? rows_->Count() : 0;
  place_ = 0;
  for (int place = 1; shown != 0 && place_ == 0 && place <= count_; ++place)
    place_ = rows_->RecordAt(place - 1) == shown ? place : 0;
  ShowPlace();
}

std::optional<NextMessage> PreviewWalk::Message(MessageMaker& messages, QDate today) {
  if (place_ > 0) return rows_->At(place_ - 1, messages, today);
  return SampleMessage(messages, today);
}

void PreviewWalk::Go(int step) {
  place_ += step;
  ShowPlace();
  Q_EMIT Moved();
}

void PreviewWalk::ShowPlace() {
  back_->setEnabled(place_ > 0);
  forward_->setEnabled(place_ < count_);
  QString place = QStringLiteral("Sample customer");
  if (place_ > 0) {
    place = QStringLiteral("%1 of %2").arg(place_).arg(count_);
  } else if (count_ > 0) {
    const char* message = channel_ == Channel::kSms ? "a text" : "an e-mail";
    place += QStringLiteral("; then the %1 that the next run sends %2 to").arg(count_).arg(QLatin1String(message));
  }
  label_->setText(place);
}

}  // namespace qbx
