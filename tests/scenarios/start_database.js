// Connecting at start: a database that is offline, a server that is away, a program that does not fit.

check("a database that is offline is brought online on request", () => {
  start({before: () => { takeOffline(); answer("The database is not currently available.", "Yes"); }});
  assertEqual(lastMessage().text, "The database is not currently available.\n\nIt may be in the process of being restored, or has not " +
    "been configured yet, or may be offline.\n\nDo you want to attempt to bring the database back online?");
  assertEqual(lastMessage().icon, "question");
  assertEqual(statusTexts(), ["Attempting to bring the database online..."]);
  assertEqual(databaseStatus(), "ONLINE");
  control("cmdNew").click();
  assertEqual(messages().length, 1);
});

check("a server on another computer that does not answer is reported with a stop sign", () => {
  clearMessages();
  answer("The following error was reported while attempting connection to the database server.");
  assertEqual(start({reachable: false, registry: {machine: {Login: {Server: "FRONTDESK"}}}}), "running");
  assertEqual(lastMessage().icon, "stop");
  assertMatch(log().join("\n"), /Database Connection Attempt 1: [^]*Database Connection Attempt 2: [^]*Database Connect Error: /);
});

check("a program that is older or newer than the database says so, and goes on", () => {
  clearMessages();
  answer("needs to be updated!");
  start({before: () => execute("UPDATE _Version SET Marketing_Version = 7")});
  assertMatch(lastMessage().text, /^The QBX Marketing & Reporting Module needs to be updated!\n\n[^]*Update Codes: P-6, DB-7$/);
  assertEqual(lastMessage().icon, "exclamation");
  control("cmdNew").click();
});
