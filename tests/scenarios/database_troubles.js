// The database goes away between two clicks of somebody who works on results, and comes back.

let grid = null;

function toResults() {
  control("cmdNew").click();
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
  control("cmdNext1").click();
  grid = control("dbgData");
}
const sendsText = row => sql("SELECT Send_SMS AS f FROM [Campaign Results] WHERE RecordID = " + grid.cell(row, "RecordID"))[0].f;

start();
toResults();
const rows = grid.rowCount;

check("a connection that broke is opened again without a word", () => {
  const acts = {
    "a flag": () => grid.clickCell(0, "Send SMS"),
    "a deletion": () => grid.clickCell(rows - 1, "Lastname").press("Ctrl+Del"),
    "send methods": () => { control("cmbSendBy2").choose(0); control("cmdSetSendMethods").click(); },
    "the counters": () => { selectTab(5); selectTab(2); },
    "refreshing": () => control("cmdApplyFilters").click(),
    "the next step": () => control("cmdNext1").click(),
    "back": () => control("cmdBack2").click(),
    "a save": () => {
      onWindow("frmCampaigns", window => {
        breakConnection();
        window.control("txtName").setText("Broken twice");
        window.control("cmdSave").click();
      });
      control("cmdSave").click();
    },
    "a load": () => {
      answer("Lose any changes", "Yes");
      onWindow("frmCampaigns", window => {
        breakConnection();
        window.control("cmdLoad").click();
      });
      control("mnuLoad").trigger();
    },
    "a new campaign": () => { answer("Lose any changes", "Yes"); control("mnuStart").trigger(); },
  };
  for (const what of Object.keys(acts)) {
    const before = messages().length;
    breakConnection();
    acts[what]();
    assertEqual(messages().slice(before).filter(box => box.icon !== "question").map(box => box.text), [], what);
  }
});

check("while the server is gone each command says so, and nothing is lost", () => {
  start();
  toResults();
  grid.clickCell(0, "Send SMS");
  loseConnection();
  const acts = {
    "a flag": () => grid.clickCell(1, "Send SMS"),
    "a deletion": () => grid.clickCell(2, "Lastname").press("Ctrl+Del"),
    "send methods": () => { control("cmbSendBy2").choose(0); control("cmdSetSendMethods").click(); },
    "the last page": () => { selectTab(5); selectTab(2); },
    "refreshing": () => control("cmdApplyFilters").click(),
    "the next step": () => control("cmdNext1").click(),
    "a save": () => {
      onWindow("frmCampaigns", window => {
        window.control("txtName").setText("Lost");
        window.control("cmdSave").click();
      });
      control("cmdSave").click();
    },
  };
  for (const what of Object.keys(acts)) {
    clearMessages();
    acceptNotices();
    acts[what]();
    acceptNotices(false);
    // The manager first tells that it has no list, then that it could not save.
    assertEqual(messages().length, what === "a save" ? 2 : 1, what);
    for (const box of messages()) assertMatch(box.text, "SQL Server does not exist or access denied.");
  }
  selectTab(3);
  assertEqual([grid.rowCount, grid.cell(0, "Send SMS"), grid.cell(1, "Send SMS")], [rows, "Yes", "No"]);
  assertEqual(control("cmbSendBy2").selectedIndex, 0);
});

check("when the server is back the work goes on where it stood", () => {
  restoreConnection();
  selectTab(3);
  grid.clickCell(1, "Send SMS");
  assertEqual([grid.cell(1, "Send SMS"), sendsText(1)], ["Yes", 1]);
  onWindow("frmCampaigns", window => {
    window.control("txtName").setText("Saved after all");
    window.control("cmdSave").click();
  });
  control("cmdSave").click();
  assertEqual(sql("SELECT COUNT(*) AS n FROM Marketing_Campaigns WHERE Campaign_Name = 'Saved after all'")[0].n, 1);
  assertEqual(grid.rowCount, rows);
});

check("while somebody else writes for a moment a flag waits for him", () => {
  lockDatabase(300);
  grid.clickCell(2, "Send SMS");
  assertEqual(sendsText(2), 1);
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
  toResults();
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
  answer("Lose any changes", "Yes");
  onWindow("frmCampaigns", window => {
    const list = window.control("lstCampaigns");
    list.clickCell(list.items.findIndex((_, row) => list.cell(row, "Campaign Name") === "Saved after all"), "Campaign Name");
    window.control("cmdLoad").click();
  });
  control("mnuLoad").trigger();
  selectTab(3);
  assertEqual(grid.rowCount, rows);
});

check("rows that could not follow a saved campaign are left alone until they do", () => {
  restart();
  toResults();
  onWindow("frmCampaigns", window => {
    window.control("txtName").setText("Rows behind");
    window.control("cmdSave").click();
  });
  failProcedure("UPDATE", "rows are locked");
  answer("rows are locked");
  control("cmdSave").click();
  answer("The results of this campaign have not been read, so nothing was changed.");
  grid.clickCell(0, "Send SMS");
  assertEqual(grid.rowCount, rows);
  failProcedure("UPDATE", "");
  selectTab(1);
  selectTab(3);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] r JOIN Marketing_Campaigns c ON c.ID = r.CampaignID " +
                  "WHERE c.Campaign_Name = 'Rows behind'")[0].n, rows);
  grid.clickCell(0, "Send SMS");
  assertEqual(grid.cell(0, "Send SMS"), "Yes");
});
