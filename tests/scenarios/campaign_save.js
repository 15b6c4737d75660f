// Saving the settings of the wizard as a campaign.

const question = "Lose any changes and start a new campaign?";
const stored = name => sql("SELECT * FROM Marketing_Campaigns WHERE Campaign_Name = '" + name.replace(/'/g, "''") + "'");

function saveAs(name, description) {
  onWindow("frmCampaigns", window => {
    window.control("txtName").setText(name);
    if (description !== undefined) window.control("txtDescription").setText(description);
    window.control("cmdSave").click();
  });
  control("cmdSave").click();
}

start();
const title = control("frmMain").caption;
control("cmdNew").click();
control("tvQuery").choose("All Customers");
control("cmdNext0").click();
control("cmdNext1").click();
const grid = control("dbgData");
const rows = grid.rowCount;
const temporary = Number(grid.cell(0, "CampaignID"));

check("saving opens the manager for a name; loading, editing and copying wait", () => {
  onWindow("frmCampaigns", window => {
    assertEqual(window.caption, "Marketing Campaigns and Reports");
    const tabs = window.control("ssTabCampaigns");
    assertEqual(tabs.tabs, ["Save Report / Campaign", "Existing Report / Campaigns", "Marketing Campaign History"]);
    assertEqual(tabs.currentTab, 1);
    assertEqual([window.control("txtName").text, window.control("txtDescription").text], ["", ""]);
    waitFor(() => focusedControl() === "txtName");
    assert(control("frmCampaigns").visibleTexts().includes("Please enter a Name and Description for the Report or Campaign Settings"));
    screenshot("campaign_save");
    tabs.selectTab(2);
    for (const name of ["cmdLoad", "cmdEdit", "cmdCopy"]) assert(!window.control(name).enabled, name);
    assert(window.control("cmdDelete").enabled);
    window.control("lstCampaigns").doubleClickCell(1, "Campaign Name");
    tabs.selectTab(1);
    window.control("cmdCancel").click();
  });
  control("cmdSave").click();
  assertEqual(sql("SELECT COUNT(*) AS n FROM Marketing_Campaigns")[0].n, 6);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID = " + temporary)[0].n, rows);
  assertEqual(control("frmMain").caption, title);
});

check("a name of blanks is refused, and the window stays", () => {
  onWindow("frmCampaigns", window => {
    answer("Campaign Name is not valid.");
    window.control("txtName").setText("   ");
    window.control("cmdSave").click();
    assertEqual(lastMessage().icon, "exclamation");
    assertEqual(window.control("ssTabCampaigns").currentTab, 1);
    window.control("cmdClose").click();
  });
  control("mnuSave").trigger();
  assertEqual(sql("SELECT COUNT(*) AS n FROM Marketing_Campaigns")[0].n, 6);
});

let id = 0;
check("a name saves: the campaign stands in the list, its rows and the caption follow", () => {
  saveAs("Spring letters", "Everybody");
  const [record] = stored("Spring letters");
  id = record.ID;
  assert(id > 0);
  assertEqual([record.Campaign_Description, record.CampaignTypeID, record.Created_By], ["Everybody", 2, "Pat"]);
  assertEqual([record.Step1, record.Step2, record.Step3], [1, 1, 0]);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID = " + id)[0].n, rows);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID = " + temporary)[0].n, 0);
  assertEqual(control("frmMain").caption, title + " - [Spring letters]");
});

check("the grid works on with the rows of the saved campaign", () => {
  grid.clickCell(0, "Send SMS");
  assertEqual(grid.rowCount, rows);
  assertEqual(grid.cell(0, "Send SMS"), "Yes");
  selectTab(5);
  assertEqual(control("lblSMS0").text, "SMS's to Send: 1");
  selectTab(3);
});

check("saving again updates it, and closing asks nothing then", () => {
  control("cmdNext2").click();
  selectTab(1);
  control("txtCriteria").visible;
  saveAs("Spring letters 2");
  assertEqual(stored("Spring letters 2")[0].ID, id);
  assertEqual([stored("Spring letters 2")[0].Step3, stored("Spring letters 2")[0].Campaign_Description], [1, "Everybody"]);
  assertEqual(control("frmMain").caption, title + " - [Spring letters 2]");
  assertEqual(messages().length, 1);
});

for (const name of ["O'Brien's \"best\" & <b>bold</b>", "Zo\u00eb \u{1F697}\u{1F4E7} \u65e5\u672c", "[x] %1 {regno} -- 1;"]) {
  check("a name like " + name + " comes back as it was typed", () => {
    saveAs(name, name + "\nsecond line");
    assertEqual(stored(name)[0].ID, id);
    assertEqual(stored(name)[0].Campaign_Description.replace(/\r\n?/g, "\n"), name + "\nsecond line");
    assertEqual(control("frmMain").caption, title + " - [" + name + "]");
    onWindow("frmCampaigns", window => {
      assertEqual(window.control("txtName").text, name);
      assertEqual(window.control("txtDescription").text, name + "\nsecond line");
      window.control("ssTabCampaigns").selectTab(2);
      assert(window.control("lstCampaigns").selectedTexts.length > 0);
      answer("OK to delete the selected Campaign '" + name + "'?", "No");
      window.control("cmdDelete").click();
      window.control("cmdClose").click();
    });
    control("cmdSave").click();
  });
}

function deletedMeanwhile(campaign, user) {
  execute("DELETE FROM Marketing_Campaigns WHERE ID = " + campaign);
  execute("INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Event, UserID) " +
          "VALUES ('2026-03-04', " + campaign + ", 'Campaign deleted', '" + user + "')");
}

check("a campaign that was deleted meanwhile can be saved as a new one: rows and journal that were left follow", () => {
  execute("INSERT INTO Send_Journal SELECT min(RecordID), 1, 2, CampaignID, 'Pat', '2026-03-04', NULL FROM [Campaign Results] WHERE CampaignID = " + id);
  deletedMeanwhile(id, "pat");
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
  deletedMeanwhile(id, "Jo");
  selectTab(1);
  control("cmdNext0").click();
  answer("The Campaign has been deleted by another user.\n\nSave it as a new Campaign?", "Yes");
  answer(/./);
  saveAs("Twice more");
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID = " + stored("Twice more")[0].ID)[0].n, rows);
});

check("a save that fails leaves the campaign unsaved, with its rows", () => {
  answer(question, "Yes");
  control("mnuStart").trigger();
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
  failProcedure("proc_addp_Marketing_Campaign", "disk is full");
  answer("disk is full");
  saveAs("Never stored");
  assertMatch(log().join("\n"), /disk is full\.\nThe Location ID is 0\. \(in SaveCampaign\)/);
  failProcedure("proc_addp_Marketing_Campaign", "");
  assertEqual(stored("Never stored"), []);
  assert(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID < 0")[0].n > 0);
  saveAs("Stored after all");
  assertEqual(stored("Stored after all").length, 1);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID < 0")[0].n, 0);
});
