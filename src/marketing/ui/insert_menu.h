// The menu that puts merge fields into a text.

#pragma once

#include <QDate>
#include <QString>
#include <functional>
#include <vector>

class QToolButton;

namespace qbx {

/// One more entry of the menu, below the fields.
struct InsertEntry {
  QString caption;
  QString text;  ///< what is put in
};

/// Gives a button a menu with all merge fields and what each becomes.
/// \param insert  called with what is to be put in
void FillInsertMenu(QToolButton& button, QDate today, const std::vector<InsertEntry>& more,
                    const std::function<void(const QString& text)>& insert);

}  // namespace qbx
