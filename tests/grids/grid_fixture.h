// A grid in a window of its own, over rows that a test makes.

#pragma once

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QTableView>
#include <QTest>
#include <QVBoxLayout>

#include "grids/ui/cDataGrid.h"
#include "support/embedded_host.h"
#include "support/printing.h"

namespace qbx::test {

class GridFixture : public testing::Test, public EmbeddedHost, public GridOwner {
 protected:
  using EmbeddedHost::Run;

  GridFixture() {
    view_->setObjectName("dbgData");
    (new QVBoxLayout(&window_))->addWidget(view_);
    window_.resize(600, 300);
    grid_.Grid(*view_);
    grid_.ParentForm(*this);
    grid_.SetLineID("ID");
    window_.show();
    view_->setFocus();
    Run("CREATE TABLE Lines(ID integer primary key, Last_Name nvarchar(40) COLLATE NOCASE, Price "
        "decimal(10,2), Due date, "
        "Ticked bit)");
  }

  void Grid_KeyUp(int key, Qt::KeyboardModifiers, QTableView&) override { keysUp_ += key; }
  [[nodiscard]] bool EditMode() const override { return editing_; }
  [[nodiscard]] bool MayDeleteRows() override { return mayDelete_; }

  /// Makes rows 1 to n; every third has no name.
  void Fill(int rows) {
    Run(QString("INSERT INTO Lines WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < %1) "
                "SELECT i, CASE i %% 3 WHEN 0 THEN NULL ELSE 'Name ' || i END, i * 1.5, '2026-01-02', i % 2 FROM n")
            .arg(rows)
            .replace("%%", "%"));
  }
  void Connect(const QString& sql = "SELECT * FROM Lines ORDER BY ID") {
    ASSERT_FALSE(statements.dbOpenRec(rows_, sql));
    grid_.ConnectRecordset(rows_);
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) { QTest::keyClick(view_, key, modifiers); }
  void ClickHeading(const QString& field) {
    QHeaderView* header = view_->horizontalHeader();
    const int column = rows_.ColumnIndex(field);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      QPoint(header->sectionViewportPosition(column) + 10, header->height() / 2));
  }
  /// Ticks or unticks columns in the menu of the headings.
  void ChooseColumns(const QStringList& headings) {
    Q_EMIT view_->horizontalHeader()->customContextMenuRequested({});
    auto* menu = view_->findChild<QMenu*>("mnuColumns");
    for (QAction* entry : menu->actions()) {
      if (headings.contains(entry->text())) entry->trigger();
    }
    delete menu;
  }
  void ClickCell(int row, const QString& field, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QModelIndex cell = view_->model()->index(row, rows_.ColumnIndex(field));
    QTest::mouseClick(view_->viewport(), Qt::LeftButton, modifiers, view_->visualRect(cell).center());
  }
  /// The cells of a column, from the top, separated by blanks; an empty one is "-".
  [[nodiscard]] QString Shown(const QString& field) const {
    QStringList cells;
    for (qint64 row = 0; row < grid_.RowCount(); ++row) {
      const QString text = grid_.CellText(row, field);
      cells += text.isEmpty() ? "-" : text;
    }
    return cells.join(QLatin1Char(' '));
  }
  /// Text of the panel over the grid, empty while it is not shown.
  [[nodiscard]] QString PanelText() const {
    const auto* label = window_.findChild<QLabel*>("dbgDataLabel");
    return label != nullptr && label->isVisible() ? label->text() : QString();
  }

  UserOptions options_;
  QWidget window_;
  QTableView* view_ = new QTableView;
  cDataGrid grid_{statements, diagnostics, options_};
  Recordset rows_;
  QList<int> keysUp_;
  bool editing_ = false;
  bool mayDelete_ = true;
};

}  // namespace qbx::test
