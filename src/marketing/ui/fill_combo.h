// Filling list boxes.

#pragma once

#include <QStringList>

class QComboBox;

namespace qbx {

/// Sets the entries of a list box. A list that has these entries already is not touched, so the choice or typed text
/// stays.
void FillCombo(QComboBox& combo, const QStringList& items);

}  // namespace qbx
