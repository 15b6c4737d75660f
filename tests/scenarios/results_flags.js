// Step 3: the flags of a row flip on one click, and rows are taken out with Ctrl+Delete.

start();
walkTo(3);
const grid = control("dbgData");
const flag = (row, column) => sql("SELECT " + column + " AS f FROM [Campaign Results] WHERE RecordID = " + grid.cell(row, "RecordID"))[0].f;
const gone = record => count("[Campaign Results] WHERE RecordID = " + record) === 0;
const stored = () => sql("SELECT * FROM [Campaign Results]");
const counter = () => {
  selectTab(5);
  const text = control("lblSMS0").text;
  selectTab(3);
  return text;
};

check("one click flips a flag in the grid, the table and the counter; so does a double-click, and the space bar", () => {
  for (const column of ["Send SMS", "Send Email", "Send Letter"]) {
    grid.clickCell(1, column);
    assertEqual([grid.cell(1, column), flag(1, column.replace(" ", "_"))], ["Yes", 1]);
  }
  assertEqual([messages(), counter()], [[], "SMS's to Send: 1"]);
  assertMatch(calls().join("\n"), "proc_updp_Marketing_ToggleCheckbox");
  grid.doubleClickCell(1, "Send SMS");
  assertEqual([grid.cell(1, "Send SMS"), counter()], ["No", "SMS's to Send: 0"]);
  grid.press("Space");
  assertEqual([grid.cell(1, "Send SMS"), grid.currentRow, grid.currentColumn], ["Yes", 1, "Send SMS"]);
  grid.press("Space");
  assertEqual(flag(1, "Send_SMS"), 0);
});

check("a click on another column changes nothing", () => {
  const before = stored();
  grid.clickCell(2, "Lastname");
  grid.clickCell(2, "Marketing");
  assertEqual(stored(), before);
});

check("Processed is changed only after a Yes, which is asked for once", () => {
  const question = "Do you want to adjust the Processed flags? Records can be ignored or resent if the flag is adjusted.";
  for (const reply of ["No", "Yes"]) {
    answer(question, reply);
    grid.clickCell(0, "Processed");
    assertEqual([lastMessage().icon, lastMessage().defaultButton, grid.cell(0, "Processed")], ["question", "No", reply]);
  }
  grid.clickCell(0, "Processed");
  assertEqual([flag(0, "Processed"), messages().length], [0, 2]);
});

check("a toggle keeps the first row, the current cell and the sort; sorted by a flag, the row moves away", () => {
  grid.clickHeading("Lastname");
  grid.clickHeading("Lastname");
  grid.scrollToRow(grid.rowCount - 1);
  const first = grid.firstVisibleRow;
  const row = first + 3;
  const name = grid.cell(row, "Lastname");
  assert(first > 0);
  grid.clickCell(row, "Send Email");
  assertEqual([grid.firstVisibleRow, grid.sort], [first, {column: "Lastname", direction: "descending"}]);
  assertEqual([grid.cell(row, "Lastname"), grid.cell(row, "Send Email"), grid.currentRow], [name, "Yes", row]);
  grid.clickHeading("Send Letter");
  const record = grid.cell(0, "RecordID");
  grid.clickCell(0, "Send Letter");
  assertEqual(count("[Campaign Results] WHERE Send_Letter = 1 AND RecordID = " + record), 1);
  assertEqual(grid.cell(grid.rowCount - 1, "Send Letter"), "Yes");
});

check("Ctrl+Delete takes one row out of the results, counts follow, and Ctrl+Z puts it back; so does the menu", () => {
  grid.clickHeading("Customer");
  grid.clickCell(3, "Send SMS");
  const rows = grid.rowCount;
  const [record, next] = [3, 4].map(row => grid.cell(row, "RecordID"));
  grid.press("Ctrl+Del");
  assert(gone(record));
  assertEqual([grid.rowCount, control("lblCount").text, counter()], [rows - 1, (rows - 1) + " records ", "SMS's to Send: 0"]);
  assertEqual([grid.cell(3, "RecordID"), grid.currentRow], [next, 3]);
  grid.press("Ctrl+Z");
  assertEqual([grid.rowCount, grid.cell(3, "RecordID"), counter()], [rows, record, "SMS's to Send: 1"]);
  answerMenu("Delete row");
  grid.rightClickCell(3, "Lastname");
  assert(gone(record));
});

