// What a data grid asks of the window that it stands in.

#pragma once

#include <QString>
#include <functional>

class QTableView;

namespace qbx {

class Connection;

/// A window that only shows rows overrides nothing.
class GridOwner {
 public:
  virtual ~GridOwner() = default;

  /// Called with every key that was released over the grid, after the grid's own handling.
  virtual void Grid_KeyUp(int /*key*/, Qt::KeyboardModifiers /*shift*/, QTableView& /*grid*/) {}
  /// The menu of the grid is about to open. Its first entries are the actions of the view, which may be enabled and named now.
  virtual void Grid_MenuOpens() {}
  /// Key of the record that the rows belong to; goes into the insert statement. 0: the one of `SetHeaderID`.
  [[nodiscard]] virtual qint64 HeaderID() const { return 0; }
  /// More parameters of the insert statement, as SQL text; empty: none.
  [[nodiscard]] virtual QString sInsertRowExtraParams() const { return {}; }
  /// Whether the window is in edit mode: rows may be inserted, and a deletion reaches the database.
  [[nodiscard]] virtual bool EditMode() const { return false; }
  /// Asked before a row is deleted; false, after the window has told the user why, leaves the row.
  [[nodiscard]] virtual bool MayDeleteRows() { return true; }
  /// Deletes a row in the database by calling `remove`, which returns whether it did; may throw.
  [[nodiscard]] virtual bool DeleteRow(qint64 /*recordId*/, const std::function<bool()>& remove) { return remove(); }
  /// Connection whose transaction the window's changes belong to; none: the shared one.
  [[nodiscard]] virtual Connection* ADOConnTrans() { return nullptr; }
};

}  // namespace qbx
