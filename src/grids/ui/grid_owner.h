// What a data grid asks of its window.

#pragma once

#include <QString>
#include <functional>

class QTableView;

namespace qbx {

class Connection;

/// A window that only shows rows need not override anything.
class GridOwner {
 public:
  virtual ~GridOwner() = default;

  /// Called with every key that was released over the grid, after the grid's own handling.
  virtual void Grid_KeyUp(int /*key*/, Qt::KeyboardModifiers /*shift*/, QTableView& /*grid*/) {}
  /// Called before the menu of the grid opens. Its first entries are the actions of the view, which may now be enabled
  /// and named.
  virtual void Grid_MenuOpens() {}
  /// Key of the record that the rows belong to, for the insert statement. 0 means that of `SetHeaderID`.
  [[nodiscard]] virtual qint64 HeaderID() const { return 0; }
  /// Further parameters of the insert statement, as SQL text; empty for none.
  [[nodiscard]] virtual QString sInsertRowExtraParams() const { return {}; }
  /// Whether the window is in edit mode: rows may be inserted, and a deletion reaches the database.
  [[nodiscard]] virtual bool EditMode() const { return false; }
  /// Asked before a row is deleted. False keeps the row; the window has told the user why.
  [[nodiscard]] virtual bool MayDeleteRows() { return true; }
  /// Deletes a row in the database by calling `remove`, which returns whether it did. May throw.
  [[nodiscard]] virtual bool DeleteRow(qint64 /*recordId*/, const std::function<bool()>& remove) { return remove(); }
  /// The connection whose transaction the window's changes belong to; null for the shared one.
  [[nodiscard]] virtual Connection* ADOConnTrans() { return nullptr; }
};

}  // namespace qbx
