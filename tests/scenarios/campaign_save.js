// Saving the settings of the wizard as a campaign.

const stored = name => sql("SELECT * FROM Marketing_Campaigns WHERE Campaign_Name = '" + name.replace(/'/g, "''") + "'");
const rowsOf = campaign => count("[Campaign Results] WHERE CampaignID = " + campaign);

start();
const title = control("frmMain").caption;
walkTo(3);
const grid = control("dbgData");
const rows = grid.rowCount;
const temporary = Number(grid.cell(0, "CampaignID"));

check("saving opens the manager for a name, and loading, editing and copying wait; a name of blanks is refused", () => {
  onWindow("frmCampaigns", window => {
    assertEqual(window.caption, "Marketing Campaigns and Reports");
    const tabs = window.control("ssTabCampaigns");
    assertEqual(tabs.tabs, ["Save Report / Campaign", "Existing Report / Campaigns", "Marketing Campaign History"]);
    assertEqual([tabs.currentTab, ...shown("txtName", "txtDescription")], [1, "", ""]);
    waitFor(() => focusedControl() === "txtName");
    assert(control("frmCampaigns").visibleTexts().includes("Please enter a Name and Description for the Report or Campaign Settings"));
    screenshot("campaign_save");
    tabs.selectTab(2);
    assertEqual(["cmdLoad", "cmdEdit", "cmdCopy", "cmdDelete"].map(name => window.control(name).enabled), [false, false, false, true]);
    window.control("lstCampaigns").doubleClickCell(1, "Campaign Name");
    tabs.selectTab(1);
    window.control("txtName").setText("   ");
    refused("Campaign Name is not valid.", () => window.control("cmdSave").click());
    assertEqual(tabs.currentTab, 1);
    window.control("cmdCancel").click();
  });
  control("mnuSave").trigger();
  assertEqual([count("Marketing_Campaigns"), rowsOf(temporary), control("frmMain").caption], [6, rows, title]);
});

let id = 0;
check("a name saves: the campaign stands in the list, its rows and the caption follow, and the grid works on", () => {
  saveAs("Spring letters");
  const [record] = stored("Spring letters");
  id = record.ID;
  assert(id > 0);
  assertEqual([record.CampaignTypeID, record.Created_By, record.Step1, record.Step2, record.Step3], [2, "Pat", 1, 1, 0]);
  assertEqual([rowsOf(id), rowsOf(temporary), control("frmMain").caption], [rows, 0, title + " - [Spring letters]"]);
  grid.clickCell(0, "Send SMS");
  assertEqual([grid.rowCount, grid.cell(0, "Send SMS")], [rows, "Yes"]);
  selectTab(5);
  assertEqual(control("lblSMS0").text, "SMS's to Send: 1");
  selectTab(3);
});

check("saving again updates it, and a name comes back as it was typed", () => {
  control("cmdNext2").click();
  for (const name of ["O'Brien's \"best\" & <b>bold</b>", "Zo\u00eb \u{1F697}\u{1F4E7} \u65e5\u672c", "[x] %1 {regno} -- 1;"]) {
    onWindow("frmCampaigns", window => {
      fill({txtName: name, txtDescription: name + "\nsecond line"});
      window.control("cmdSave").click();
    });
    control("cmdSave").click();
    const [record] = stored(name);
    assertEqual([record.ID, record.Step3, record.Campaign_Description.replace(/\r\n?/g, "\n")], [id, 1, name + "\nsecond line"]);
    assertEqual(control("frmMain").caption, title + " - [" + name + "]");
    onWindow("frmCampaigns", window => {
      assertEqual(shown("txtName", "txtDescription"), [name, name + "\nsecond line"]);
      window.control("ssTabCampaigns").selectTab(2);
      answer("OK to delete the selected Campaign '" + name + "'?", "No");
      click("cmdDelete", "cmdClose");
    });
    control("cmdSave").click();
  }
});

function deletedMeanwhile(user) {
  execute("DELETE FROM Marketing_Campaigns WHERE ID = " + id);
  execute("INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Event, UserID) " +
          "VALUES ('2026-03-04', " + id + ", 'Campaign deleted', '" + user + "')");
}

check("a campaign that was deleted meanwhile can be saved as a new one: rows and journal that were left follow", () => {
  execute("INSERT INTO Send_Journal SELECT min(RecordID), 1, 2, max(CampaignID), 'Pat', '2026-03-04', NULL FROM [Campaign Results] WHERE CampaignID = " + id);
  deletedMeanwhile("pat");
  answer("The Campaign has been deleted.\n\nSave it as a new Campaign?", "Yes");
  answer(/./);
  saveAs("Once more");
  const next = stored("Once more")[0].ID;
  assertNotEqual(next, id);
  for (const table of ["[Campaign Results]", "Send_Journal"])
    assertEqual(sql("SELECT DISTINCT CampaignID FROM " + table + " WHERE CampaignID IN (" + [id, next] + ")"), [{CampaignID: next}], table);
  assertEqual(grid.rowCount, rows);
  id = next;
});

check("another user is named only when it was one; rows that a query selected since follow", () => {
  execute("DELETE FROM [Campaign Results] WHERE CampaignID = " + id);
  deletedMeanwhile("Jo");
  selectTab(1);
  control("cmdNext0").click();
  answer("The Campaign has been deleted by another user.\n\nSave it as a new Campaign?", "Yes");
  answer(/./);
  saveAs("Twice more");
  assertEqual(rowsOf(stored("Twice more")[0].ID), rows);
});

check("a save that fails leaves the campaign unsaved, with its rows", () => {
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  walkTo(2);
  failing("proc_addp_Marketing_Campaign", "disk is full", () => saveAs("Never stored"));
  assertMatch(log().join("\n"), /disk is full\.\nThe Location ID is 0\. \(in SaveCampaign\)/);
  assertEqual([stored("Never stored"), count("[Campaign Results] WHERE CampaignID < 0") > 0], [[], true]);
  saveAs("Stored after all");
  assertEqual([stored("Stored after all").length, count("[Campaign Results] WHERE CampaignID < 0")], [1, 0]);
});
