// The start panel, the menus, and what opens the wizard.

start();

check("the start panel stands in front of the wizard", () => {
  assert(control("fraStart").visible);
  assertEqual(control("lblWelcome").text, "Welcome to QBX Marketing & Reporting Module");
  assertEqual(control("Label6").text, "The reporting features of this module provide you with a way to interrogate your data based on a " +
    "variety of starting points and filters which you can apply. The results can be printed, saved or exported to Excel.");
  assertEqual(control("Label4").text, "The marketing features of this module provide you with a great way to keep in touch with your " +
    "customers, and generate more revenue for your business.");
  assertEqual(["cmdNew", "cmdLoad", "cmdClose", "cmdSave", "cmdRun"].map(name => control(name).text), ["Start a new Report / Campaign",
    "Load a saved Report / Campaign", " X ", "Save Report / Campaign Options", "Run Marketing Campaign"]);
  ["cmdSave", "cmdRun", "mnuSave"].forEach(name => assert(!control(name).enabled, name));
  assert(!control("ssTabMain").visible);
  screenshot("start_panel");
});

check("menus", () => {
  assertEqual(["mnuStart", "mnuLoad", "mnuSave", "mnuExit", "mnuHelp", "mnuAbout"].map(name => control(name).text), [
    "Start a new Report or Campaign...", "Load an existing Report or Campaign...", "Save the current Report / Campaign Settings...",
    "Exit", "Help", "About"]);
  assertEqual(["mnuStart", "mnuLoad", "mnuSave"].map(name => control(name).shortcut), ["Ctrl+N", "Ctrl+O", "Ctrl+S"]);
});

check("the cross of the panel asks, and No stays", () => {
  answer("Exit QBX Marketing & Reporting Module?", "No");
  control("cmdClose").click();
  assertEqual(lastMessage().icon, "question");
  assertEqual(lastMessage().buttons, ["Yes", "No"]);
  assertEqual(windows(), ["frmMain"]);
});

check("loading that is given up leaves the panel", () => {
  onWindow("frmCampaigns", manager => manager.close());
  control("cmdLoad").click();
  assert(control("fraStart").visible);
  assert(!control("cmdRun").enabled);
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

check("starting again asks, and No keeps what was typed", () => {
  control("tvQuery").choose("Top Customers");
  control("txtCriteria").setText("7");
  control("dteDate0").type("01/02/2026");
  answer("Lose any changes and start a new campaign?", "No");
  press("Ctrl+N");
  assertEqual(lastMessage().icon, "question");
  assertEqual(control("txtCriteria").text, "7");
});

check("Yes starts afresh: no dates, the first group, first step, counts without numbers", () => {
  control("cmdNext0").click();
  assertMatch(control("lblRecords0").text, /^Records found: \d+$/);
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  assertEqual(currentTab(), 1);
  assertEqual(control("tvQuery").selectedText, "Customer specific Queries");
  assert(control("fraPickStart").visible);
  assertEqual([control("dteDate0").text, control("dteDate1").text], ["", ""]);
  selectTab(2);
  assertEqual([control("lblRecords0").text, control("lblRecords1").text], ["Records found:", "Records found:"]);
});

check("what was not touched is left without a question", () => {
  clearMessages();
  press("Ctrl+N");
  assertEqual(messages(), []);
});

check("loading asks first; a loaded campaign is shown with its name and query", () => {
  control("tvQuery").choose("All Vehicles");
  answer("Lose any changes and load an existing campaign?", "No");
  control("mnuLoad").trigger();
  assertEqual([lastMessage().icon, lastMessage().defaultButton], ["question", "No"]);
  answer("Lose any changes and load an existing campaign?", "Yes");
  onWindow("frmCampaigns", manager => {
    manager.control("lstCampaigns").choose("MOT due");
    manager.control("cmdLoad").click();
  });
  press("Ctrl+O");
  assertEqual(control("frmMain").caption, "QBX Marketing & Reporting Module - [MOT due]");
  assertEqual(currentTab(), 1);
  assertEqual(control("tvQuery").selectedText, "Based on Reminder Date");
  assertEqual(control("cmbReminder").selectedText, "MOT Reminder");
  assertEqual([control("dteDate0").text, control("dteDate1").text], ["04/03/2026", "04/05/2026"]);
});

check("loading from the start panel opens the wizard", () => {
  start();
  onWindow("frmCampaigns", manager => {
    manager.control("lstCampaigns").choose("Audi, BMW and Volkswagen");
    manager.control("cmdLoad").click();
  });
  control("cmdLoad").click();
  assert(!control("fraStart").visible);
  assertEqual(control("tvQuery").selectedText, "Specific Makes");
  assertEqual(control("txtMakes").text, "Audi, BMW, Volkswagen");
});

[0, 11].forEach(query => check("a campaign stored with query " + query + " shows none, and looking at it changes nothing", () => {
  execute("UPDATE Marketing_Campaigns SET CampaignTypeID = " + query + " WHERE Campaign_Name = 'MOT due'");
  answer("Lose any changes and load an existing campaign?", "Yes");
  onWindow("frmCampaigns", manager => {
    manager.control("lstCampaigns").choose("MOT due");
    manager.control("cmdLoad").click();
  });
  control("mnuLoad").trigger();
  control("cmdSave").focus();
  control("tvQuery").focus();
  assertEqual(control("tvQuery").selectedIndex, -1);
  assertEqual(control("txtQueryDesc").text, "Please select a Query to see the description.");
  assert(control("fraPickStart").visible);
}));

check("Exit closes without a question when nothing changed", () => {
  control("mnuExit").trigger();
  assertEqual(windows(), []);
});

check("the cross of the panel, answered Yes, ends the program", () => {
  start();
  answer("Exit QBX Marketing & Reporting Module?", "Yes");
  control("cmdClose").click();
  assertEqual(windows(), []);
});
