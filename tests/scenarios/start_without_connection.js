// Without a connection the wizard opens and says so quietly; every command that needs the database says it once.

const refusal = "There is no connection to the database, so this cannot be done now.\n\n" +
                "Please check that the database server is running, and start the program again.";

check("a server that is away is reported with a stop sign", () => {
  const started = () => assertEqual(start({reachable: false, registry: {machine: {Login: {Server: "FRONTDESK"}}}}), "running");
  refused("The following error was reported while attempting connection to the database server.", started, "stop");
  assertMatch(log().join("\n"), /Database Connection Attempt 1: [^]*Database Connection Attempt 2: [^]*Database Connect Error: /);
  assert(control("lblNoConnection").visible);
  assertMatch(shown("lblNoConnection", "lblConnection").join(), /There is no connection to the database\.[^]*Not connected to the database/);
  screenshot("no_connection");
});

check("looking around is quiet, and each command is refused once", () => {
  refused(refusal, () => control("cmdLoad").click());
  assert(control("fraStart").visible);
  clearMessages();
  control("cmdNew").click();
  ["Specific Makes", "Based on Reminder Date", "Lapsed Customers", "All Customers"].forEach(query => control("tvQuery").choose(query));
  [2, 3, 4, 5, 1].forEach(tab => selectTab(tab));
  assertEqual(messages(), []);
  refused(refusal, () => control("cmdNext0").click());
  refused(refusal, () => control("cmdSave").click());
  refused(refusal, () => press("Ctrl+S"));
  refused(refusal, () => control("cmdRun").click());
  assertEqual(currentTab(), 1);
  selectTab(2);
  assertEqual(control("cmbData1").items, []);
  refused(refusal, () => control("cmdApplyFilters").click());
  refused(refusal, () => control("cmdNext1").click());
  selectTab(3);
  control("cmbSendBy0").choose(1);
  refused(refusal, () => control("cmdSetSendMethods").click());
  onWindow("frmAbout", about => about.close());
  control("mnuAbout").trigger();
  answer("Campaign details may have changed and have not been saved.", "Yes");
  assert(closeWindow());
});

check("a database that is not there can be declined", () => {
  answer("The database is not currently available.\n\nIt may not have been configured or initialised yet, or may be offline.\n\n" +
         "Do you want to attempt to bring the database back online?", "No");
  assertEqual(start({garage: "none"}), "running");
  refused(refusal, () => control("cmdLoad").click());
});

check("one that is offline is brought online on request", () => {
  clearMessages();
  start({before: () => {
    takeOffline();
    answer("It may be in the process of being restored, or has not been configured yet, or may be offline.", "Yes");
  }});
  assertEqual([lastMessage().icon, statusTexts(), databaseStatus()], ["question", ["Attempting to bring the database online..."], "ONLINE"]);
  control("cmdNew").click();
  assertEqual(messages().length, 1);
});

check("a program that is older than the database says so, and goes on", () => {
  refused(/^The QBX Marketing & Reporting Module needs to be updated!\n\n[^]*Update Codes: P-6, DB-7$/,
          () => start({before: () => execute("UPDATE _Version SET Marketing_Version = 7")}));
  control("cmdNew").click();
});
