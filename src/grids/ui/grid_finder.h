// Finding by typing: the text typed so far.

#pragma once

#include <QLabel>
#include <QPointer>
#include <QString>
#include <QTimer>

class QTableView;

namespace qbx {

/// Collects typed letters until nothing was typed for a second, and shows them in the corner of the grid.
class GridFinder {
 public:
  explicit GridFinder(QTableView& grid);
  ~GridFinder();

  [[nodiscard]] bool Active() const { return !typed_.isEmpty(); }
  /// \return the text typed without a pause, including the new letters
  const QString& Add(const QString& letters);
  const QString& Shorten();
  void Show(bool found);
  void Stop();

 private:
  QPointer<QTableView> grid_;
  QString typed_;
  QTimer pause_;
  QPointer<QLabel> label_;
};

}  // namespace qbx
