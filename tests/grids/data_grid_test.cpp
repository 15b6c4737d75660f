// The data grid as a user meets it: sorting, finding, copying, deleting, reading again.

#include <QApplication>
#include <QClipboard>
#include <QScrollBar>

#include "grids/grid_fixture.h"
#include "settings/registry_values.h"
#include "support/memory_registry_store.h"

namespace qbx {
namespace {

using test::GridFixture;

TEST_F(GridFixture, AHeadingSortsAndReversesTheOrder) {
  Run("INSERT INTO Lines VALUES (1, 'bell', 10, '2026-02-01', 1), (2, NULL, 9.5, NULL, 0), "
      "(3, 'Adams', -1, '2025-12-31', 1), (4, 'BELL', NULL, '2026-01-01', NULL), (5, 'Émile', 100, NULL, 0)");
  Connect();
  grid_.MoveTo(3);
  struct Click {
    const char* field;
    const char* ids;
    const char* sort;
  };
  for (const Click& click : std::initializer_list<Click>{
           {"Last_Name", "2 3 1 4 5", "[Last_Name] ASC"},
           {"Last_Name", "5 1 4 3 2", "[Last_Name] DESC"},  // equal names keep their order
           {"Price", "4 3 2 1 5", "[Price] ASC"},
           {"Due", "2 5 3 4 1", "[Due] ASC"},
           {"Ticked", "4 2 5 1 3", "[Ticked] ASC"},
       }) {
    ClickHeading(click.field);
    EXPECT_EQ(Shown("ID"), click.ids) << click.sort;
    EXPECT_EQ(grid_.sSortString(), click.sort);
    EXPECT_EQ(grid_.CurrentRow(), 0);
  }
  Run("UPDATE Lines SET Ticked = 1 WHERE ID = 2");
  grid_.Requery();
  EXPECT_EQ(Shown("ID"), "4 5 1 2 3") << "sorted anew after reading again";
  Connect();
  EXPECT_EQ(Shown("ID"), "4 5 1 2 3") << "and with other rows";
  grid_.bColSorting(false);
  ClickHeading("ID");
  EXPECT_EQ(grid_.sSortString(), "[Ticked] ASC");
}

class DeletingRows : public GridFixture {
 protected:
  DeletingRows() {
    Run("INSERT INTO _Procedures (Name, Header, Body, Version) VALUES ('proc_delp_Lines', "
        "'CREATE PROCEDURE proc_delp_Lines @ID int AS', 'DELETE FROM Lines WHERE ID = @ID', 1)");
    Fill(4);
    grid_.StoredProc("Lines");
    QObject::connect(&grid_, &cDataGrid::Deleted, [this](qint64 id) { deleted_ += id; });
    Connect();
  }
  void CtrlDelete() { Press(Qt::Key_Delete, Qt::ControlModifier); }
  [[nodiscard]] QString LastMessage() const { return ui.Messages().empty() ? QString() : ui.Messages().back().text; }

