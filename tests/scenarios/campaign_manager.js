// The campaign manager: editing, copying, deleting, the history, and what it keeps for each user.

const names = list => list.items.map((_, row) => list.cell(row, "Campaign Name"));
const stored = name => sql("SELECT * FROM Marketing_Campaigns WHERE Campaign_Name = '" + name + "'");
const buttons = window => ["cmdLoad", "cmdEdit", "cmdCopy", "cmdDelete"].filter(name => window.control(name).enabled).length;

start();

check("Edit changes name and description of the chosen campaign; the history tells of it", () => manage((window, list) => {
  list.choose("MOT due");
  assertEqual(shown("txtDesc", "lblCreatedBy"), ["Vehicles whose MOT is due within the next two months.", "Created By: manager"]);
  assert(window.control("txtDesc").readOnly);
  assertEqual(window.control("cmdEdit").toolTip, "Edit Name or Description");
  window.control("cmdEdit").click();
  const tabs = window.control("ssTabCampaigns");
  assertEqual([tabs.currentTab, ...shown("txtName", "txtDescription")], [1, "MOT due", window.control("txtDesc").text]);
  window.control("txtName").setText(" ");
  refused("Campaign Name is not valid.", () => window.control("cmdSave").click());
  assertEqual(tabs.currentTab, 1);
  fill({txtName: "MOT due soon", txtDescription: "Another text"});
  window.control("cmdSave").click();
  assertEqual([tabs.currentTab, tabs.tabEnabled(1), window.control("txtDesc").text], [2, false, "Another text"]);
  assert(names(list).includes("MOT due soon") && !names(list).includes("MOT due"));
  const [record] = stored("MOT due soon");
  assertEqual([record.Campaign_Description, record.CampaignTypeID], ["Another text", 10]);
  tabs.selectTab(3);
  const history = window.control("lstHistory");
  const last = history.rowCount - 1;
  assertEqual([history.cell(last, "Campaign Name"), history.cell(last, "Username"), history.selectedIndex], ["MOT due soon", "Pat", last]);
}));

check("Cancel, or Esc, gives an edit up; the window stays for another choice", () => manage((window, list) => {
  for (const giveUp of [() => window.control("cmdCancel").click(), () => window.control("txtName").press("Escape")]) {
    list.choose("Lapsed customers");
    window.control("cmdEdit").click();
    window.control("txtName").setText("Given up");
    giveUp();
    assertEqual([window.control("ssTabCampaigns").currentTab, window.control("ssTabCampaigns").tabEnabled(1)], [2, false]);
  }
  assertEqual(stored("Given up"), []);
}));

check("during an edit the other buttons wait, and closing asks before what was typed is lost", () => {
  const question = "The Name or Description has been changed and not been saved.\n\nClose and lose the changes?";
  manage((window, list) => {
    list.choose("Lapsed customers");
    window.control("cmdEdit").click();
    window.control("txtName").setText("Typed at length");
    window.control("ssTabCampaigns").selectTab(2);
    assertEqual(buttons(window), 0);
    list.doubleClickCell(0, "Campaign Name");
    answer(question, "No");
    window.control("cmdClose").click();
    assertEqual([window.control("ssTabCampaigns").currentTab, window.control("txtName").text], [1, "Typed at length"]);
    window.control("cmdCancel").click();
    assertEqual(buttons(window), 4);
    window.control("cmdEdit").click();
    window.control("txtDescription").setText("Typed at length");
    answer(question, "Yes");
    window.control("cmdClose").click();
  });
  assertEqual(count("Marketing_Campaigns WHERE 'Typed at length' IN (Campaign_Name, Campaign_Description)"), 0);
});

check("Copy asks for a name, of which 40 characters are taken; none copies nothing", () => manage((window, list) => {
  const [rows, original] = [list.rowCount, stored("Lapsed customers")[0]];
  const copy = () => window.control("cmdCopy").click();
  list.choose("Lapsed customers");
  for (const none of ["", null]) {
    answerInput(none, "Enter name for the new campaign:");
    copy();
  }
  assertEqual([inputBoxes()[0].caption, inputBoxes()[0].text], ["Copy Campaign", ""]);
  answerInput("LAPSED customers ");
  answer("There is another campaign named 'LAPSED customers'.", "No");
  copy();
  assertEqual([list.rowCount, lastMessage().defaultButton], [rows, "No"]);
  const name = "A name of exactly forty-one characters !X";
  answerInput(name);
  copy();
  const [made] = stored(name.slice(0, 40));
  assertEqual([list.rowCount, made.CampaignTypeID, made.Created_By], [rows + 1, original.CampaignTypeID, "Pat"]);
  assert(names(list).includes(name.slice(0, 40)));
  assertEqual(window.control("txtDesc").text, original.Campaign_Description, "the choice stays");
}));

