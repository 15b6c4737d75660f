#include "marketing/ui/troubles_list.h"

#include <QPushButton>
#include <QString>
#include <QStringList>
#include <QTreeWidget>
#include <QTreeWidgetItem>
#include <QWidget>

#include "ui_troubles_list.h"
#include "util/date_text.h"

namespace qbx {

namespace {

constexpr int kRecordRole = Qt::UserRole;
constexpr int kDoubtRole = Qt::UserRole + 1;

QTreeWidgetItem* TroubleItem(const SendTrouble& trouble) {
  auto* item =
      new QTreeWidgetItem({trouble.customer, trouble.contact,
                           trouble.channel == Channel::kSms ? QStringLiteral("Text") : QStringLiteral("E-mail"),
                           trouble.to, trouble.inDoubt ? QStringLiteral("In doubt") : QStringLiteral("Failed"),
                           trouble.inDoubt ? QStringLiteral("Nobody knows whether it went out.") : trouble.reason,
                           MinuteText(trouble.changed)});
  item->setData(0, kRecordRole, trouble.recordId);
  item->setData(0, kDoubtRole, trouble.inDoubt);
  item->setToolTip(5, item->text(5));
  return item;
}

QString TroublesText(int doubt, int failed) {
  QStringList sentences;
  if (doubt > 0)
    sentences
        << QStringLiteral(
               "%1 in doubt: the next run leaves these rows alone until you say here whether the message arrived.")
               .arg(doubt);
  if (failed == 1) sentences << QStringLiteral("1 failed: the next run tries it again.");
  if (failed > 1) sentences << QStringLiteral("%1 failed: the next run tries them again.").arg(failed);
  return sentences.join(QStringLiteral(" "));
}

}  // namespace

TroublesList::TroublesList(QWidget* parent) : QGroupBox(parent), ui_(std::make_unique<Ui::TroublesList>()) {
  ui_->setupUi(this);
  connect(ui_->lstTroubles, &QTreeWidget::itemSelectionChanged, this, &TroublesList::SelectionChanged);
  connect(ui_->lstTroubles, &QTreeWidget::itemActivated, this, &TroublesList::WantRow);
  connect(ui_->cmdShowRow, &QPushButton::clicked, this, &TroublesList::WantRow);
  connect(ui_->cmdSettleSent, &QPushButton::clicked, this,
          [this] { Q_EMIT Settled(SelectedDoubt(), DoubtOutcome::kSent); });
  connect(ui_->cmdSettleNotSent, &QPushButton::clicked, this,
          [this] { Q_EMIT Settled(SelectedDoubt(), DoubtOutcome::kNotSent); });
  hide();
}

TroublesList::~TroublesList() = default;

void TroublesList::Show(const QList<SendTrouble>& troubles) {
  QList<QTreeWidgetItem*> items;
  int doubt = 0;
  for (const SendTrouble& trouble : troubles) {
    items.append(TroubleItem(trouble));
    doubt += trouble.inDoubt ? 1 : 0;
  }
  ui_->lstTroubles->clear();
  ui_->lstTroubles->addTopLevelItems(items);
  for (int column = 0; column < ui_->lstTroubles->columnCount(); ++column)
    ui_->lstTroubles->resizeColumnToContents(column);
  ui_->lblTroubles->setText(TroublesText(doubt, static_cast<int>(troubles.size()) - doubt));
  setVisible(!troubles.isEmpty());
  SelectionChanged();
}

std::set<qint64> TroublesList::SelectedDoubt() const {
  std::set<qint64> rows;
  for (const QTreeWidgetItem* item : ui_->lstTroubles->selectedItems())
    if (item->data(0, kDoubtRole).toBool()) rows.insert(item->data(0, kRecordRole).toLongLong());
  return rows;
}

void TroublesList::SelectionChanged() {
  const bool anyDoubt = !SelectedDoubt().empty();
  ui_->cmdSettleSent->setEnabled(anyDoubt);
  ui_->cmdSettleNotSent->setEnabled(anyDoubt);
  ui_->cmdShowRow->setEnabled(!ui_->lstTroubles->selectedItems().isEmpty());
}

void TroublesList::WantRow() {
  const QTreeWidgetItem* item = ui_->lstTroubles->currentItem();
  if (item) Q_EMIT RowWanted(item->data(0, kRecordRole).toLongLong());
}

}  // namespace qbx
