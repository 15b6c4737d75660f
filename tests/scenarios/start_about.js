// The lines of the about box and the service information behind its server line.

const unknown = "Database Service may not be installed or discovery is not possible.";

check("the about box tells version, computer, database and server", () => {
  start();
  onWindow("frmAbout", about => {
    assertEqual(about.caption, "About QBX Marketing & Reporting Module");
    assertMatch(about.control("lblVersion").text, /^Version: \d+\.\d+(\.\d+)?     \(Database \d+\)$/);
    assertMatch(about.control("lblComputer").text, /^This computers name: \S+$/);
    assertEqual(about.control("lblDatabase").text, "Database Name: QBXKorvelManager");
    assertEqual(about.control("lblServer").text, "Database Server: ");
    screenshot("about");
    answer(unknown);
    about.control("lblServer").doubleClick();
    assertEqual(lastMessage().icon, "information");
    about.control("cmdOK").click();
  });
  control("mnuAbout").trigger();
});

function serviceInfo(services, instance, ports) {
  const key = "SOFTWARE\\Microsoft\\Microsoft SQL Server\\";
  start({services, registry: {machine: {
    [key + "Instance Names\\SQL"]: {[instance]: "MSSQL15." + instance},
    [key + "MSSQL15." + instance + "\\MSSQLServer\\SuperSocketNetLib\\Tcp\\IPAll"]: ports}}});
  let text = "";
  onWindow("frmAbout", about => {
    answer("Database Service is installed.");
    about.control("lblServer").doubleClick();
    text = lastMessage().text;
    about.close();
  });
  control("mnuAbout").trigger();
  return text;
}

check("the host's own service comes first, with its dynamic port", () => {
  assertEqual(serviceInfo({"mssql$qbx": "running", mssqlserver: "running"}, "QBX", {TcpDynamicPorts: "49170", TcpPort: "1433"}),
              "QBX Database Service is installed. TCP Port 49170\n\nService Status: Running");
});

check("the standard service is named without a label, and a dynamic port of 0 gives way", () => {
  assertEqual(serviceInfo({mssqlserver: "stopped"}, "MSSQLSERVER", {TcpDynamicPorts: "0", TcpPort: "1433"}),
              "Database Service is installed. TCP Port 1433\n\nService Status: Stopped");
});