check("several rows are refused", () => {
  const before = stored();
  grid.selectRows([1, 2, 3]);
  refused("Deleting multiple rows is not supported.", () => grid.press("Ctrl+Del"));
  assertEqual([stored(), grid.rowCount], [before, before.length]);
});

check("a row that another desk took out goes when it is deleted or flipped, and never comes back", () => {
  for (const act of [() => grid.clickCell(2, "Lastname").press("Ctrl+Del"), () => grid.clickCell(2, "Send SMS")]) {
    const [rows, record] = [grid.rowCount, grid.cell(2, "RecordID")];
    execute("DELETE FROM [Campaign Results] WHERE RecordID = " + record);
    act();
    assertEqual(grid.rowCount, rows - 1);
    assertNotEqual(grid.cell(2, "RecordID"), record);
  }
});

check("a flag that another desk turned round stays as the click wants it; results made anew there are read again", () => {
  const wanted = grid.cell(0, "Send SMS") === "Yes" ? "No" : "Yes";
  execute("UPDATE [Campaign Results] SET Send_SMS = 1 - Send_SMS WHERE RecordID = " + grid.cell(0, "RecordID"));
  grid.clickCell(0, "Send SMS");
  assertEqual([grid.cell(0, "Send SMS"), flag(0, "Send_SMS")], [wanted, wanted === "Yes" ? 1 : 0]);
  execute("UPDATE [Campaign Results] SET RecordID = RecordID + 5000");
  const before = stored();
  refused("The results of this campaign were made anew at another desk.", () => grid.clickCell(0, "Send SMS"));
  assertEqual([stored(), grid.rowCount], [before, before.length]);
  execute("UPDATE [Campaign Results] SET RecordID = RecordID + 5000");
  selectTab(2);
  selectTab(3);
  assertEqual(grid.cell(0, "RecordID"), String(stored()[0].RecordID), "also by opening the page");
});

check("a deletion or a toggle that fails is reported and changes nothing", () => {
  const before = stored();
  failing("proc_delp_Campaign_Results", "not today", () => {
    answer("Error deleting currently selected row. It may have already been deleted.");
    grid.clickCell(0, "Lastname").press("Ctrl+Del");
  });
  failing("proc_updp_Marketing_ToggleCheckbox", "no flags today", () => grid.clickCell(0, "Send Email"));
  assertEqual([stored(), grid.rowCount, grid.cell(0, "Send Email")], [before, before.length, "No"]);
});

check("a toggle after which the rows cannot be read stays shown", () => {
  const shown = grid.cell(0, "Send Letter");
  failProcedure("proc_selp_Results_Flags", "no rows today");
  failing("proc_selp_Campaign_Results", "Unexpected error when reloading the grid.", () => grid.clickCell(0, "Send Letter"));
  failProcedure("proc_selp_Results_Flags", "");
  assertNotEqual(grid.cell(0, "Send Letter"), shown);
  assertEqual(flag(0, "Send_Letter"), shown === "Yes" ? 0 : 1);
});

check("while somebody else sends the campaign, flags, send methods and rows stay as they are", () => {
  const before = stored();
  const acts = [() => grid.clickCell(0, "Send SMS"), () => grid.press("Space"), () => grid.press("Ctrl+Del"), () => grid.press("Del"), () => grid.press("Ctrl+L"),
                () => { control("cmbSendBy0").choose(0); control("cmdSetSendMethods").click(); }];
  sentElsewhere(grid.cell(0, "CampaignID"), () => acts.forEach(act => refused(/being sent by Alex.*FRONTDESK/, act)));
  assertEqual([stored(), control("cmbSendBy0").selectedIndex], [before, 0], "and what was chosen is not lost");
});
