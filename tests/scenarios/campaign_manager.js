// The campaign manager: editing, copying, deleting, the history, and what it keeps for each user.

function manage(action) {
  onWindow("frmCampaigns", window => {
    action(window, window.control("lstCampaigns"));
    window.control("cmdClose").click();
  });
  control("cmdLoad").click();
}
const names = list => list.items.map((_, row) => list.cell(row, "Campaign Name"));
const select = (list, name) => list.clickCell(names(list).indexOf(name), "Campaign Name");
const stored = name => sql("SELECT * FROM Marketing_Campaigns WHERE Campaign_Name = '" + name + "'");

start();

check("choosing a row shows its description and who made it", () => manage((window, list) => {
  select(list, "MOT due");
  assertEqual(window.control("txtDesc").text, "Vehicles whose MOT is due within the next two months.");
  assertEqual(window.control("lblCreatedBy").text, "Created By: manager");
  assert(window.control("txtDesc").readOnly);
}));

check("Edit changes name and description of the chosen campaign", () => manage((window, list) => {
  select(list, "MOT due");
  assertEqual(window.control("cmdEdit").toolTip, "Edit Name or Description");
  window.control("cmdEdit").click();
  const tabs = window.control("ssTabCampaigns");
  assertEqual(tabs.currentTab, 1);
  assertEqual(window.control("txtName").text, "MOT due");
  assertEqual(window.control("txtDescription").text, window.control("txtDesc").text);
  window.control("txtName").setText(" ");
  answer("Campaign Name is not valid.");
  window.control("cmdSave").click();
  assertEqual(tabs.currentTab, 1);
  window.control("txtName").setText("MOT due soon");
  window.control("txtDescription").setText("Another text");
  window.control("cmdSave").click();
  assertEqual([tabs.currentTab, tabs.tabEnabled(1)], [2, false]);
  assert(names(list).includes("MOT due soon") && !names(list).includes("MOT due"));
  assertEqual(window.control("txtDesc").text, "Another text");
  const [record] = stored("MOT due soon");
  assertEqual([record.Campaign_Description, record.CampaignTypeID], ["Another text", 10]);
  tabs.selectTab(3);
  const history = window.control("lstHistory");
  const last = history.rowCount - 1;
  assertEqual([history.cell(last, "Campaign Name"), history.cell(last, "Username")], ["MOT due soon", "Pat"]);
  assertEqual(history.selectedIndex, last);
}));

check("Cancel, or Esc, gives an edit up; the window stays for another choice", () => manage((window, list) => {
  for (const giveUp of [() => window.control("cmdCancel").click(), () => window.control("txtName").press("Escape")]) {
    select(list, "Lapsed customers");
    window.control("cmdEdit").click();
    window.control("txtName").setText("Given up");
    giveUp();
    assertEqual([window.control("ssTabCampaigns").currentTab, window.control("ssTabCampaigns").tabEnabled(1)], [2, false]);
  }
  assertEqual(stored("Given up"), []);
}));

check("during an edit the other buttons wait, and closing asks before what was typed is lost", () => {
  onWindow("frmCampaigns", window => {
    const list = window.control("lstCampaigns");
    const tabs = window.control("ssTabCampaigns");
    const question = "The Name or Description has been changed and not been saved.\n\nClose and lose the changes?";
    select(list, "Lapsed customers");
    window.control("cmdEdit").click();
    window.control("txtName").setText("Typed at length");
    tabs.selectTab(2);
    for (const name of ["cmdLoad", "cmdEdit", "cmdCopy", "cmdDelete"]) assert(!window.control(name).enabled, name);
    list.doubleClickCell(0, "Campaign Name");
    answer(question, "No");
    window.control("cmdClose").click();
    assertEqual([tabs.currentTab, window.control("txtName").text], [1, "Typed at length"]);
    window.control("cmdCancel").click();
    for (const name of ["cmdLoad", "cmdEdit", "cmdCopy", "cmdDelete"]) assert(window.control(name).enabled, name);
    window.control("cmdEdit").click();
    window.control("txtDescription").setText("Typed at length");
    answer(question, "Yes");
    window.control("cmdClose").click();
  });
  control("cmdLoad").click();
  assertEqual(sql("SELECT * FROM Marketing_Campaigns WHERE 'Typed at length' IN (Campaign_Name, Campaign_Description)"), []);
});

check("Copy asks for a name, of which 40 characters are taken; none copies nothing", () => manage((window, list) => {
  const count = list.rowCount;
  select(list, "Lapsed customers");
  for (const none of ["", null]) {
    answerInput(none, "Enter name for the new campaign:");
    window.control("cmdCopy").click();
  }
  assertEqual(list.rowCount, count);
  assertEqual([inputBoxes()[0].caption, inputBoxes()[0].text], ["Copy Campaign", ""]);
  answerInput("LAPSED customers ");
  answer("There is another campaign named 'LAPSED customers'.", "No");
  window.control("cmdCopy").click();
  assertEqual([list.rowCount, lastMessage().defaultButton], [count, "No"]);
  const name = "A name of exactly forty-one characters !X";
  answerInput(name);
  window.control("cmdCopy").click();
  assertEqual(list.rowCount, count + 1);
  const [copy] = stored(name.slice(0, 40));
  assertEqual([copy.CampaignTypeID, copy.Created_By], [stored("Lapsed customers")[0].CampaignTypeID, "Pat"]);
  assert(names(list).includes(name.slice(0, 40)));
  assertEqual(window.control("txtDesc").text, stored("Lapsed customers")[0].Campaign_Description, "the choice stays");
}));

