// The boat edition has its own words, a query for engines, and Hours for Mileage.

function queryTexts() {
  control("cmdNew").click();
  return control("tvQuery").items;
}
const garageTree = ["Customer specific Queries", "All Customers", "Lapsed Customers", "Recent Customers", "Top Customers",
                    "Bottom Customers", "Vehicle Specific Queries", "All Vehicles", "Specific Makes", "Based on Reminder Date"];

check("the boat edition speaks of boats", () => {
  start({ini: {App: {Name: "MX"}}, database: "QBXMarnexManager", options: {Only_Send_Comms_When_Opted_In: false}});
  assertEqual(queryTexts(), garageTree.map(text => text.replace("Vehicle", "Boat")).concat("Specific Engines"));
  const described = node => {
    control("tvQuery").choose(node);
    return control("txtQueryDesc").text;
  };
  assertEqual(described("Boat Specific Queries"), "Boat Specific Queries");
  assertEqual(described("All Boats"), "All boats in the system (which have an associated customer).");
  assertEqual(described("Specific Makes"), "All boats which are of a specific Make.");
  assertEqual(control("fraMakes").caption, "Makes");
  assertEqual(described("Based on Reminder Date"), "All boats with a specific Recall Date.");
  screenshot("boat_step1_reminder");
});

check("engines have their own list, label and message", () => {
  control("tvQuery").choose("Specific Engines");
  assertEqual(control("txtQueryDesc").text, "All engines which are of a specific Make.");
  assertEqual(control("lblQueryOptions").text, "Choose the Engines to include in the query.");
  assertEqual(control("fraMakes").caption, "Engines");
  assertEqual(control("Label1").text, "Engines:");
  assertEqual(control("lstMakes").items, sql("SELECT Description FROM Makes WHERE Kind = 5 ORDER BY 1").map(row => row.Description));
  answer("Engines Selection is not valid. Please choose one of more Engines.");
  control("cmdNext0").click();
  assertEqual(lastMessage().icon, "exclamation");
  control("lstMakes").choose([0]);
  screenshot("boat_step1_engines");
  control("cmdNext0").click();
  assertMatch(calls().join("\n"), "proc_Marketing_AddAllEngines");
});

check("the filters say Boat and Hours, and engines have no hours", () => {
  assertEqual(currentTab(), 2);
  assertEqual(control("fraVehicleFilter").caption, "Boat Filter");
  assertEqual(control("chkFilter5").text, "Boat Model is:");
  assertEqual(control("chkFilter4").text, "Year of Manufacture");
  ["chkFilter3", "cmbFilter3", "txtMileage0"].forEach(name => assert(!control(name).visible, name));
  screenshot("boat_step2_engines");
  selectTab(1);
  control("tvQuery").choose("Top Customers");
  control("txtCriteria").setText("25");
  control("cmdNext0").click();
  assertEqual(control("chkFilter3").text, "Last known Hours");
  ["chkFilter3", "cmbFilter3", "txtMileage0"].forEach(name => assert(control(name).visible, name));
  screenshot("boat_step2");
});

check("so do the messages of step 2", () => {
  const refused = text => {
    answer(text);
    control("cmdNext1").click();
    assertEqual(lastMessage().text, text);
  };
  control("chkFilter5").tick();
  refused("Boat Filters cannot be used when using the Top Customers Query option.");
  selectTab(1);
  control("tvQuery").choose("All Boats");
  control("cmdNext0").click();
  refused("You have chosen to filter specific Models, but have not entered a boat model.");
  answer("You have chosen to filter specific Models, but have not entered a boat model.");
  control("cmdApplyFilters").click();
  control("chkFilter3").tick();
  control("cmbFilter3").choose("Between");
  control("txtMileage0").setText("900");
  control("txtMileage1").setText("800");
  refused("Hours Filter is not valid. Hours From must be less than Hours To");
});

check("the template examples are about a boat's service", () => {
  selectTab(4);
  assertNoMatch(control("txtExample2").text, /vehicle|cambelt|regno/i);
  assertMatch(control("txtExample2").text, "service");
});
