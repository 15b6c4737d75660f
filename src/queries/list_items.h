// The lists of the wizard that are filled from the host.

#pragma once

#include <QString>
#include <vector>

namespace qbx {

class Statements;

/// An entry of a list or drop-down list.
struct ListItem {
  QString text;
  int data = 0;  ///< the item's key, 0 when the list has none
};

/// Reads the entries of a list. A failure is reported by the statement routines and gives an empty list.
/// \param sql        a procedure call written as a statement
/// \param textField  column shown
/// \param dataField  column kept as the item's data, empty: none
[[nodiscard]] std::vector<ListItem> ReadListItems(Statements& statements, const QString& sql, const QString& textField,
                                                  const QString& dataField = {});

}  // namespace qbx