check("Delete asks first", () => manage((window, list) => {
  select(list, "MOT due soon");
  const question = "OK to delete the selected Campaign 'MOT due soon'?";
  answer(question, "No");
  window.control("cmdDelete").click();
  assertEqual([lastMessage().icon, lastMessage().defaultButton], ["question", "No"]);
  assertEqual(stored("MOT due soon").length, 1);
  answer(question, "Yes");
  window.control("cmdDelete").click();
  assertEqual(stored("MOT due soon"), []);
  assert(!names(list).includes("MOT due soon"));
  window.control("ssTabCampaigns").selectTab(3);
  const history = window.control("lstHistory");
  assertEqual(history.cell(history.rowCount - 1, "Campaign Name"), "MOT due soon");
}));

check("the keyboard alone edits, deletes and loads", () => {
  onWindow("frmCampaigns", window => {
    const list = window.control("lstCampaigns");
    waitFor(() => focusedControl() === "lstCampaigns");
    press("F2");
    assertEqual(window.control("ssTabCampaigns").currentTab, 1);
    press("Escape");
    answer("OK to delete", "No");
    press("Del");
    press("Down");
    assertEqual(list.selectedIndex, 1);
    press("Return");
  });
  control("cmdLoad").click();
  assertMatch(control("frmMain").caption, / - \[/);
  restart();
});

check("the history shows the last 50 events, and all of them after View All", () => {
  execute("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 70) " +
          "INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID) " +
          "SELECT '2026-03-01 08:05:00', 1, 'Event ' || i, 'Campaign changed', 'Alex' FROM n");
  const all = sql("SELECT COUNT(*) AS n FROM Marketing_Campaigns_History")[0].n;
  manage(window => {
    window.control("ssTabCampaigns").selectTab(3);
    const history = window.control("lstHistory");
    assert(window.control("tabHistory").visibleTexts().includes("Campaign Run and Edit History. Last 50 events showing initially."));
    assertEqual(history.columns, ["ID", "Date", "Campaign Name", "Event", "Username"]);
    assertEqual([history.rowCount, history.selectedIndex], [50, 49]);
    assertEqual([history.cell(49, "Campaign Name"), history.cell(49, "Date")], ["Event 70", "01/03/2026 08:05"]);
    window.control("cmdViewAllEvents").click();
    assertEqual(history.rowCount, all);
    screenshot("history");
  });
});

check("columns and window are kept for the user, and for that user only", () => {
  const place = window => [window.control("lstCampaigns").columnWidth("Campaign Name"), control("frmCampaigns").size];
  let mine = null;
  let initial = null;
  manage((window, list) => {
    initial = place(window);
    list.resizeColumn("Campaign Name", 333);
    control("frmCampaigns").resize(790, 700);
    mine = place(window);
    assertNotEqual(mine, initial);
  });
  restart();
  manage(window => assertEqual(place(window), mine));
  assertNotEqual(registry("user", "Pat\\frmCampaigns", "WinPos"), "");
  restart({user: "Sam"});
  manage(window => {
    assertEqual(place(window)[0], initial[0]);
    assertNotEqual(place(window)[1], mine[1]);
  });
  restart({user: "Pat"});
});

check("a long text is cut in the list alone", () => {
  const text = "First line\n" + "and many words ".repeat(3000);
  execute("UPDATE Marketing_Campaigns SET Campaign_Description = '" + text + "' WHERE Campaign_Name = 'Lapsed customers'");
  manage((window, list) => {
    select(list, "Lapsed customers");
    const shown = list.cell(list.selectedIndex, "Description");
    assertMatch(shown, /^First line and many words/);
    assertEqual(shown.length, 300);
    assertEqual(window.control("txtDesc").text, text);
    window.control("cmdEdit").click();
    assertEqual(window.control("txtDescription").text, text);
    window.control("cmdSave").click();
  });
  assertEqual(stored("Lapsed customers")[0].Campaign_Description, text);
});

check("without campaigns there is nothing to choose, and every button says so", () => {
  execute("DELETE FROM Marketing_Campaigns");
  manage((window, list) => {
    assertEqual(list.rowCount, 0);
    window.control("cmdLoad").click();
    answer("No Campaign selected to Edit!");
    window.control("cmdEdit").click();
    answer("No Campaign selected to copy!");
    window.control("cmdCopy").click();
    assertEqual(lastMessage().icon, "exclamation");
    answer("No Campaign selected to delete!");
    window.control("cmdDelete").click();
  });
  assert(control("fraStart").visible);
});
