// The database goes away between two clicks of somebody who works on results, and comes back.

start();
walkTo(3);
const grid = control("dbgData");
const rows = grid.rowCount;

const sendsText = row => sql("SELECT Send_SMS AS f FROM [Campaign Results] WHERE RecordID = " + grid.cell(row, "RecordID"))[0].f;
// What a person does on results; beside it, how many boxes tell that the server is gone.
const acts = {
  "a flag": [() => grid.clickCell(1, "Send SMS"), 1],
  "a deletion": [() => grid.clickCell(rows - 1, "Lastname").press("Ctrl+Del"), 1],
  "send methods": [() => { control("cmbSendBy2").choose(0); control("cmdSetSendMethods").click(); }, 1],
  "the counters": [() => { selectTab(5); selectTab(2); }, 1],
  "refreshing": [() => control("cmdApplyFilters").click(), 1],
  "the next step": [() => control("cmdNext1").click(), 1],
  "a save": [() => saveAs("Broken"), 2],  // the manager first tells that it has no list, then that it could not save
  "a load": [() => manage(window => window.control("cmdLoad").click()), 1],
  "a new campaign": [() => { answer("Lose any changes and start a new campaign?", "Yes"); control("mnuStart").trigger(); }, 1],
};

check("a connection that broke is opened again without a word", () => {
  for (const what of Object.keys(acts)) {
    clearMessages();
    breakConnection();
    acts[what][0]();
    assertEqual(messages().filter(box => box.icon !== "question").map(box => box.text), [], what);
  }
});

check("while the server is gone each command says so once, and nothing is lost; when it is back the work goes on where it stood", () => {
  start();
  walkTo(3);
  grid.clickCell(0, "Send SMS");
  loseConnection();
  acceptNotices();
  for (const what of Object.keys(acts).filter(name => !/load|new/.test(name))) {
    clearMessages();
    acts[what][0]();
    assertEqual(messages().filter(box => /SQL Server does not exist or access denied/.test(box.text)).length, acts[what][1], what);
    assertEqual([messages().length, busy()], [acts[what][1], false], what);
  }
  acceptNotices(false);
  selectTab(3);
  assertEqual([grid.rowCount, grid.cell(0, "Send SMS"), grid.cell(1, "Send SMS"), control("cmbSendBy2").selectedIndex], [rows, "Yes", "No", 0]);
  restoreConnection();
  grid.clickCell(1, "Send SMS");
  assertEqual([grid.cell(1, "Send SMS"), sendsText(1)], ["Yes", 1]);
  saveAs("Saved after all");
  assertEqual([count("Marketing_Campaigns WHERE Campaign_Name = 'Saved after all'"), grid.rowCount], [1, rows]);
});

check("while somebody else writes for a moment a flag waits for him", () => {
  lockDatabase(300);
  grid.clickCell(2, "Send SMS");
  assertEqual(sendsText(2), 1);
});

check("a box says after a while that the server does not answer; Cancel is there for reading, not for a change", () => {
  clearStatusTexts();
  grid.clickCell(3, "Send SMS");
  assertEqual(statusTexts(), [], "quick answers");
  slowDatabase(4000);
  during(() => grid.clickCell(3, "Send SMS"), () => (statusBox() || {}).cancel === false && (screenshot("waiting_for_a_change", "frmProcessing"), slowDatabase(0), true));
  slowDatabase(9000);
  answer("Operation cancelled by user");
  during(() => manage(() => {}), () => (statusBox() || {}).cancel && (screenshot("waiting_for_rows", "frmProcessing"), slowDatabase(0), cancelStatus(), true));
  assertEqual([sendsText(3), statusTexts()], [0, Array(2).fill("Waiting for the database...")]);
});

check("the window closes although the server is gone", () => {
  selectTab(2);
  control("chkFilter1").tick();
  loseConnection();
  answer("lose changes", "Yes");
  assert(closeWindow());
});

check("results that cannot be read are never taken for another campaign's", () => {
  restart();
  walkTo(3);
  failProcedure("proc_selp_Campaign_Results", "no rows today");
  selectTab(2);
  acceptNotices();
  control("cmdNext1").click();
  assertEqual(currentTab(), 2, "step 2 stays");
  onMessage(box => (/Lose any changes/.test(box.text) ? "Yes" : null));
  onWindow("frmCampaigns", window => window.control("cmdLoad").click());
  control("mnuLoad").trigger();
  selectTab(3);
  onMessage(null);
  acceptNotices(false);
  assertEqual([grid.rowCount, control("lblCount").text], [0, "0 records "]);
  failProcedure("proc_selp_Campaign_Results", "");
  load("Saved after all");
  selectTab(3);
  assertEqual(grid.rowCount, rows);
});

check("rows that could not follow a saved campaign are left alone until they do", () => {
  restart();
  walkTo(3);
  failing("UPDATE", "rows are locked", () => {
    saveAs("Rows behind");
    answer("The results of this campaign have not been read, so nothing was changed.");
    grid.clickCell(0, "Send SMS");
    assertEqual(grid.rowCount, rows);
  });
  selectTab(1);
  selectTab(3);
  assertEqual(count("[Campaign Results] r JOIN Marketing_Campaigns c ON c.ID = r.CampaignID WHERE c.Campaign_Name = 'Rows behind'"), rows);
  grid.clickCell(0, "Send SMS");
  assertEqual(grid.cell(0, "Send SMS"), "Yes");
});
