// The start panel, the menus, and what opens the wizard.

start();
const fresh = "Lose any changes and start a new campaign?";
const other = "Lose any changes and load an existing campaign?";

check("the start panel stands in front of the wizard", () => {
  assert(control("fraStart").visible && !control("ssTabMain").visible);
  assertEqual(shown("lblWelcome", "Label6", "Label4"), ["Welcome to QBX Marketing & Reporting Module",
    "The reporting features of this module provide you with a way to interrogate your data based on a variety of starting points and " +
    "filters which you can apply. The results can be printed, saved or exported to Excel.",
    "The marketing features of this module provide you with a great way to keep in touch with your customers, and generate more revenue " +
    "for your business."]);
  assertEqual(shown("cmdNew", "cmdLoad", "cmdClose", "cmdSave", "cmdRun"), ["Start a new Report / Campaign", "Load a saved Report / Campaign",
    " X ", "Save Report / Campaign Options", "Run Marketing Campaign"]);
  ["cmdSave", "cmdRun", "mnuSave"].forEach(name => assert(!control(name).enabled, name));
  assertEqual(shown("mnuStart", "mnuLoad", "mnuSave", "mnuExit", "mnuHelp", "mnuAbout"), ["Start a new Report or Campaign...",
    "Load an existing Report or Campaign...", "Save the current Report / Campaign Settings...", "Exit", "Help", "About"]);
  screenshot("start_panel");
});

check("its cross asks, and loading that is given up leaves it", () => {
  answer("Exit QBX Marketing & Reporting Module?", "No");
  control("cmdClose").click();
  assertEqual([lastMessage().icon, lastMessage().buttons, windows()], ["question", ["Yes", "No"], ["frmMain"]]);
  manage(() => {});
  assert(control("fraStart").visible && !control("cmdRun").enabled);
});

check("a new campaign opens the wizard", () => {
  control("cmdNew").click();
  assert(!control("fraStart").visible);
  assertEqual(currentTab(), 1);
  assertEqual(control("ssTabMain").tabs, ["1. Query / Report Starting Point", "2. Data Filtering", "3. Report Results",
                                          "4. Marketing Email and Letter Templates", "5. Process Results"]);
  ["ssTabMain", "cmdSave", "cmdRun", "mnuSave"].forEach(name => assert(control(name).enabled, name));
  assertEqual(control("frmMain").caption, "QBX Marketing & Reporting Module");
  screenshot("step1_no_query");
});

check("starting again asks: No keeps what was typed, Yes starts afresh; what was not touched is left without a question", () => {
  fill({tvQuery: "Top Customers", txtCriteria: "7"});
  control("dteDate0").type("01/02/2026");
  answer(fresh, "No");
  press("Ctrl+N");
  assertEqual([lastMessage().icon, control("txtCriteria").text], ["question", "7"]);
  control("cmdNext0").click();
  assertMatch(control("lblRecords0").text, /^Records found: \d+$/);
  answer(fresh, "Yes");
  control("mnuStart").trigger();
  assertEqual([currentTab(), control("tvQuery").selectedText, control("fraPickStart").visible], [1, "Customer specific Queries", true]);
  selectTab(2);
  assertEqual(shown("dteDate0", "dteDate1", "lblRecords0", "lblRecords1"), ["", "", "Records found:", "Records found:"]);
  clearMessages();
  press("Ctrl+N");
  assertEqual(messages(), []);
});

check("loading asks first; a loaded campaign is shown with its name and query", () => {
  control("tvQuery").choose("All Vehicles");
  answer(other, "No");
  press("Ctrl+O");
  assertEqual([lastMessage().icon, lastMessage().defaultButton], ["question", "No"]);
  load("MOT due");
  assertEqual(control("frmMain").caption, "QBX Marketing & Reporting Module - [MOT due]");
  assertEqual([currentTab(), control("tvQuery").selectedText, control("cmbReminder").selectedText], [1, "Based on Reminder Date", "MOT Reminder"]);
  assertEqual(shown("dteDate0", "dteDate1"), ["04/03/2026", "04/05/2026"]);
});

check("a campaign stored with a query that is none shows none, and looking at it changes nothing: Exit asks nothing", () => {
  execute("UPDATE Marketing_Campaigns SET CampaignTypeID = 11 WHERE Campaign_Name = 'MOT due'");
  load("MOT due");
  control("cmdSave").focus();
  control("tvQuery").focus();
  assertEqual([control("tvQuery").selectedIndex, control("fraPickStart").visible], [-1, true]);
  assertEqual(control("txtQueryDesc").text, "Please select a Query to see the description.");
  control("mnuExit").trigger();
  assertEqual(windows(), []);
});