  QList<qint64> deleted_;
};

TEST_F(DeletingRows, OnlyAsTheGridAllows) {
  CtrlDelete();
  EXPECT_EQ(grid_.RowCount(), 4) << "deletes are not allowed";
  EXPECT_EQ(keysUp_.count(Qt::Key_Delete), 1) << "the owner hears of every key";
  grid_.AllowDelete(true);
  grid_.AllowUpdate(false);
  CtrlDelete();
  EXPECT_EQ(LastMessage(), "Rows cannot be deleted from this grid.");
  EXPECT_EQ(grid_.RowCount(), 4);
  grid_.AllowUpdate(true);
  QTest::keyPress(view_, Qt::Key_Delete, Qt::ControlModifier);  // released elsewhere
  Press(Qt::Key_Delete);
  EXPECT_EQ(grid_.RowCount(), 4) << "a plain Delete deletes nothing";
  CtrlDelete();
  EXPECT_EQ(Shown("ID"), "2 3 4");
  EXPECT_EQ(Ask("SELECT count(*) FROM Lines").ToInt(), 4) << "a grid that is not editable only hides rows";
}

TEST_F(DeletingRows, AllOfThem) {
  grid_.EditMode(true);
  mayDelete_ = false;
  grid_.RemoveRows();
  EXPECT_EQ(Ask("SELECT count(*) FROM Lines").ToInt(), 4) << "the owner forbids it";
  mayDelete_ = true;
  grid_.RemoveRows();
  EXPECT_EQ(Ask("SELECT count(*) FROM Lines").ToInt(), 0);
  EXPECT_EQ(PanelText(), "No records to display");
  EXPECT_EQ(deleted_.size(), 4);
}

TEST_F(GridFixture, InsertingRowsNeedsAnOwnerInEditMode) {
  Run("INSERT INTO _Procedures (Name, Header, Body, Version) VALUES ('proc_addp_Lines_InsertRow', "
      "'CREATE PROCEDURE proc_addp_Lines_InsertRow @Header int, @Above int AS', "
      "'INSERT INTO Lines (ID, Price) VALUES (@Above + 10, @Header)', 1)");
  Fill(2);
  grid_.StoredProc("Lines");
  grid_.SetHeaderID(77);
  Connect();
  Press(Qt::Key_Insert, Qt::ControlModifier);
  EXPECT_TRUE(ui.Messages().empty());
  editing_ = true;
  Press(Qt::Key_Insert, Qt::ControlModifier);
  EXPECT_EQ(ui.MessageTexts(), QStringList("Row Inserting is not available on this grid."));
  grid_.bRowInserts(true);
  Press(Qt::Key_Insert, Qt::ControlModifier);
  EXPECT_EQ(Shown("ID"), "1 2 11");
  EXPECT_EQ(grid_.CellText(2, "Price"), "77.00");
}

TEST_F(GridFixture, ReadingAgainKeepsTheUserInPlace) {
  Fill(400);
  Connect();
  view_->horizontalHeader()->resizeSection(0, 800);
  view_->horizontalScrollBar()->setValue(90);
  grid_.SetFirstVisibleRow(200);
  view_->setCurrentIndex(view_->model()->index(203, 3));
  ASSERT_EQ(grid_.FirstVisibleRow(), 200);
  view_->horizontalScrollBar()->setValue(90);

  Run("DELETE FROM Lines WHERE ID <= 5 OR ID = 350");  // another desk
  grid_.Requery();
  EXPECT_EQ(grid_.CellText(grid_.FirstVisibleRow(), "ID"), "201");
  EXPECT_EQ(grid_.RecordID(), 204);
  EXPECT_EQ(grid_.CurrentField(), "Due");
  EXPECT_EQ(view_->horizontalScrollBar()->value(), 90);

  grid_.sSortString("[ID] ASC");
  ClickCell(2, "ID");
  ClickCell(4, "ID", Qt::ControlModifier);
  Run("DELETE FROM Lines WHERE ID = 7");
  grid_.Requery();
  EXPECT_EQ(grid_.SelectedCount(), 2);
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(QApplication::clipboard()->text().contains("\r\n8\tName 8\t12.00")) << "the rows themselves";

  grid_.Requery([] { throw std::runtime_error("gone"); });
  EXPECT_EQ(ui.MessageTexts(), QStringList("Unexpected error when reloading the grid."));
  EXPECT_EQ(grid_.RowCount(), 393);
}

TEST_F(GridFixture, TypingFindsInTheSortedColumn) {
  Run("INSERT INTO Lines (ID, Last_Name) VALUES (1, 'Baker'), (2, 'brown'), (3, 'Ash'), (4, 'Van Dyk'), (5, 'Vance')");
  Connect();
  const auto current = [this] { return grid_.CellText(grid_.CurrentRow(), "Last_Name"); };
  QTest::keyClicks(view_, "4");
  EXPECT_EQ(current(), "Van Dyk") << "unsorted: in the current column";
  Press(Qt::Key_Escape);
  grid_.sSortString("Last_Name");
  QTest::keyClicks(view_, "B");
  EXPECT_EQ(current(), "Baker");
  QTest::keyClicks(view_, "r");
  EXPECT_EQ(current(), "brown");
  QTest::keyClicks(view_, "x");
  EXPECT_EQ(current(), "brown") << "nothing found: stays";
  Press(Qt::Key_Backspace);
  Press(Qt::Key_Backspace);
  EXPECT_EQ(current(), "Baker");
  Press(Qt::Key_Escape);
  int clicks = 0;
  QObject::connect(&grid_, &cDataGrid::CellClicked, [&clicks](const QString&, qint64) { ++clicks; });
  QTest::keyClicks(view_, "van d");
  EXPECT_EQ(current(), "Van Dyk");
  EXPECT_EQ(clicks, 0) << "a blank inside of what is typed is no click";
}

TEST_F(GridFixture, SpaceIsAClickOnTheEditButton) {
  Fill(3);
  Connect();
  QStringList pressed;
  grid_.AddEditButton("Price");
  QObject::connect(&grid_, &cDataGrid::EditButtonClicked,
                   [&pressed](const QString& field, qint64 id) { pressed += field + QString::number(id); });
  ClickCell(1, "Price");
  EXPECT_TRUE(pressed.isEmpty()) << "beside the button";
  Press(Qt::Key_Space);
  EXPECT_EQ(pressed, QStringList("Price2"));
}

TEST_F(GridFixture, RefusesRowsThatCannotBeSorted) {
  Fill(3);
  Connect();
  Recordset forward = Recordset::Forward(connection.Driver().Execute("SELECT 1 AS Other"));
  grid_.ConnectRecordset(forward);
  EXPECT_EQ(ui.Messages().size(), 1u);
  EXPECT_EQ(grid_.DataSource(), &rows_);
  grid_.sSortString("[ID] DESC");
  EXPECT_EQ(Shown("ID"), "3 2 1");
}

TEST_F(GridFixture, CopyingGivesWhatIsShown) {
  Fill(3);
  Run("UPDATE Lines SET Last_Name = 'One\r\n2 High St\t' || ID WHERE ID = 1");
  Connect();
  grid_.HideColumns({"Due"});
  view_->horizontalHeader()->moveSection(4, 0);
  view_->setCurrentIndex(view_->model()->index(1, 2));
  Press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "3.00");
  grid_.SelectAll();
  bool hourglass = false;
  const auto watch = QObject::connect(QApplication::clipboard(), &QClipboard::dataChanged,
                                      [this, &hourglass] { hourglass = ui.Busy(); });
  Press(Qt::Key_C, Qt::ControlModifier);
  QObject::disconnect(watch);
  EXPECT_TRUE(hourglass && !ui.Busy());
  EXPECT_EQ(QApplication::clipboard()->text(),
            "Ticked\tID\tLast Name\tPrice\r\n"
            "Yes\t1\tOne, 2 High St 1\t1.50\r\n"
            "No\t2\tName 2\t3.00\r\n"
            "Yes\t3\t\t4.50\r\n");
}

TEST_F(GridFixture, AnEmptyGridSaysSo) {
  EXPECT_EQ(PanelText(), QString()) << "nothing connected";
  Connect();
  EXPECT_EQ(PanelText(), "No records to display");
  grid_.Tag("LOCK:1,MSG:Nobody was found");
  EXPECT_EQ(PanelText(), "Nobody was found");
  grid_.bHideNoRecords(true);
  EXPECT_EQ(PanelText(), QString());
  grid_.bHideNoRecords(false);
  Fill(1);
  grid_.Requery();
  EXPECT_EQ(PanelText(), QString());
}

TEST_F(GridFixture, FiltersInWordsAndFindsLines) {
  Fill(9);
  Connect();
  for (const auto& [filter, ids] : std::initializer_list<std::pair<const char*, const char*>>{
           {"ID > 2 AND ID <= 4 OR [Last_Name] = 'NAME 8'", "3 4 8"},
           {"Last_Name = NULL", "3 6 9"},
           {"Last_Name LIKE '%7' or Price = 1.5", "1 7"},
           {"Due < #02/01/2026#", ""},
           {"Nonsense = 1", "1 2 3 4 5 6 7 8 9"},
           {"ID = ", "1 2 3 4 5 6 7 8 9"},
       }) {
    grid_.sFilter(filter);
    EXPECT_EQ(Shown("ID"), ids) << filter;
  }
  EXPECT_TRUE(grid_.FindLine("Last_Name", Value(QString("name 5"))));
  EXPECT_EQ(grid_.RecordID(), 5);
  EXPECT_FALSE(grid_.FindLine("ID", Value(99)));
  EXPECT_EQ(grid_.RecordID(), 5);
}

TEST_F(GridFixture, FindsATextInWhatIsShown) {
  Fill(9);
  Run("UPDATE Lines SET Last_Name = 'ZOË Tomé' WHERE ID IN (2, 7)");
  Connect();
  grid_.HideColumns({"Due"});
  const auto found = [this](const char* text, cDataGrid::Search search) {
    return grid_.FindText(QString::fromUtf8(text), search)
               ? grid_.CurrentField() + grid_.CellText(grid_.CurrentRow(), "ID")
               : QString();
  };
  using Search = cDataGrid::Search;
  EXPECT_EQ(found("oë t", Search::kFromHere), "Last_Name2");
  EXPECT_EQ(found("oË T", Search::kFromHere), "Last_Name2") << "typed on: stays";
  EXPECT_EQ(found("TOMÉ", Search::kNext), "Last_Name7");
  EXPECT_EQ(found("TOMÉ", Search::kNext), "Last_Name2") << "once round";
  EXPECT_EQ(found("zo", Search::kPrevious), "Last_Name7");
  EXPECT_EQ(found("13.50", Search::kFromHere), "Price9") << "as it is shown";
  EXPECT_EQ(found("2026", Search::kFromHere), QString()) << "not in a hidden column";
  EXPECT_EQ(found("Yes", Search::kFromHere), QString());
}

TEST_F(GridFixture, ShowingOnlySomeKeepsTheCurrentRow) {
  Fill(9);
  Connect();
  grid_.sFilter("ID > 2");
  grid_.MoveTo(3);
  grid_.ShowOnly([](const StoredRow& row) { return row.At(0).integer % 3 == 0; });
  EXPECT_EQ(Shown("ID"), "3 6 9");
  EXPECT_EQ(grid_.RecordID(), 6);
  grid_.ShowOnly({});
  EXPECT_EQ(grid_.RowCount(), 7);
  EXPECT_EQ(grid_.RecordID(), 6);
}

TEST_F(GridFixture, WidthsAreFittedWhenTheFirstRowsCome) {
  Connect();
  const int heading = view_->columnWidth(1);
  view_->setColumnWidth(2, 77);
  Run("INSERT INTO Lines VALUES (1, 'A name that is longer than its heading', 123456789, NULL, 0)");
  grid_.Requery();
  EXPECT_GT(view_->columnWidth(1), heading);
  EXPECT_EQ(view_->columnWidth(2), 77) << "as the user left it";
}

TEST_F(GridFixture, LayoutComesBack) {
  test::MemoryRegistryStore store;
  StartupValues startup;
  startup.user = "Jo";
  startup.ProductKey = "SOFTWARE\\Test\\";
  RegistryFailures failures;
  RegistryValues registry({store, diagnostics, failures}, startup);
  grid_.KeepLayout(registry, "frmMain");
  Fill(1);
  grid_.HideColumns({"Ticked"}, false);
  Connect();
  view_->horizontalHeader()->moveSection(4, 1);
  view_->setColumnWidth(2, 123);
  ChooseColumns({"Due", "ID", "Last Name", "Price"});
  EXPECT_EQ(grid_.HiddenFields(), QSet<QString>({"due", "id", "last_name", "price"}));
  grid_.HideColumns({"Ticked"});
  EXPECT_TRUE(view_->isColumnHidden(4));
  EXPECT_EQ(grid_.HiddenFields().size(), 1) << "the last one comes back when its only neighbour goes";
  ChooseColumns({"Due"});
  grid_.SaveLayout();
  EXPECT_EQ(registry.sysLoadValueFromRegistry("frmMainDataGrid", "03-", {.perUser = true}), "W:123,V:-1,C:02,N:Price,");
  registry.sysSaveValueToRegistry("frmMainDataGrid", "02-", "W:70,V:0,C:01", true);

  QTableView other;
  other.setObjectName("dbgData");
  cDataGrid again(statements, diagnostics, options_);
  again.Grid(other);
  again.KeepLayout(registry, "frmMain");
  Recordset changed;
  ASSERT_FALSE(statements.dbOpenRec(changed, "SELECT ID, Last_Name, Due, Price, Ticked FROM Lines"));
  again.ConnectRecordset(changed);
  EXPECT_EQ(other.horizontalHeader()->visualIndex(4), 1);
  EXPECT_EQ(other.columnWidth(3), 123) << "found by its name";
  EXPECT_EQ(other.columnWidth(1), 70) << "an older entry";
  EXPECT_EQ(again.HiddenFields(), QSet<QString>{"due"}) << "which hides nothing";
}

}  // namespace
}  // namespace qbx
