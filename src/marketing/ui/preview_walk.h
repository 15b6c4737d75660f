// Walking through the customers for whom messages are previewed.

#pragma once

#include <QDate>
#include <QWidget>
#include <optional>

#include "dispatch/next_messages.h"

class QLabel;
class QPushButton;

namespace qbx {

/// "< 3 of 28 >": the sample customer first, then the rows to which the next run would send on one channel, in its
/// order.
class PreviewWalk : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewWalk(QWidget* parent = nullptr);

  /// Begins with the sample customer.
  void Begin(Statements& statements, int campaignId, Channel channel);
  /// Reads the rows again. Stays at the shown customer, or goes to the sample customer when the shown one gets nothing
  /// any more.
  void ReadAgain(int campaignId);
  /// The message for the current place; for the sample customer it holds all three texts.
  /// \return nothing when the row was deleted or could not be read
  [[nodiscard]] std::optional<NextMessage> Message(MessageMaker& messages, QDate today);

 Q_SIGNALS:
  void Moved();

 private:
  void Go(int step);
  void ShowPlace();

  std::optional<NextMessages> rows_;
  Channel channel_ = Channel::kSms;
  int place_ = 0;  ///< 0 for the sample customer
  int count_ = 0;
  QPushButton* back_;
  QPushButton* forward_;
  QLabel* label_;
};

}  // namespace qbx
