// Inserting, deleting and changing the rows of a grid.

#pragma once

#include <QObject>
#include <QString>
#include <functional>
#include <vector>

#include "grids/ui/grid_core.h"
#include "grids/ui/grid_look.h"
#include "grids/ui/grid_place.h"

namespace qbx {

/// Changes rows in the grid and in the database. The comments of `cDataGrid` hold here, too.
class GridRows : public QObject {
  Q_OBJECT
 public:
  /// \param requery  reads the rows again
  GridRows(GridCore& core, GridPlace& place, GridLook& look, std::function<void()> requery);

  [[nodiscard]] bool EditMode() const;
  void EditMode(bool on) { editMode_ = on; }
  [[nodiscard]] bool bDataChanged() const { return dataChanged_; }
  void bDataChanged(bool changed) { dataChanged_ = changed; }
  [[nodiscard]] bool bRowInserts() const { return rowInserts_; }
  void bRowInserts(bool on) { rowInserts_ = on; }
  [[nodiscard]] bool AllowDelete() const { return allowDelete_; }
  void AllowDelete(bool allow) { allowDelete_ = allow; }
  [[nodiscard]] bool AllowUpdate() const { return allowUpdate_; }
  void AllowUpdate(bool allow) { allowUpdate_ = allow; }
  [[nodiscard]] QString StoredProc() const { return storedProc_; }
  void StoredProc(const QString& name) { storedProc_ = name; }
  void SetHeaderID(qint64 id) { headerId_ = id; }
  /// That of the owner, or else the one that was set.
  [[nodiscard]] qint64 HeaderID() const;

  void Remove();
  void RemoveRows();
  void InsertRow();
  bool CommitRow();
  /// What Ctrl+Delete does, when the grid allows it.
  void DeleteByUser();

 Q_SIGNALS:
  void Deleted(qint64 recordId);

 private:
  [[nodiscard]] bool BeforeDelete();
  [[nodiscard]] bool AfterDelete();
  [[nodiscard]] bool BeforeInsert() const { return rowInserts_; }
  [[nodiscard]] bool BeforeUpdate() const { return EditMode() && allowUpdate_; }
  void AfterColUpdate() { dataChanged_ = true; }
  void DeleteSelected();
  bool DeleteInDatabase(qint64 row);
  void DropRows(const std::vector<qint64>& rows);
  bool EditCell(qint64 row, int column, const QString& text);

  GridCore& core_;
  GridPlace& place_;
  GridLook& look_;
  std::function<void()> requery_;
  QString storedProc_;
  qint64 headerId_ = 0;
  bool dataChanged_ = false;
  bool rowInserts_ = false;
  bool editMode_ = false;
  bool allowDelete_ = false;
  bool allowUpdate_ = true;
  std::vector<Value> deleteKey_;  // of the row that is being deleted
};

}  // namespace qbx
