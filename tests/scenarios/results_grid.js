// Step 3: what the grid of results shows, and how a person finds, sorts, selects and copies in it.

function toResults(query) {
  control("cmdNew").click();
  control("tvQuery").choose(query || "All Customers");
  control("cmdNext0").click();
  control("cmdNext1").click();
  return control("dbgData");
}

const lastnames = grid => Array.from({length: grid.rowCount}, (_, row) => grid.cell(row, "Lastname").toLowerCase());
const rising = list => list.slice().sort((a, b) => (a < b ? -1 : a > b ? 1 : 0));

start();
let grid = toResults();

check("the rows of the campaign are shown, and counted", () => {
  assertEqual(currentTab(), 3);
  const rows = sql("SELECT Lastname FROM [Campaign Results] ORDER BY RecordID");
  assert(rows.length > 30);
  assertEqual(grid.rowCount, rows.length);
  assertEqual(control("lblCount").text, rows.length + " records ");
  assertEqual(grid.cell(0, "Lastname"), rows[0].Lastname);
  assertEqual(control("lblInfo3").text.trim(), "Query results. You can remove records you don't want to include.");
  assertEqual(control("lblStepComplete2").text, "Press Next> for Marketing Options");
  assertMatch(control("lblInfo3").toolTip, "Ctrl+Delete");
  assertEqual(control("frmMain.imgLogo").visible, false);
});

check("the opt-in columns and keys are hidden, and other captions are the fields with blanks", () => {
  assertEqual(grid.hiddenColumns.filter(name => /ID$/.test(name)).sort(), ["CampaignID", "RecordID"]);
  assert(grid.columns.includes("Customer"));
  assertEqual(grid.hiddenColumns.filter(name => /Opt-In/.test(name)), ["SMS Opt-In", "Email Opt-In", "Letter Opt-In"]);
  for (const heading of ["Vehicle", "Last Mileage", "Send SMS", "Processed"]) assert(grid.columns.includes(heading), heading);
});

check("a heading sorts upwards, again downwards, another one upwards", () => {
  grid.clickHeading("Lastname");
  assertEqual(grid.sort, {column: "Lastname", direction: "ascending"});
  assertEqual(lastnames(grid), rising(lastnames(grid)));
  grid.clickHeading("Lastname");
  assertEqual(grid.sort, {column: "Lastname", direction: "descending"});
  assertEqual(lastnames(grid), rising(lastnames(grid)).reverse());
  grid.clickHeading("Customer");
  assertEqual(grid.sort, {column: "Customer", direction: "ascending"});
  assertEqual(grid.currentRow, 0);
});

check("typing finds in the sorted column", () => {
  grid.clickHeading("Lastname");
  const wanted = lastnames(grid).findIndex(name => name.startsWith("mo"));
  grid.type("mo");
  assertEqual(grid.currentRow, wanted);
  press("Escape");
});

check("a cell with several lines is shown on one and copied as it is", () => {
  const address = sql("SELECT Address FROM [Campaign Results] WHERE RecordID = " + grid.cell(0, "RecordID"))[0].Address;
  assertMatch(address, /[\r\n]/);
  grid.clickCell(0, "Address").press("Ctrl+C");
  assertEqual(clipboard(), address.replace(/\r\n?/g, "\n"));
});

check("selected rows are copied with their headings", () => {
  grid.selectRows([0, 2]).press("Ctrl+C");
  const lines = clipboard().trim().split("\n");
  assertEqual(lines.length, 3);
  assertMatch(lines[0], "Customer\tTitle\tFirstname\tLastname");
  assertMatch(lines[2], "\t" + grid.cell(2, "Lastname") + "\t");
  assertNoMatch(lines[0], "SMS Opt-In");
});

check("all and none are selected by keys", () => {
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, grid.rowCount);
  grid.press("Ctrl+Shift+A");
  assertEqual(grid.selectedRows, []);
});

check("the menu of the grid does the same", () => {
  answerMenu("Select All");
  grid.rightClickCell(1, "Firstname");
  assertEqual(grid.selectedRows.length, grid.rowCount);
});

check("a new campaign is not sorted as the one before", () => {
  grid.clickHeading("Firstname");
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
  control("cmdNext1").click();
  assertEqual(grid.sort, null);
  assertEqual(grid.row(0).RecordID, String(sql("SELECT MIN(RecordID) AS r FROM [Campaign Results] WHERE CampaignID = " + grid.cell(0, "CampaignID"))[0].r));
});

check("a result without rows says so in place of the grid", () => {
  selectTab(1);
  control("cmdNext0").click();
  control("chkFilter1").tick();
  control("cmbFilter1").choose(0);
  control("cmbData1").setText("Nobody is of this type");
  control("cmdNext1").click();
  assertEqual(control("lblCount").text, "0 records ");
  assert(control("frmMain").visibleTexts().includes("No records to display"));
  for (const name of ["cmdPrintResults", "cmdExportResults"]) {
    answer(name === "cmdPrintResults" ? "There are no results to print." : "There are no results to export.");
    control(name).click();
    assertEqual(lastMessage().icon, "exclamation");
  }
  answer("Nothing to be selected.");
  grid.press("Ctrl+A");
});

check("the boat edition speaks of boats and hours", () => {
  start({edition: "boat"});
  grid = toResults();
  assert(grid.columns.includes("Boat") && grid.columns.includes("Last Hours"));
  assert(!grid.columns.includes("Vehicle") && !grid.columns.includes("Last Mileage"));
});

check("with the consent module the opt-in columns are shown", () => {
  start({options: {Using_Vrelo: true}});
  control("cmdNew").click();
  control("tvQuery").choose("All Customers");
  control("cmbType").choose(0);
  control("cmdNext0").click();
  control("cmdNext1").click();
  assertEqual(grid.hiddenColumns.filter(name => /Opt-In/.test(name)), []);
});

check("more than 500 rows are selected only after a question", () => {
  start({garage: {customers: 1200, seed: 3}});
  grid = toResults();
  const count = grid.rowCount;
  assert(count > 500);
  const question = "Warning: There are " + count + " records to be selected - this may take some time.  Are you sure you want to continue?";
  answer(question, "No");
  grid.press("Ctrl+A");
  assertEqual(lastMessage().icon, "question");
  assert(grid.selectedRows.length <= 1);
  answer(question, "Yes");
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, count);
  execute("DELETE FROM [Campaign Results] WHERE RecordID NOT IN (SELECT RecordID FROM [Campaign Results] ORDER BY RecordID LIMIT 500)");
  control("cmbSendBy2").choose(0);
  control("cmdSetSendMethods").click();
  grid.press("Ctrl+A");
  assertEqual(grid.selectedRows.length, 500, "500 rows need no question");
});

check("colours and fonts are the user's", () => {
  start({userOptions: {GRID_ODD_BACKCOLOUR: 0xCCFFFF, GRID_ODD_FORECOLOUR: 0x000080, GRID_EVEN_BACKCOLOUR: 0xFFFFFF, GRID_EVEN_FORECOLOUR: 0,
                       SORTED_COLUMN_COLOUR: 0x00FFFF, GRID_LINEFONT: "DejaVu Sans", GRID_LINEFONT_SIZE: 12}});
  grid = toResults();
  grid.clickHeading("Lastname");
  assertEqual(grid.cellColours(0, "Firstname"), {text: "#800000", background: "#ffffcc"});
  assertEqual(grid.cellColours(1, "Firstname"), {text: "#000000", background: "#ffffff"});
  screenshot("user_colours");
});
