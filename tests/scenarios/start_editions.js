// Which edition's names hold, by the host's program files, the INI file and the switches.

const cases = {
  "boat, by its file": {edition: "boat", database: "QBXMarnexManager"},
  "boat, by the edition code of the INI file": {ini: {App: {Name: "mx"}}, database: "QBXMarnexManager"},
  "the garage's own file wins over the others": {edition: "boat", files: ["QBXHOVLIN.EXE", "KORVEL.EXE"], database: "QBXKorvelManager"},
};
for (const name of Object.keys(cases)) {
  check(name, () => {
    assertEqual(start(Object.assign({garage: "empty"}, cases[name])), "running");
    assertEqual(ini("Database", "Name"), cases[name].database);
    assertMatch(control("lblConnection").text, cases[name].database);
  });
}

check("/database: and /instance: pick another database and another place in the registry", () => {
  const database = {machine: {"": {Database: "Elsewhere"}}};
  start({garage: "empty", registry: database, commandLine: '/userid:"Jo Brown" /database:North Branch /instance:second'});
  assertEqual([ini("Database", "Name"), ini("App", "Instance")], ["QBXKorvelManager_North", "SECOND"]);
  assertEqual(events()[0].details, "Login: Jo Brown on Computer: WORKSHOP-PC");
  closeWindow();
  assertNotEqual(registry("user", "SOFTWARE\\Korvel Manager SECOND\\Jo Brown\\frmMain", "WinPos"), "");
  start({garage: "empty", database: "Elsewhere", registry: database});
  assertMatch(control("lblConnection").text, "Elsewhere");
});
