// Closing the program: unsaved changes are asked about, and the rows of a campaign that was never saved go with it.

const question = "Campaign details may have changed and have not been saved.\n\nExit QBX Marketing & Reporting Module and lose changes?";
const temporaryRows = () => sql("SELECT COUNT(*) AS n FROM [Campaign Results] WHERE CampaignID < 0")[0].n;

function edit() {
  control("cmdNew").click();
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
}

check("the start panel closes without a question by the cross and by Exit", () => {
  start();
  assert(closeWindow());
  start();
  control("mnuExit").trigger();
  assertEqual(windows(), []);
  assertEqual(messages(), []);
});

check("its own cross asks", () => {
  start();
  const exit = "Exit QBX Marketing & Reporting Module?";
  answer(exit, "No");
  control("frmMain.cmdClose").click();
  assertEqual(lastMessage().icon, "question");
  assertEqual(windows(), ["frmMain"]);
  answer(exit, "Yes");
  control("frmMain.cmdClose").click();
  assertEqual(windows(), []);
});

check("a new campaign in which nothing was chosen asks nothing", () => {
  start();
  clearMessages();
  control("cmdNew").click();
  selectTab(2);
  selectTab(5);
  assert(closeWindow());
  assertEqual(messages(), []);
});

check("unsaved changes are asked about, No being the default; No keeps everything", () => {
  start();
  edit();
  const rows = temporaryRows();
  assert(rows > 0);
  answer(question, "No");
  assert(!closeWindow());
  assertEqual([lastMessage().text, lastMessage().icon, lastMessage().buttons, lastMessage().defaultButton],
              [question, "question", ["Yes", "No"], "No"]);
  assertEqual(temporaryRows(), rows);
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});

check("Yes closes, and takes the temporary rows away", () => {
  answer(question, "Yes");
  control("mnuExit").trigger();
  assertEqual(windows(), []);
  assertEqual(temporaryRows(), 0);
});

check("after a save nothing is asked, and the rows of the campaign stay", () => {
  start();
  clearMessages();
  edit();
  onWindow("frmCampaigns", window => {
    window.control("txtName").setText("Kept");
    window.control("cmdSave").click();
  });
  control("cmdSave").click();
  const rows = sql("SELECT COUNT(*) AS n FROM [Campaign Results]")[0].n;
  clearMessages();
  assert(closeWindow());
  assertEqual(messages(), []);
  assertEqual(sql("SELECT COUNT(*) AS n FROM [Campaign Results]")[0].n, rows);
});

const edits = {
  "a filter": () => { selectTab(2); control("chkFilter1").tick(); },
  "a condition": () => { selectTab(2); control("cmbFilter4").choose(0); },
  "a date": () => { control("tvQuery").choose("Top Customers"); control("dteDate0").setText("01/02/2025"); },
  "the number of records": () => { control("tvQuery").choose("Top Customers"); control("txtCriteria").setText("7"); },
  "the makes": () => { control("tvQuery").choose("Specific Makes"); control("lstMakes").choose([0]); },
  "the reminder": () => { control("tvQuery").choose("Based on Reminder Date"); control("cmbReminder").choose(0); },
};
for (const what of Object.keys(edits)) {
  check("changing " + what + " of a loaded campaign counts as a change", () => {
    start();
    onWindow("frmCampaigns", window => window.control("cmdLoad").click());
    control("cmdLoad").click();
    edits[what]();
    answer(question, "Yes");
    assert(closeWindow());
  });
}

check("a model and a campaign type are not stored, so they ask nothing", () => {
  start({options: {Using_Vrelo: true}});
  onWindow("frmCampaigns", window => window.control("cmdLoad").click());
  control("cmdLoad").click();
  control("cmbType").choose("Promotions");
  selectTab(2);
  control("txtModel").type("golf");
  clearMessages();
  assert(closeWindow());
  assertEqual(messages(), []);
});

check("whoever agrees to quit for a lost connection is asked nothing more, and leaves no rows behind", () => {
  start();
  edit();
  assert(temporaryRows() > 0);
  failProcedure("proc_sel_Makes_all", "general network error");
  answer("OK to quit?", "Yes");
  selectTab(1);
  control("tvQuery").choose("Specific Makes");
  wait(50);
  assertEqual(windows(), []);
  assertEqual(temporaryRows(), 0);
});

check("a command does nothing more once the user agreed to quit, and start-up opens no window", () => {
  start();
  edit();
  control("cmdNext1").click();
  clearMessages();
  [0, 1, 2].forEach(i => control("cmbSendBy" + i).choose(0));
  failProcedure("UPDATE", "general network error");
  answer("OK to quit?", "Yes");
  const flags = calls().length;
  control("cmdSetSendMethods").click();
  wait(50);
  assertEqual(messages().length, 1);
  assertEqual(calls().slice(flags).filter(call => /^UPDATE/.test(call)).length, 1);
  assertEqual(windows(), []);
  clearMessages();
  answer("OK to quit?", "Yes");
  assertEqual(start({before: () => failProcedure("proc_selp__Option", "general network error")}), "stopped");
  assertEqual(messages().length, 1);
});

check("a deletion that fails at the end is reported, and the program closes", () => {
  start();
  edit();
  failProcedure("DELETE", "still in use");
  answer(question, "Yes");
  answer("still in use");
  assert(closeWindow());
});

check("the place of the window is kept", () => {
  start();
  control("frmMain").resize(790, 700);
  const size = control("frmMain").size;
  assert(closeWindow());
  restart();
  assertEqual(control("frmMain").size, size);
});

check("the steps are on record", () => {
  start();
  edit();
  control("cmdNext1").click();
  control("cmdBack2").click();
  assertEqual(currentTab(), 2);
  const clicks = events().filter(event => /^Clicked/.test(event.details));
  assertEqual(clicks.map(event => event.details), ["Clicked: Next(0)", "Clicked: Next(1)", "Clicked: Back(2)"]);
  assertEqual([clicks[0].type, clicks[0].table, clicks[0].key, clicks[0].user], [9, 0, "MARKETING", "Pat"]);
  answer(question, "Yes");
  closeWindow();
});
