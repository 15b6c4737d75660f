// The splash covers the start; the about box shows the same window with what this computer is connected to.

const unknown = "Database Service may not be installed or discovery is not possible.";

check("the splash stands until the main window is there, and the start is written down", () => {
  const seen = [];
  onPump(() => {
    if (exists("frmAbout") && seen.length === 0) seen.push(...control("frmAbout").visibleTexts());
  });
  assertEqual(start(), "running");
  onPump(null);
  assertEqual(seen[0], "QBX Marketing & Reporting Module");
  assertMatch(seen[1], /^Version: \d/);
  assertEqual([windows(), messages(), ini("Database", "Name")], [["frmMain"], [], "QBXKorvelManager"]);
  assertEqual(events(), [{type: 9, table: 0, key: "MARKETING", details: "Login: Pat on Computer: WORKSHOP-PC", user: "Pat",
                          date: "2026-03-04 10:20:30.000"}]);
});

check("the about box tells version, computer, database and server, and Escape closes it", () => {
  onWindow("frmAbout", about => {
    assertEqual(about.caption, "About QBX Marketing & Reporting Module");
    assertMatch(about.control("lblVersion").text, /^Version: \d+\.\d+(\.\d+)?     \(Database \d+\)$/);
    assertEqual(shown("lblComputer", "lblDatabase", "lblServer"),
                ["This computers name: WORKSHOP-PC", "Database Name: QBXKorvelManager", "Database Server: "]);
    const lines = name => about.control(name).size.height / about.control("lblServer").size.height;
    assert(lines("lblHint") > 1.5, "the hint stands there whole");
    screenshot("about");
    refused(unknown, () => about.control("lblServer").doubleClick(), "information");
    press("Escape");
  });
  control("mnuAbout").trigger();
  assertEqual(windows(), ["frmMain"]);
});

check("a double-click on the server tells of its service and port", () => {
  const key = "SOFTWARE\\Microsoft\\Microsoft SQL Server\\";
  start({services: {"mssql$qbx": "running", mssqlserver: "running"}, registry: {machine: {
    [key + "Instance Names\\SQL"]: {QBX: "MSSQL15.QBX"},
    [key + "MSSQL15.QBX\\MSSQLServer\\SuperSocketNetLib\\Tcp\\IPAll"]: {TcpDynamicPorts: "49170", TcpPort: "1433"}}}});
  onWindow("frmAbout", about => {
    answer("QBX Database Service is installed. TCP Port 49170\n\nService Status: Running");
    about.control("lblServer").doubleClick();
    about.control("cmdOK").click();
  });
  control("mnuAbout").trigger();
});
