// Filling list boxes.

#pragma once

#include <QStringList>

class QComboBox;

namespace qbx {

/// Gives a list box other entries; one that has them already is left as it is, with what is chosen or typed in it.
void FillCombo(QComboBox& combo, const QStringList& items);

}  // namespace qbx
