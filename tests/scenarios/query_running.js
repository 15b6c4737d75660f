// While a query runs: the status box, what is disabled, cancelling, and failures.

start({options: {Only_Send_Comms_When_Opted_In: true}});
walkTo(1);
const rows = () => sql("SELECT RecordID FROM [Campaign Results] ORDER BY 1").map(row => row.RecordID);
function idle(text) {
  assert(!busy(), text + ": the pointer is normal");
  assertEqual(statusBox(), null, text);
  ["cmdSave", "cmdRun", "cmdNext" + (currentTab() - 1), "mnuSave", "mnuStart"].forEach(name => assert(control(name).enabled, text + ": " + name));
}

check("the status box says what is done, and what is left behind is idle", () => {
  clearStatusTexts();
  control("cmdNext0").click();
  assertEqual(statusTexts(), ["Processing the Query...", "Selecting the records..."]);
  assertEqual(currentTab(), 2);
  idle("after step 1");
  clearStatusTexts();
  control("cmdNext1").click();
  assertEqual(statusTexts(), ["Processing the Query..."]);
  idle("after step 2");
});

const slowly = (action, meanwhile) => {
  selectTab(2);
  slowDatabase(200);
  during(action, () => statusBox() !== null && (meanwhile(), true));
  slowDatabase(0);
  assertEqual(currentTab(), 3);
  idle("after a slow query");
};

check("commands are off while it runs, and the window does not close; a right click on its text closes the status box", () => {
  slowly(() => control("cmdNext1").click(), () => {
    assertEqual([statusBox(), busy()], [{text: "Processing the Query...", cancel: true}, true]);
    ["cmdNext1", "cmdBack1", "cmdApplyFilters", "cmdSave", "cmdRun", "mnuSave", "mnuStart", "mnuLoad", "mnuExit", "mnuAbout"]
      .forEach(name => assert(!control("frmMain." + name).enabled, name));
    assert(!closeWindow() && windows().includes("frmProcessing"));
    screenshot("query_running", "frmMain");
    screenshot("status_box", "frmProcessing");
  });
  slowly(() => control("cmdNext1").click(), () => {
    control("frmProcessing.lblMessage").rightClick();
    assertEqual([statusBox(), busy()], [null, false]);
  });
});

check("Cancel leaves the rows as they were and the wizard on its step, which is not complete", () => {
  for (const [tab, button] of [[1, "cmdNext0"], [2, "cmdNext1"], [2, "cmdApplyFilters"]]) {
    selectTab(tab);
    const before = [rows(), currentTab(), ...shown("lblRecords0", "lblRecords1")].slice(0, tab === 2 ? 4 : 2);
    cancelled(() => control(button).click());
    assertEqual([rows(), currentTab(), ...shown("lblRecords0", "lblRecords1")].slice(0, tab === 2 ? 4 : 2), before, button);
    idle(button);
  }
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  cancelled(() => walkTo(2, "All Vehicles"));
  refused("Step 1 has not been completed.", () => control("cmdRun").click());
});

check("a procedure that fails, or is missing, is reported, and nothing is lost", () => {
  walkTo(3, "All Vehicles");
  const fails = description => {
    selectTab(2);
    const before = rows();
    refused(description, () => control("cmdNext1").click());
    assertMatch(lastMessage().text, "An unexpected error occured.");
    assertEqual([lastMessage().caption, currentTab(), rows()], ["Error", 2, before]);
    idle(description);
    assertMatch(log().join("\n"), new RegExp("ERROR: [^]*" + description + "[^]*\\(in ProcessQuery\\)"));
    assert(events().some(event => event.type === 6 && event.details.includes(description)));
  };
  failProcedure("proc_Marketing_AddAllVehicles", "The tables are being rebuilt");
  fails("The tables are being rebuilt");
  failProcedure("proc_Marketing_AddAllVehicles", "");
  dropProcedure("proc_Marketing_AddAllVehicles");
  fails("proc_Marketing_AddAllVehicles");
  restoreProcedure("proc_Marketing_AddAllVehicles");
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});
