// Step 3 with many rows at once: choosing columns, finding, showing only some, ticking, taking out, and taking that
// back.

const stored = () => sql("SELECT * FROM [Campaign Results] ORDER BY RecordID");

start({garage: {customers: 200, seed: 5}});
walkTo(3);
const grid = control("dbgData");
const total = grid.rowCount;
const withMobile = count("[Campaign Results] WHERE Len(Mobile) > 5");

check("a column is hidden and shown in the menu of the headings, and by the keyboard", () => {
  answerMenu("Address");
  grid.rightClickHeading("Lastname");
  wait(20);
  answerMenu("Columns...");
  answerMenu("Title");
  grid.rightClickCell(0, "Lastname");
  wait(20);
  assert(grid.hiddenColumns.includes("Address") && grid.hiddenColumns.includes("Title"));
  grid.selectRows([0, 1]).press("Ctrl+C");
  assertNoMatch(clipboard(), "Address");
  grid.resizeColumn("Email", 20);
  answerMenu(() => screenshot("many_columns") || "Fit columns");
  grid.rightClickHeading("Email");
  wait(20);
  assert(grid.columnWidth("Email") > 100);
});

check("the box over the rows finds in all columns", () => {
  grid.press("Ctrl+F");
  assertEqual(focusedControl(), "txtFind");
  const row = Array.from({length: total}, (_, i) => grid.cell(i, "Email")).findIndex((email, i) => i > 4 && email !== "");
  type(grid.cell(row, "Email").toUpperCase());
  assertEqual([grid.currentRow, grid.currentColumn], [row, "Email"]);
  control("txtFind").setText("");
  control("txtFind").type("a");
  const first = grid.currentRow;
  press("F3");
  assert(grid.currentRow > first);
  press("Return");
  press("Shift+F3", 2);
  assertEqual([grid.currentRow, currentTab()], [first, 3]);
  type("zzz");
  assertEqual(control("lblFound").text, "not found");
  press("Escape");
  assertEqual(focusedControl(), "dbgData");
});

check("the selected rows are ticked, those without an address are left alone and say why", () => {
  grid.press("Ctrl+A").press("Ctrl+T");
  const without = total - withMobile;
  assert(without > 0);
  assertEqual(count("[Campaign Results] WHERE Send_SMS = 1"), withMobile);
  assertMatch(control("lblChange").text, withMobile + " rows ticked; " + without + " left alone: " + without + " no mobile");
  assertMatch(control("lblTotals").text, "Texts " + withMobile);
  assertEqual(grid.selectedRows.length, total, "the selection stays for the next change");
  screenshot("many_ticked");
  assertEqual(keyboardFaults(), []);
});

check("only the rows of one kind are shown, and the line says what takes all of them", () => {
  control("cmbShow").choose("gets a text");
  assertEqual(grid.rowCount, withMobile);
  assertEqual(shown("lblShown", "lblCount"), [withMobile + " of " + total + " rows shown; send methods, letters and sending take all " + total + ".",
                                              total + " records "]);
  grid.selectRows([0, 1]).press("Ctrl+Shift+T");
  assertEqual(grid.rowCount, withMobile - 2, "what is of the kind no more goes");
  screenshot("many_filtered");
  control("cmbShow").choose("in doubt");
  assert(control("frmMain").visibleTexts().includes("There is no such row."));
  control("cmbSendBy1").choose(0);
  control("cmdSetSendMethods").click();
  assert(!control("cmdUndo").visible, "there is nothing to take back any more");
  assertEqual(control("cmbShow").selectedText, "in doubt", "another rule is no other query");
  control("cmbShow").choose("gets an e-mail");
  assert(grid.rowCount > 0);
  control("cmbShow").choose("all");
  assertEqual([grid.rowCount, control("lblShown").text], [total, ""]);
});

check("Del takes the selected rows out after one question, and Undo puts them back as they were; so do menu and button", () => {
  const before = stored();
  answer("Take 3 rows out of the results?", "No");
  grid.selectRows([2, 4, 6]).press("Del");
  assertEqual(stored(), before);
  answer("Take 3 rows out of the results?", "Yes");
  grid.press("Del");
  assertEqual([grid.rowCount, stored().length, control("lblCount").text], [total - 3, total - 3, (total - 3) + " records "]);
  assertMatch(control("lblChange").text, "3 rows taken out");
  grid.press("Ctrl+Z");
  assertEqual(stored(), before);
  assertEqual([grid.rowCount, control("cmdUndo").visible], [total, false]);
  assertMatch(control("lblChange").text, "3 rows put back");
  answerMenu(entries => {
    screenshot("many_menu");
    return entries.find(entry => entry === "Take out 1 row");
  });
  answer("Take 1 row out of the results?", "Yes");
  grid.rightClickCell(3, "Lastname");
  assertEqual(grid.rowCount, total - 1);
  control("cmdUndo").click();
  assertEqual(stored(), before);
});

check("with Ctrl+Delete a row goes that was of the kind by the other alone, and comes back with it", () => {
  control("cmbShow").choose("same mobile more than once");
  const pairs = grid.rowCount;
  grid.clickCell(0, "Lastname").press("Ctrl+Del");
  assertEqual(grid.rowCount, pairs - 2);
  grid.press("Ctrl+Z");
  assertEqual(grid.rowCount, pairs);
  control("cmbShow").choose("all");
});

check("a new query ends the filter, and the columns come back the next day", () => {
  control("cmbShow").choose("gets nothing");
  selectTab(1);
  walkTo(3);
  assertEqual([control("cmbShow").selectedText, control("lblShown").text], ["all", ""]);
  acceptNotices();
  onMessage(() => "Yes");
  assert(closeWindow());
  restart();
  walkTo(3);
  assert(grid.hiddenColumns.includes("Address") && grid.hiddenColumns.includes("Title") && !grid.hiddenColumns.includes("Mobile"));
});
