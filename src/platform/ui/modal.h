// Opening modal windows.

#pragma once

class QDialog;

namespace qbx {

/// Shows a dialog modally and then returns the focus to the window that had it, even without a window manager.
/// \return the result of the dialog
int ShowModal(QDialog& dialog);

}  // namespace qbx
