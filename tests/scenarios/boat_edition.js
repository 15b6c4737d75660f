// The boat edition has its own words, a query for engines, and Hours for Mileage.

const described = node => {
  control("tvQuery").choose(node);
  return control("txtQueryDesc").text;
};

check("the boat edition speaks of boats", () => {
  start({edition: "boat", options: {Only_Send_Comms_When_Opted_In: false}});
  control("cmdNew").click();
  assertEqual(control("tvQuery").items, ["Customer specific Queries", "All Customers", "Lapsed Customers", "Recent Customers", "Top Customers",
    "Bottom Customers", "Boat Specific Queries", "All Boats", "Specific Makes", "Based on Reminder Date", "Specific Engines"]);
  assertEqual(described("All Boats"), "All boats in the system (which have an associated customer).");
  assertEqual(described("Based on Reminder Date"), "All boats with a specific Recall Date.");
  screenshot("boat_step1_reminder");
});

check("engines have their own list, label and message", () => {
  assertEqual(described("Specific Engines"), "All engines which are of a specific Make.");
  assertEqual(shown("lblQueryOptions", "fraMakes", "Label1"), ["Choose the Engines to include in the query.", "Engines", "Engines:"]);
  assertEqual(control("lstMakes").items, sql("SELECT Description FROM Makes WHERE Kind = 5 ORDER BY 1").map(row => row.Description));
  refused("Engines Selection is not valid. Please choose one of more Engines.", () => control("cmdNext0").click());
  control("lstMakes").choose([0]);
  control("cmdNext0").click();
  assertMatch(calls().join("\n"), "proc_Marketing_AddAllEngines");
});

check("the filters and their messages say Boat and Hours, and engines have no hours", () => {
  const hours = ["chkFilter3", "cmbFilter3", "txtMileage0"];
  assertEqual([currentTab(), ...shown("fraVehicleFilter", "chkFilter5", "chkFilter4")], [2, "Boat Filter", "Boat Model is:", "Year of Manufacture"]);
  hours.forEach(name => assert(!control(name).visible, name));
  selectTab(1);
  walkTo(2, "Top Customers");
  hours.forEach(name => assert(control(name).visible, name));
  screenshot("boat_step2");
  const next = () => control("cmdNext1").click();
  control("chkFilter5").tick();
  refused("Boat Filters cannot be used when using the Top Customers Query option.", next);
  selectTab(1);
  walkTo(2, "All Boats");
  refused("You have chosen to filter specific Models, but have not entered a boat model.", next);
  fill({chkFilter3: true, cmbFilter3: "Between", txtMileage0: "900", txtMileage1: "800"});
  refused("Hours Filter is not valid. Hours From must be less than Hours To", next);
});

check("so do the results and the template examples", () => {
  fill({chkFilter3: false, chkFilter5: false});
  control("cmdNext1").click();
  const columns = control("dbgData").columns;
  assertEqual(["Boat", "Last Hours", "Vehicle", "Last Mileage"].map(name => columns.includes(name)), [true, true, false, false]);
  selectTab(4);
  control("ssTabLetters").selectTab("Examples");
  assertMatch(control("lblExample2").text, "For Boat specific Mail Merges you can use boat data");
  assertMatch(control("txtExample2").text, "your boat {make} {model} may be due for a service replacement");
  assertNoMatch(control("txtExample2").text, /vehicle|cambelt|regno/i);
  control("ssTabLetters").selectTab("Text Message");
  answerMenu("{make}   make of the boat, in a campaign of boats (Vauxhall)");
  control("cmdInsertText").click();
});
