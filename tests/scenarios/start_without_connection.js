// Without a connection the wizard opens and says so quietly; every command that needs the database says it once.

const refusal = "There is no connection to the database, so this cannot be done now.\n\n" +
                "Please check that the database server is running, and start the program again.";

function refusedOnce(what, action) {
  clearMessages();
  answer(refusal);
  action();
  assertEqual(messages().map(box => [box.text, box.icon]), [[refusal, "exclamation"]], what);
}

function usesEverything() {
  assertMatch(control("lblNoConnection").text, "There is no connection to the database.");
  assert(control("lblNoConnection").visible);
  assertMatch(control("lblConnection").text, "Not connected to the database");
  refusedOnce("load, on the start panel", () => control("cmdLoad").click());
  assert(control("fraStart").visible);

  clearMessages();
  control("cmdNew").click();
  assertEqual(messages(), [], "a new campaign opens quietly");
  ["Specific Makes", "Based on Reminder Date", "Lapsed Customers", "All Customers"].forEach(query => control("tvQuery").choose(query));
  assertEqual(messages(), []);

  refusedOnce("Next on step 1", () => control("cmdNext0").click());
  assertEqual(currentTab(), 1);
  refusedOnce("save", () => control("cmdSave").click());
  refusedOnce("save, by the menu", () => control("mnuSave").trigger());
  refusedOnce("run", () => control("cmdRun").click());
  refusedOnce("Ctrl+S", () => press("Ctrl+S"));
  clearMessages();
  [2, 3, 4, 5].forEach(tab => selectTab(tab));
  assertEqual(messages(), [], "looking around is quiet");
  selectTab(2);
  assertEqual(control("cmbData1").items, []);
  refusedOnce("Refresh", () => control("cmdApplyFilters").click());
  refusedOnce("Next on step 2", () => control("cmdNext1").click());
  assertEqual(currentTab(), 2);
  selectTab(3);
  refusedOnce("send methods", () => {
    control("cmbSendBy0").choose(1);
    control("cmdSetSendMethods").click();
  });
  onWindow("frmAbout", about => about.close());
  control("mnuAbout").trigger();
  answer("Campaign details may have changed and have not been saved.", "Yes");
  assert(closeWindow());
}

check("the server is away", () => {
  answer("The following error was reported");
  assertEqual(start({reachable: false, registry: {machine: {Login: {Server: "FRONTDESK"}}}}), "running");
  screenshot("no_connection");
  usesEverything();
});

check("the user declined to bring the database online", () => {
  answer("It may not have been configured or initialised yet, or may be offline.", "No");
  assertEqual(start({garage: "none"}), "running");
  assertEqual(lastMessage().text, "The database is not currently available.\n\nIt may not have been configured or initialised yet, " +
    "or may be offline.\n\nDo you want to attempt to bring the database back online?");
  usesEverything();
});
