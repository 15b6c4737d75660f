// What failed, and what is in doubt, with what can be done about it.

#pragma once

#include <QGroupBox>
#include <QList>
#include <memory>
#include <set>

#include "dispatch/send_troubles.h"
#include "dispatch/settle_doubt.h"

namespace Ui {
class TroublesList;
}

namespace qbx {

/// A list with a line for each message that needs a person; hidden while there is none.
class TroublesList : public QGroupBox {
  Q_OBJECT

 public:
  explicit TroublesList(QWidget* parent = nullptr);
  ~TroublesList() override;

  void Show(const QList<SendTrouble>& troubles);

 Q_SIGNALS:
  /// The user wants to see the row of a message.
  void RowWanted(qint64 recordId);
  /// The user says what became of selected messages that are in doubt.
  void Settled(const std::set<qint64>& rows, qbx::DoubtOutcome outcome);

 private:
  void SelectionChanged();
  void WantRow();
  [[nodiscard]] std::set<qint64> SelectedDoubt() const;

  std::unique_ptr<Ui::TroublesList> ui_;
};

}  // namespace qbx
