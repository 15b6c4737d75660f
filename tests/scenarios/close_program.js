// Closing the program: unsaved changes are asked about, and the rows of a campaign that was never saved go with it.

const question = "Campaign details may have changed and have not been saved.\n\nExit QBX Marketing & Reporting Module and lose changes?";
const rows = "[Campaign Results] WHERE CampaignID < 0";
const quietly = () => {
  clearMessages();
  assert(closeWindow());
  assertEqual(messages(), []);
};

check("the start panel closes without a question by the window's cross; its own cross asks", () => {
  start();
  quietly();
  restart();
  const exit = "Exit QBX Marketing & Reporting Module?";
  answer(exit, "No");
  control("frmMain.cmdClose").click();
  assertEqual([lastMessage().icon, windows()], ["question", ["frmMain"]]);
  answer(exit, "Yes");
  control("frmMain.cmdClose").click();
  assertEqual(windows(), []);
});

check("a new campaign in which nothing was chosen asks nothing", () => {
  restart();
  control("cmdNew").click();
  selectTab(2);
  selectTab(5);
  quietly();
});

check("unsaved changes are asked about, No being the default and keeping everything; Yes closes, and takes the temporary rows away", () => {
  restart();
  walkTo(2);
  const before = count(rows);
  assert(before > 0);
  answer(question, "No");
  assert(!closeWindow());
  assertEqual([lastMessage().icon, lastMessage().buttons, lastMessage().defaultButton], ["question", ["Yes", "No"], "No"]);
  assertEqual(count(rows), before);
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
  answer(question, "Yes");
  control("mnuExit").trigger();
  assertEqual([windows(), count(rows)], [[], 0]);
});

check("after a save nothing is asked, and the rows of the campaign stay", () => {
  restart();
  walkTo(2);
  const before = count("[Campaign Results]");
  saveAs("Kept");
  quietly();
  assertEqual(count("[Campaign Results]"), before);
});

const edits = {
  "a filter": () => { selectTab(2); control("chkFilter1").tick(); },
  "a condition": () => { selectTab(2); control("cmbFilter4").choose(0); },
  "a date": () => { control("tvQuery").choose("Top Customers"); control("dteDate0").setText("01/02/2025"); },
  "the number of records": () => { control("tvQuery").choose("Top Customers"); control("txtCriteria").setText("7"); },
  "the makes": () => { control("tvQuery").choose("Specific Makes"); control("lstMakes").choose([0]); },
  "the reminder": () => { control("tvQuery").choose("Based on Reminder Date"); control("cmbReminder").choose(0); },
};
check("each edit of a loaded campaign counts as a change", () => Object.keys(edits).forEach(what => {
  restart();
  load(0);
  edits[what]();
  clearMessages();
  answer(question, "Yes");
  assert(closeWindow());
  assertEqual(messages().length, 1, what);
}));

check("a model and a campaign type are not stored, so they ask nothing", () => {
  start({options: {Using_Vrelo: true}});
  load(0);
  control("cmbType").choose("Promotions");
  selectTab(2);
  control("txtModel").type("golf");
  quietly();
});

check("whoever agrees to quit for a lost connection is asked nothing more, and leaves no rows behind", () => {
  start();
  walkTo(2);
  assert(count(rows) > 0);
  failProcedure("proc_sel_Makes_all", "general network error");
  answer("OK to quit?", "Yes");
  selectTab(1);
  control("tvQuery").choose("Specific Makes");
  wait(50);
  assertEqual([windows(), count(rows)], [[], 0]);
});

check("a command does nothing more once the user agreed to quit, and start-up opens no window", () => {
  start();
  walkTo(3);
  [0, 1, 2].forEach(i => control("cmbSendBy" + i).choose(0));
  failProcedure("UPDATE", "general network error");
  clearMessages();
  answer("OK to quit?", "Yes");
  const flags = calls().length;
  control("cmdSetSendMethods").click();
  wait(50);
  assertEqual([messages().length, windows(), calls().slice(flags).filter(call => /^UPDATE/.test(call)).length], [1, [], 1]);
  clearMessages();
  answer("OK to quit?", "Yes");
  assertEqual(start({before: () => failProcedure("proc_selp__Option", "general network error")}), "stopped");
  assertEqual(messages().length, 1);
});

check("a deletion that fails at the end is reported, and the program closes", () => {
  start();
  walkTo(2);
  answer(question, "Yes");
  failing("DELETE", "still in use", () => assert(closeWindow()));
});
