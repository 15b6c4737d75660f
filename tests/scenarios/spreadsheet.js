// The spreadsheet window: what it takes from the grid, its files, a filling and a file that are cancelled, and what is
// kept.

start({garage: {customers: 60}});
walkTo(3);
const open = () => control("cmdExportResults").click();
const sheet = () => window("frmSpreadsheet");
const rows = count("[Campaign Results]");

check("a filling that is cancelled leaves a sheet that says so", () => {
  answer("Cancelled by the user. The spreadsheet may not be fully populated.");
  during(open, () => statusBox() !== null && (cancelStatus(), true));
  assertMatch(statusTexts().join(), "Populating the spreadsheet");
  assertEqual(sheet().caption, `Spreadsheet view of Report Results (incomplete: 0 of ${rows})`);
  sheet().close();
});

check("a CSV file holds what the grid shows, with the headings when they are wanted", () => {
  open();
  assertEqual(sheet().caption, "Spreadsheet view of Report Results");
  assertEqual(sheet().control("fpSpread").rowCount, rows);
  const customer = sheet().control("fpSpread").cell(0, 0);
  control("frmMain.dbgData").press("Ctrl+Del");
  assertEqual([control("frmMain.dbgData").rowCount, sheet().control("fpSpread").rowCount], [rows - 1, rows]);
  assertEqual(sheet().control("fpSpread").cell(0, 0), customer);
  for (let i = 0; i < 3; ++i) control("frmSpreadsheet.chkHeader").click();
  assertEqual(sheet().control("fpSpread").rowCount, rows + 1);
  assertEqual(keyboardFaults(), []);
  screenshot("sheet", "frmSpreadsheet");
  answerFile(programFolder() + "/out.csv");
  answer("Data exported to file: " + programFolder() + "/out.csv");
  control("cmdExport1").click();
  const lines = readFile("out.csv").split("\r\n").filter(line => line !== "");
  assertMatch(lines[0], "\"Customer\",");
  assertEqual(lines.length >= rows + 1, true);
  answerFile(programFolder() + "/none/out.csv");
  answer("Error exporting the file: ");
  control("cmdExport1").click();
});

check("a workbook opens, and the window closes and remembers its ticks", () => {
  answerFile(programFolder() + "/out.xlsx");
  control("cmdExport0").click();
  assertMatch(shellOpened().join(), "out.xlsx");
  assert(!windows().includes("frmSpreadsheet"));
  open();
  control("chkExcel2003").click();
  answerFile(programFolder() + "/out.xls");
  control("cmdExport0").click();
  assertMatch(shellOpened().join(), /out\.xls$/);
  open();
  assertEqual([control("chkHeader").ticked, control("chkExcel2003").ticked], [true, true]);
  assertEqual(events().filter(e => e.key === "EXPORT" || e.key === "GenerateSpreadsheet").length, 7);
  onWindow("frmReportView", report => report.control("cmdClose").click());
  control("cmdPrint").click();
});