check("Delete asks first", () => manage((window, list) => {
  list.choose("MOT due soon");
  for (const [reply, left] of [["No", 1], ["Yes", 0]]) {
    answer("OK to delete the selected Campaign 'MOT due soon'?", reply);
    window.control("cmdDelete").click();
    assertEqual([lastMessage().icon, lastMessage().defaultButton, stored("MOT due soon").length], ["question", "No", left]);
  }
  assert(!names(list).includes("MOT due soon"));
}));

check("the keyboard alone edits, deletes and loads", () => {
  onWindow("frmCampaigns", window => {
    waitFor(() => focusedControl() === "lstCampaigns");
    press("F2");
    assertEqual(window.control("ssTabCampaigns").currentTab, 1);
    press("Escape");
    answer("OK to delete", "No");
    press("Del");
    press("Down");
    assertEqual(window.control("lstCampaigns").selectedIndex, 1);
    press("Return");
  });
  control("cmdLoad").click();
  assertMatch(control("frmMain").caption, / - \[/);
  restart();
});

check("the history shows the last 50 events, and all of them after View All", () => {
  execute("INSERT INTO Marketing_Campaigns_History (Record_Date, CampaignID, Campaign_Name, Event, UserID) VALUES " +
          Array.from({length: 70}, (_, i) => "('2026-03-01 08:05:00', 1, 'Event " + (i + 1) + "', 'Campaign changed', 'Alex')").join(", "));
  manage(window => {
    window.control("ssTabCampaigns").selectTab(3);
    const history = window.control("lstHistory");
    assert(window.control("tabHistory").visibleTexts().includes("Campaign Run and Edit History. Last 50 events showing initially."));
    assertEqual(history.columns, ["ID", "Date", "Campaign Name", "Event", "Username"]);
    assertEqual([history.rowCount, history.selectedIndex, history.cell(49, "Campaign Name"), history.cell(49, "Date")],
                [50, 49, "Event 70", "01/03/2026 08:05"]);
    window.control("cmdViewAllEvents").click();
    assertEqual(history.rowCount, count("Marketing_Campaigns_History"));
    screenshot("history");
  });
});

check("columns and window are kept for the user, and for that user only", () => {
  const place = list => [list.columnWidth("Campaign Name"), control("frmCampaigns").size];
  let [initial, mine] = [null, null];
  manage((window, list) => {
    initial = place(list);
    list.resizeColumn("Campaign Name", 333);
    control("frmCampaigns").resize(790, 700);
    mine = place(list);
    assertNotEqual(mine, initial);
  });
  restart();
  manage((window, list) => assertEqual(place(list), mine));
  restart({user: "Sam"});
  manage((window, list) => assert(place(list)[0] === initial[0] && place(list)[1].height !== mine[1].height));
  restart({user: "Pat"});
});

check("a long text is cut in the list alone", () => {
  const text = "First line\n" + "and many words ".repeat(3000);
  execute("UPDATE Marketing_Campaigns SET Campaign_Description = '" + text + "' WHERE Campaign_Name = 'Lapsed customers'");
  manage((window, list) => {
    list.choose("Lapsed customers");
    const cut = list.cell(list.selectedIndex, "Description");
    assertMatch(cut, /^First line and many words/);
    assertEqual([cut.length, window.control("txtDesc").text], [300, text]);
    click("cmdEdit", "cmdSave");
  });
  assertEqual(stored("Lapsed customers")[0].Campaign_Description, text);
});

check("without campaigns there is nothing to choose, and every button says so", () => {
  execute("DELETE FROM Marketing_Campaigns");
  manage((window, list) => {
    assertEqual(list.rowCount, 0);
    window.control("cmdLoad").click();
    refused("No Campaign selected to Edit!", () => window.control("cmdEdit").click());
    refused("No Campaign selected to copy!", () => window.control("cmdCopy").click());
    refused("No Campaign selected to delete!", () => window.control("cmdDelete").click());
  });
  assert(control("fraStart").visible);
});
