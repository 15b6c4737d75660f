// Walking through the customers whose messages are previewed.

#pragma once

#include <QWidget>
#include <optional>

#include "dispatch/next_messages.h"

class QLabel;
class QPushButton;

namespace qbx {

/// "< 3 of 28 >": the sample customer first, then the rows to which a run would send next on one channel, in its order.
class PreviewWalk : public QWidget {
  Q_OBJECT

 public:
  explicit PreviewWalk(QWidget* parent = nullptr);

  /// Begins at the sample customer.
  void Begin(Statements& statements, int campaignId, Channel channel);
  /// Reads the rows anew, which may have changed. Stays at the customer who is shown, or goes to the sample customer when that one gets nothing more.
  void ReadAgain(int campaignId);
  /// The message of the current place; of the sample customer it holds all three texts.
  /// \return nothing when the row is gone or could not be read
  [[nodiscard]] std::optional<NextMessage> Message(MessageMaker& messages, QDate today);

 Q_SIGNALS:
  void Moved();

 private:
  void Go(int step);
  void ShowPlace();

  std::optional<NextMessages> rows_;
  Channel channel_ = Channel::kSms;
  int place_ = 0;  ///< 0: the sample customer
  int count_ = 0;
  QPushButton* back_;
  QPushButton* forward_;
  QLabel* label_;
};

}  // namespace qbx
