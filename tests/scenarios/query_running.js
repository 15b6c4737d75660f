// While a query runs: the status box, what is disabled, cancelling, and failures.

start({options: {Only_Send_Comms_When_Opted_In: true}});
control("cmdNew").click();
control("tvQuery").choose("All Customers");

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

check("commands are off while it runs, and the window does not close", () => {
  selectTab(2);
  slowDatabase(200);
  during(() => control("cmdNext1").click(), () => {
    if (statusBox() === null) return false;
    assertEqual(statusBox(), {text: "Processing the Query...", cancel: true});
    assert(busy());
    ["cmdNext1", "cmdBack1", "cmdApplyFilters", "cmdSave", "cmdRun", "mnuSave", "mnuStart", "mnuLoad", "mnuExit", "mnuAbout"]
      .forEach(name => assert(!control("frmMain." + name).enabled, name));
    assert(!closeWindow());
    assert(windows().includes("frmProcessing"));
    screenshot("query_running", "frmMain");
    screenshot("status_box", "frmProcessing");
    return true;
  });
  slowDatabase(0);
  assertEqual(currentTab(), 3);
  idle("after a slow query");
});

check("a right click on its text closes the status box; the query goes on", () => {
  selectTab(2);
  slowDatabase(200);
  during(() => control("cmdNext1").click(), () => {
    if (statusBox() === null) return false;
    control("frmProcessing.lblMessage").rightClick();
    assertEqual(statusBox(), null);
    assert(!busy());
    return true;
  });
  slowDatabase(0);
  assertEqual(currentTab(), 3);
  idle("after a status box that was closed");
});

check("Cancel leaves the rows as they were and the wizard on its step", () => {
  [[1, "cmdNext0"], [2, "cmdNext1"], [2, "cmdApplyFilters"]].forEach(([tab, button]) => {
    selectTab(tab);
    const before = rows();
    const counts = tab === 2 ? [control("lblRecords0").text, control("lblRecords1").text] : null;
    slowDatabase(300);
    during(() => control(button).click(), () => {
      if (statusBox() === null) return false;
      cancelStatus();
      return true;
    });
    slowDatabase(0);
    assertEqual(rows(), before, button);
    assertEqual(currentTab(), tab, button);
    if (counts) assertEqual([control("lblRecords0").text, control("lblRecords1").text], counts);
    idle(button);
  });
});

check("a step whose query was cancelled is not complete", () => {
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  control("tvQuery").choose("All Vehicles");
  slowDatabase(300);
  during(() => control("cmdNext0").click(), () => {
    if (statusBox() === null) return false;
    cancelStatus();
    return true;
  });
  slowDatabase(0);
  answer("Step 1 has not been completed.");
  control("cmdRun").click();
});

function failing(description) {
  selectTab(2);
  const before = rows();
  clearMessages();
  answer("An unexpected error occured.");
  control("cmdNext1").click();
  assertEqual(messages().length, 1);
  assertMatch(lastMessage().text, description);
  assertEqual([lastMessage().icon, lastMessage().caption], ["exclamation", "Error"]);
  assertEqual(currentTab(), 2);
  assertEqual(rows(), before);
  idle(description);
  assertMatch(log().join("\n"), new RegExp("ERROR: [^]*" + description + "[^]*\\(in ProcessQuery\\)"));
  assert(events().some(event => event.type === 6 && event.details.includes(description)));
}

check("a procedure that fails, or is missing, is reported, and nothing is lost", () => {
  control("cmdNext0").click();
  control("cmdNext1").click();
  failProcedure("proc_Marketing_AddAllVehicles", "The tables are being rebuilt.");
  failing("The tables are being rebuilt");
  failProcedure("proc_Marketing_AddAllVehicles", "");
  dropProcedure("proc_Marketing_AddAllVehicles");
  failing("proc_Marketing_AddAllVehicles");
  restoreProcedure("proc_Marketing_AddAllVehicles");
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});

check("a step whose query failed is not complete", () => {
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  control("tvQuery").choose("All Customers");
  failProcedure("proc_Marketing_AddAllCustomers", "Out of space.");
  answer("An unexpected error occured.\n\nOut of space.");
  control("cmdNext0").click();
  assertEqual(currentTab(), 1);
  idle("step 1");
  answer("Step 1 has not been completed.");
  control("cmdRun").click();
});
