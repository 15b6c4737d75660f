#include "marketing/ui/fill_combo.h"

#include <QComboBox>

namespace qbx {

void FillCombo(QComboBox& combo, const QStringList& items) {
  QStringList shown;
  for (int i = 0; i < combo.count(); ++i)
    shown += combo.itemText(i);
  if (shown == items) return;
  combo.clear();
  combo.addItems(items);
}

}  // namespace qbx
