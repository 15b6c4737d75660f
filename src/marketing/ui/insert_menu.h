// The menu that inserts merge fields into a text.

#pragma once

#include <QString>
#include <functional>
#include <vector>

class QToolButton;

namespace qbx {

class Application;

/// A further entry of the menu, below the fields.
struct InsertEntry {
  QString caption;
  QString text;  ///< the text to insert
};

/// Gives a button a menu with all merge fields and their sample values.
/// \param app     gives the day and the edition
/// \param insert  called with the text to insert
void FillInsertMenu(QToolButton& button, const Application& app, const std::vector<InsertEntry>& more,
                    const std::function<void(const QString& text)>& insert);

}  // namespace qbx
