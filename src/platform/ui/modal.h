// Opening modal windows.

#pragma once

class QDialog;

namespace qbx {

/// Shows a dialog modally, and afterwards gives the keyboard back to the window that had it, also where no window manager does.
/// \return what the dialog was closed with
int ShowModal(QDialog& dialog);

}  // namespace qbx
