// Which edition's names hold, by the host's program files, the INI file and the switches.

const cases = [
  {edition: "garage", database: "QBXKorvelManager"},
  {edition: "vehicleSales", database: "QBXDastraManager"},
  {edition: "truck", database: "QBXHovlinManager"},
  {edition: "boat", database: "QBXMarnexManager"},
  {edition: "parts", database: "QBXTessorManager"},
  {edition: "commercialVehicle", database: "QBXWendalManager"},
  {ini: {App: {Name: "mx"}}, database: "QBXMarnexManager", note: "by the edition code of the INI file"},
  {edition: "boat", files: ["QBXHOVLIN.EXE"], database: "QBXHovlinManager", note: "truck wins over boat"},
  {edition: "boat", files: ["QBXHOVLIN.EXE", "KORVEL.EXE"], database: "QBXKorvelManager", note: "the garage's own file wins over both"},
];
cases.forEach(one => check((one.edition || "garage") + (one.note ? ", " + one.note : ""), () => {
  const options = Object.assign({garage: "empty"}, one);
  delete options.note;
  assertEqual(start(options), "running");
  assertEqual(ini("Database", "Name"), one.database);
  assertMatch(control("lblConnection").text, one.database);
}));

check("/database: and /instance: pick another database and another place in the registry", () => {
  assertEqual(start({garage: "empty", commandLine: '/userid:"Jo Brown" /database:North Branch /instance:second'}), "running");
  assertEqual(ini("Database", "Name"), "QBXKorvelManager_North");
  assertEqual(ini("App", "Instance"), "SECOND");
  assertEqual(events()[0].details, "Login: Jo Brown on Computer: WORKSHOP-PC");
  closeWindow();
  assertNotEqual(registry("user", "SOFTWARE\\Korvel Manager SECOND\\Jo Brown\\frmMain", "WinPos"), "");
});

check("the registry's database name is used for the connection, unless the command line names one", () => {
  const database = {machine: {"": {Database: "Elsewhere"}}};
  start({garage: "empty", database: "Elsewhere", registry: database});
  assertMatch(control("lblConnection").text, "Elsewhere");
  start({garage: "empty", registry: database, commandLine: '/userid:"Pat" /database:North'});
  assertMatch(control("lblConnection").text, "QBXKorvelManager_North");
});
