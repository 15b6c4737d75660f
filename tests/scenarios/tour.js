// Walks past every page and window and takes a picture of each: with --screenshots these are the pictures of the
// README, and a look at them shows what a change did to the windows.

start({garage: {customers: 1500, seed: 3}});
screenshot("start");

check("step 1 shows the options of each kind of query", () => {
  control("cmdNew").click();
  for (const [query, picture] of [["Lapsed Customers", "step1-lapsed"], ["Top Customers", "step1-top"], ["Specific Makes", "step1-makes"]]) {
    control("tvQuery").choose(query);
    if (query === "Specific Makes") control("lstMakes").choose(["Audi", "Ford"]);
    screenshot(picture);
  }
  fill({tvQuery: "Based on Reminder Date", cmbReminder: 0, dteDate0: "01/03/2026", dteDate1: "30/04/2026"});
  screenshot("step1-reminder");
  control("cmdNext0").click();
  assertEqual(currentTab(), 2);
});

check("steps 2 and 3 narrow them, and decide who gets what", () => {
  fill({chkFilter4: true, cmbFilter4: "Between", txtYear0: "2010", txtYear1: "2020"});
  control("cmdApplyFilters").click();
  screenshot("step2");
  control("cmdNext1").click();
  fill({cmbSendBy0: 0, cmbSendBy1: 0});
  control("cmdSetSendMethods").click();
  control("dbgData").clickHeading("Lastname").clickCell(3, "Send_SMS");
  screenshot("step3");
  control("cmdNext2").click();
  assertEqual(currentTab(), 4);
});

check("steps 4 and 5 stand", () => {
  for (const page of ["Email", "Text Message", "Examples"]) {
    control("ssTabLetters").selectTab(page);
    screenshot("step4-" + page.split(" ")[0].toLowerCase());
  }
  selectTab(5);
  assertMatch(control("lblSMS0").text, /^SMS's to Send: [1-9]/);
  screenshot("step5");
  control("cmdCopyChart").click();
  assertMatch(clipboard(), /^[0-9]+ rows\. Text [0-9]+, .*Left out: Opted out [0-9]+/);
});

check("a sample campaign shows its letter and its e-mail, ready to read", () => {
  load("Lapsed customers");
  selectTab(4);
  control("ssTabLetters").selectTab("Printed Letter");
  onWindow("frmReportView", window => {
    assertEqual(waitFor(() => window.control("lblPages").text === "of 1"), true);
    window.control("cmbZoom").choose("Width");
    screenshot("letter");
    window.control("cmdClose").click();
  });
  control("cmdPreview").click();
  control("ssTabLetters").selectTab("Email");
  control("cmdTestEmail0").click();
  screenshot("email");
});

check("the campaign manager and the about box open and close", () => {
  saveAs("MOT due, spring");
  assertMatch(control("frmMain").caption, "[MOT due, spring]");
  manage(window => {
    screenshot("load");
    window.control("ssTabCampaigns").selectTab(3);
    screenshot("history");
  });
  onWindow("frmAbout", about => screenshot("about") || about.close());
  control("mnuAbout").trigger();
});
