// Step 3: the flags of a row flip on one click, and rows are taken out with Ctrl+Delete.

start();
control("cmdNew").click();
control("tvQuery").choose("All Customers");
control("cmdNext0").click();
control("cmdNext1").click();
const grid = control("dbgData");
const flag = (row, column) => sql("SELECT " + column + " AS f FROM [Campaign Results] WHERE RecordID = " + grid.cell(row, "RecordID"))[0].f;
const counter = () => {
  selectTab(5);
  const text = control("lblSMS0").text;
  selectTab(3);
  return text;
};

check("one click flips a flag in the grid, the table and the counter", () => {
  for (const column of ["Send SMS", "Send Email", "Send Letter"]) {
    grid.clickCell(1, column);
    assertEqual(grid.cell(1, column), "Yes");
    assertEqual(flag(1, column.replace(" ", "_")), 1);
  }
  assertEqual(messages(), []);
  assertEqual(counter(), "SMS's to Send: 1");
  assertMatch(calls().join("\n"), "proc_updp_Marketing_ToggleCheckbox");
  grid.clickCell(1, "Send SMS");
  assertEqual(grid.cell(1, "Send SMS"), "No");
  assertEqual(counter(), "SMS's to Send: 0");
});

check("a double-click is one click", () => {
  grid.doubleClickCell(1, "Send SMS");
  assertEqual([grid.cell(1, "Send SMS"), flag(1, "Send_SMS")], ["Yes", 1]);
  grid.clickCell(1, "Send SMS");
});

check("the space bar flips the flag of the current cell", () => {
  grid.press("Space");
  assertEqual(grid.cell(1, "Send SMS"), "Yes");
  assertEqual(grid.currentRow, 1);
  assertEqual(grid.currentColumn, "Send SMS");
  grid.press("Space");
  assertEqual(flag(1, "Send_SMS"), 0);
});

check("a click on another column changes nothing", () => {
  const before = sql("SELECT * FROM [Campaign Results]");
  grid.clickCell(2, "Lastname");
  grid.clickCell(2, "Marketing");
  assertEqual(sql("SELECT * FROM [Campaign Results]"), before);
});

check("Processed is changed only after a Yes, which is asked for once", () => {
  const question = "Do you want to adjust the Processed flags? Records can be ignored or resent if the flag is adjusted.";
  for (const reply of ["No", "No", "Yes"]) {
    answer(question, reply);
    grid.clickCell(0, "Processed");
    assertEqual(lastMessage().text, question);
    assertEqual([lastMessage().icon, lastMessage().defaultButton], ["question", "No"]);
    assertEqual(grid.cell(0, "Processed"), reply);
  }
  grid.clickCell(0, "Processed");
  assertEqual(flag(0, "Processed"), 0);
  assertEqual(messages().length, 3);
});

check("a toggle keeps the first row, the current cell and the sort", () => {
  grid.clickHeading("Lastname");
  grid.clickHeading("Lastname");
  grid.scrollToRow(grid.rowCount - 1);
  const first = grid.firstVisibleRow;
  const row = first + 3;
  const name = grid.cell(row, "Lastname");
  assert(first > 0);
  grid.clickCell(row, "Send Email");
  assertEqual(grid.firstVisibleRow, first);
  assertEqual(grid.sort, {column: "Lastname", direction: "descending"});
  assertEqual([grid.cell(row, "Lastname"), grid.cell(row, "Send Email"), grid.currentRow], [name, "Yes", row]);
});

check("sorted by a flag, a toggle moves the row away and keeps the place", () => {
  grid.clickHeading("Send Letter");
  const first = grid.firstVisibleRow;
  const record = grid.cell(0, "RecordID");
  grid.clickCell(0, "Send Letter");
  assertEqual(grid.firstVisibleRow, first);
  assertEqual(sql("SELECT Send_Letter AS f FROM [Campaign Results] WHERE RecordID = " + record)[0].f, 1);
  assertEqual(grid.cell(grid.rowCount - 1, "Send Letter"), "Yes");
});

check("Ctrl+Delete takes one row out of the results; counts follow", () => {
  grid.clickHeading("Customer");
  grid.clickCell(3, "Send SMS");
  assertEqual(counter(), "SMS's to Send: 1");
  const count = grid.rowCount;
  const record = grid.cell(3, "RecordID");
  const next = grid.cell(4, "RecordID");
  grid.press("Ctrl+Del");
  assertEqual(sql("SELECT * FROM [Campaign Results] WHERE RecordID = " + record), []);
  assertEqual(grid.rowCount, count - 1);
  assertEqual(control("lblCount").text, (count - 1) + " records ");
  assertEqual(grid.cell(3, "RecordID"), next);
  assertEqual(grid.currentRow, 3);
  assertEqual(counter(), "SMS's to Send: 0");
  grid.press("Ctrl+Z");
  assertEqual([grid.rowCount, grid.cell(3, "RecordID"), counter()], [count, record, "SMS's to Send: 1"]);
  grid.clickCell(3, "Lastname").press("Ctrl+Del");
});

