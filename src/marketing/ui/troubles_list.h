// Messages that failed or are in doubt, and what can be done about them.

#pragma once

#include <QGroupBox>
#include <QList>
#include <QWidget>
#include <memory>
#include <set>

#include "dispatch/send_troubles.h"
#include "dispatch/settle_doubt.h"

namespace Ui {
class TroublesList;
}

namespace qbx {

/// A list with a line for each message that needs a person; hidden when it is empty.
class TroublesList : public QGroupBox {
  Q_OBJECT

 public:
  explicit TroublesList(QWidget* parent = nullptr);
  ~TroublesList() override;

  void Show(const QList<SendTrouble>& troubles);

 Q_SIGNALS:
  /// The user wants to see the row of a message.
  void RowWanted(qint64 recordId);
  /// The user said what became of selected messages in doubt.
  void Settled(const std::set<qint64>& rows, qbx::DoubtOutcome outcome);

 private:
  void SelectionChanged();
  void WantRow();
  [[nodiscard]] std::set<qint64> SelectedDoubt() const;

  std::unique_ptr<Ui::TroublesList> ui_;
};

}  // namespace qbx
