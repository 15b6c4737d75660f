// Step 3: what the grid of results shows, and how a person finds, sorts, selects and copies in it.

const rising = list => list.slice().sort((a, b) => (a < b ? -1 : a > b ? 1 : 0));

start();
walkTo(3);
const grid = control("dbgData");
const lastnames = () => Array.from({length: grid.rowCount}, (_, row) => grid.cell(row, "Lastname").toLowerCase());

check("the rows of the campaign are shown, and counted", () => {
  const rows = sql("SELECT Lastname FROM [Campaign Results] ORDER BY RecordID");
  assert(rows.length > 30);
  assertEqual([grid.rowCount, grid.cell(0, "Lastname"), control("lblCount").text], [rows.length, rows[0].Lastname, rows.length + " records "]);
  assertMatch(control("lblInfo3").toolTip, "Ctrl+Delete");
});

check("the opt-in columns and keys are hidden, and other captions are the fields with blanks", () => {
  assertEqual(grid.hiddenColumns.filter(name => /ID$|Opt-In/.test(name)).sort(), ["CampaignID", "Email Opt-In", "Letter Opt-In", "RecordID", "SMS Opt-In"]);
  for (const heading of ["Customer", "Vehicle", "Last Mileage", "Send SMS", "Processed"]) assert(grid.columns.includes(heading), heading);
});

check("a heading sorts upwards, again downwards; typing finds in the sorted column", () => {
  for (const direction of ["ascending", "descending"]) {
    grid.clickHeading("Lastname");
    assertEqual(grid.sort, {column: "Lastname", direction});
    assertEqual(lastnames(), direction === "ascending" ? rising(lastnames()) : rising(lastnames()).reverse());
  }
  grid.type("mo");
  assertEqual(grid.currentRow, lastnames().findIndex(name => name.startsWith("mo")));
  press("Escape");
});

check("a cell with several lines is copied as it is, and selected rows with their headings", () => {
  const address = sql("SELECT Address FROM [Campaign Results] WHERE RecordID = " + grid.cell(0, "RecordID"))[0].Address;
  assertMatch(address, /[\r\n]/);
  grid.clickCell(0, "Address").press("Ctrl+C");
  assertEqual(clipboard(), address.replace(/\r\n?/g, "\n"));
  grid.selectRows([0, 2]).press("Ctrl+C");
  const lines = clipboard().trim().split("\n");
  assertEqual(lines.length, 3);
  assertMatch(lines[0], "Customer\tTitle\tFirstname\tLastname");
  assertMatch(lines[2], "\t" + grid.cell(2, "Lastname") + "\t");
  assertNoMatch(lines[0], "SMS Opt-In");
});

check("all and none are selected by keys, and by the menu", () => {
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, grid.rowCount);
  grid.press("Ctrl+Shift+A");
  assertEqual(grid.selectedRows, []);
  answerMenu("Select All");
  grid.rightClickCell(1, "Firstname");
  assertEqual(grid.selectedRows.length, grid.rowCount);
});

check("a new campaign is not sorted as the one before", () => {
  grid.clickHeading("Firstname");
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  walkTo(3);
  assertEqual(grid.sort, null);
});

check("a result without rows says so in place of the grid", () => {
  selectTab(1);
  control("cmdNext0").click();
  fill({chkFilter1: true, cmbFilter1: 0});
  control("cmbData1").setText("Nobody is of this type");
  control("cmdNext1").click();
  assertEqual(control("lblCount").text, "0 records ");
  assert(control("frmMain").visibleTexts().includes("No records to display"));
  refused("There are no results to print.", () => control("cmdPrintResults").click());
  refused("There are no results to export.", () => control("cmdExportResults").click());
  answer("Nothing to be selected.");
  grid.press("Ctrl+A");
});

check("with the consent module the opt-in columns are shown", () => {
  start({options: {Using_Vrelo: true}});
  walkTo(3);
  assertEqual(grid.hiddenColumns.filter(name => /Opt-In/.test(name)), []);
});

check("more than 500 rows are selected only after a question", () => {
  start({garage: {customers: 1200, seed: 3}});
  walkTo(3);
  const rows = grid.rowCount;
  const question = "Warning: There are " + rows + " records to be selected - this may take some time.  Are you sure you want to continue?";
  answer(question, "No");
  grid.press("Ctrl+A");
  assertEqual([lastMessage().icon, grid.selectedRows.length <= 1], ["question", true]);
  answer(question, "Yes");
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, rows);
  execute("DELETE FROM [Campaign Results] WHERE RecordID NOT IN (SELECT RecordID FROM [Campaign Results] ORDER BY RecordID LIMIT 500)");
  control("cmbSendBy2").choose(0);
  control("cmdSetSendMethods").click();
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, 500, "500 rows need no question");
});

check("colours and fonts are the user's", () => {
  start({userOptions: {GRID_ODD_BACKCOLOUR: 0xCCFFFF, GRID_ODD_FORECOLOUR: 0x000080, GRID_EVEN_BACKCOLOUR: 0xFFFFFF, GRID_EVEN_FORECOLOUR: 0,
                       SORTED_COLUMN_COLOUR: 0x00FFFF, GRID_LINEFONT: "DejaVu Sans", GRID_LINEFONT_SIZE: 12}});
  walkTo(3);
  grid.clickHeading("Lastname");
  assertEqual([0, 1].map(row => grid.cellColours(row, "Firstname")),
              [{text: "#800000", background: "#ffffcc"}, {text: "#000000", background: "#ffffff"}]);
  screenshot("user_colours");
});