check("so does the menu of the grid", () => {
  const count = grid.rowCount;
  const record = grid.cell(2, "RecordID");
  answerMenu("Delete row");
  grid.rightClickCell(2, "Lastname");
  assertEqual(sql("SELECT * FROM [Campaign Results] WHERE RecordID = " + record), []);
  assertEqual(grid.rowCount, count - 1);
});

check("several rows are refused", () => {
  const count = grid.rowCount;
  answer("Deleting multiple rows is not supported.");
  grid.selectRows([1, 2, 3]).press("Ctrl+Del");
  assertEqual(lastMessage().icon, "exclamation");
  assertEqual(grid.rowCount, count);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results]")[0].n, count);
});

check("a row that another desk took out goes quietly or with a clear word, and never comes back", () => {
  const record = grid.cell(2, "RecordID");
  execute("DELETE FROM [Campaign Results] WHERE RecordID = " + record);
  grid.clickCell(2, "Lastname").press("Ctrl+Del");
  assertNotEqual(grid.cell(2, "RecordID"), record);
});

check("a toggle of a row that another desk took out shows that it is gone", () => {
  const count = grid.rowCount;
  const record = grid.cell(2, "RecordID");
  execute("DELETE FROM [Campaign Results] WHERE RecordID = " + record);
  grid.clickCell(2, "Send SMS");
  assertEqual(grid.rowCount, count - 1);
  assertNotEqual(grid.cell(2, "RecordID"), record);
});

check("a deletion that fails leaves the row and says so", () => {
  const count = grid.rowCount;
  failProcedure("proc_delp_Campaign_Results", "not today");
  answer("not today");
  answer("Error deleting currently selected row. It may have already been deleted.");
  grid.clickCell(0, "Lastname").press("Ctrl+Del");
  assertEqual(lastMessage().icon, "information");
  assertEqual(grid.rowCount, count);
  failProcedure("proc_delp_Campaign_Results", "");
});

check("a toggle that fails is reported and changes nothing", () => {
  failProcedure("proc_updp_Marketing_ToggleCheckbox", "no flags today");
  answer("no flags today");
  grid.clickCell(0, "Send Email");
  assertEqual(grid.cell(0, "Send Email"), "No");
  failProcedure("proc_updp_Marketing_ToggleCheckbox", "");
});

check("a toggle after which the rows cannot be read stays shown", () => {
  const record = grid.cell(0, "RecordID");
  const shown = grid.cell(0, "Send Letter");
  for (const name of ["proc_selp_Results_Flags", "proc_selp_Campaign_Results"]) failProcedure(name, "no rows today");
  answer("Unexpected error when reloading the grid.");
  grid.clickCell(0, "Send Letter");
  for (const name of ["proc_selp_Results_Flags", "proc_selp_Campaign_Results"]) failProcedure(name, "");
  assertNotEqual(grid.cell(0, "Send Letter"), shown);
  assertEqual(grid.cell(0, "RecordID"), record);
  assertEqual(flag(0, "Send_Letter"), shown === "Yes" ? 0 : 1);
  grid.clickCell(0, "Send Letter");
  assertEqual(grid.cell(0, "Send Letter"), shown);
});

check("while somebody else sends the campaign, flags, send methods and rows stay as they are", () => {
  const campaign = grid.cell(0, "CampaignID");
  const before = sql("SELECT * FROM [Campaign Results]");
  execute("INSERT INTO Campaign_Claims VALUES (" + campaign + ", 'Alex', 'FRONTDESK', 4711, '1', GetDate(), '2026-03-04 10:20:00')");
  const clicks = [() => grid.clickCell(0, "Send SMS"), () => grid.press("Space"), () => grid.press("Ctrl+Del"),
                  () => { control("cmbSendBy0").choose(0); control("cmdSetSendMethods").click(); }];
  for (const click of clicks) {
    answer(/being sent by Alex.*FRONTDESK/);
    click();
  }
  assertEqual(sql("SELECT * FROM [Campaign Results]"), before);
  assertEqual(control("cmbSendBy0").selectedIndex, 0, "what was chosen is not lost");
  execute("DELETE FROM Campaign_Claims");
});
