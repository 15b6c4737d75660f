// Step 2: the filters, how they look, and that they reach the host.

start({garage: 200, options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
control("tvQuery").choose("All Vehicles");
control("cmdNext0").click();

check("captions, conditions and lists", () => {
  assertEqual([0, 1, 2, 3, 4, 5].map(index => control("chkFilter" + index).text), ["Include customers who have selected No Marketing",
    "Customer Type", "Enquiry Source", "Last known Mileage", "Year of Manufacture", "Vehicle Model is:"]);
  assertEqual(["fraCustomerFilter", "fraVehicleFilter", "fraRecords", "chkIncludeOptedOut", "cmdApplyFilters", "lblStepComplete1", "lblInfo2"]
    .map(name => control(name).text), ["Customer Filter", "Vehicle Filter", "Records found", "Include Opted Out", "Refresh",
    "Click Next> to see the results", "       Please apply additional filters if required."]);
  assertEqual([1, 2, 3, 4].map(index => control("cmbFilter" + index).items), [["Type Is", "Type Is Not"], ["Source Is", "Source Is Not"],
    ["Higher Than", "Less Than", "Between"], ["Is", "After", "Before", "Between"]]);
  assertEqual(control("cmbData1").items.slice().sort(), sql("SELECT Description AS d FROM Customer_Types ORDER BY 1").map(row => row.d));
  assertEqual(control("cmbData2").items.slice().sort(), sql("SELECT Description AS d FROM Enquiry_Sources ORDER BY 1").map(row => row.d));
  assertEqual([control("lblRecordsNote0").text, control("lblRecordsNote1").text],
              [" Records found from Step 1", " Records found after filters applied"]);
  assertEqual(control("cmdNext1").toolTip, "Apply Additional Filters and go to next step");
});

check("a filter that is off is grey, and its values can be edited all the same", () => {
  const normal = control("txtModel").colour;
  const rows = {1: ["cmbFilter1", "cmbData1"], 2: ["cmbFilter2", "cmbData2"], 3: ["cmbFilter3", "txtMileage0"], 4: ["cmbFilter4", "txtYear0"]};
  Object.keys(rows).forEach(index => {
    rows[index].forEach(name => assertNotEqual(control(name).colour, normal, name));
    rows[index].forEach(name => assert(control(name).enabled, name));
    control("chkFilter" + index).tick();
    rows[index].forEach(name => assertEqual(control(name).colour, normal, name));
  });
  screenshot("step2_all_on");
  [1, 2, 3, 4].forEach(index => control("chkFilter" + index).untick());
  screenshot("step2_all_off");
});

check("the second field stands only for Between", () => {
  const seconds = () => ["lblAnd3", "txtMileage1", "lblAnd4", "txtYear1"].map(name => control(name).visible);
  assertEqual(seconds(), [false, false, false, false]);
  const wide = control("txtMileage0").size.width;
  control("cmbFilter3").choose("Between");
  assertEqual(seconds(), [true, true, false, false]);
  assert(control("txtMileage0").size.width < wide);
  assert(Math.abs(control("txtMileage0").size.width - control("txtMileage1").size.width) <= 1);
  control("cmbFilter4").choose("Between");
  assertEqual(seconds(), [true, true, true, true]);
  control("cmbFilter3").choose("Less Than");
  control("cmbFilter4").choose("Is");
  assertEqual(seconds(), [false, false, false, false]);
  assertEqual(control("txtMileage0").size.width, wide);
});

// Presses Next on step 2, looks at every row, and comes back.
function results(fits) {
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
  const grid = control("dbgData");
  const count = grid.rowCount;
  assert(count > 0, "there are rows");
  for (let row = 0; row < count; row++) assert(fits(grid.row(row)), JSON.stringify(grid.row(row)));
  control("cmdBack2").click();
  assertEqual(currentTab(), 2);
  assertEqual(control("lblRecords1").text, "Records found: " + count);
  return count;
}
let all = 0;

check("a filter that is off is not sent, whatever it holds", () => {
  control("cmbData1").choose("Trade");
  control("cmbFilter1").choose("Type Is");
  control("txtYear0").setText("2015");
  all = results(() => true);
  assertEqual(control("lblRecords0").text, "Records found: " + all);
});

check("customer type, is and is not", () => {
  control("chkFilter1").tick();
  const trade = results(row => row["Cust Type"] === "Trade");
  control("cmbFilter1").choose("Type Is Not");
  assertEqual(results(row => row["Cust Type"] !== "Trade") + trade, all);
  control("chkFilter1").untick();
});

check("enquiry source, chosen and typed", () => {
  control("chkFilter2").tick();
  control("cmbFilter2").choose("Source Is");
  control("cmbData2").choose("Google");
  results(row => row["Enquiry Source"] === "Google");
  control("cmbData2").setText("Radio");
  results(row => row["Enquiry Source"] === "Radio");
  control("chkFilter2").untick();
});

check("year of manufacture", () => {
  control("chkFilter4").tick();
  const year = row => Number(row.Year);
  const conditions = {Is: row => year(row) === 2015, After: row => year(row) > 2015, Before: row => year(row) < 2015};
  Object.keys(conditions).forEach(condition => {
    control("cmbFilter4").choose(condition);
    results(conditions[condition]);
  });
  control("cmbFilter4").choose("Between");
  control("txtYear0").setText("2014");
  control("txtYear1").setText("2016");
  results(row => year(row) >= 2014 && year(row) <= 2016);
  control("chkFilter4").untick();
});

check("mileage", () => {
  control("chkFilter3").tick();
  control("txtMileage0").setText("60000 or so");
  const miles = row => Number(row["Last Mileage"]);
  results(row => miles(row) < 60000);
  control("cmbFilter3").choose("Higher Than");
  results(row => miles(row) > 60000);
  control("cmbFilter3").choose("Between");
  control("txtMileage1").setText("90000");
  results(row => miles(row) >= 60000 && miles(row) <= 90000);
  control("chkFilter3").untick();
});

check("a line beside a filter says what it does where its controls do not show it", () => {
  const says = (index, text) => assertEqual(control("lblFilterNote" + index).visible ? control("lblFilterNote" + index).text : "", text);
  control("chkFilter3").tick();
  control("cmbFilter3").choose("Higher Than");
  control("txtMileage0").setText("80k");
  says(3, "Read as 80.");
  control("chkFilter1").tick();
  control("cmbData1").setText("");
  says(1, "Customers with a type.");
  screenshot("step2_notes");
  control("txtMileage0").setText("80,000");
  says(3, "");
  control("chkFilter1").untick();
  says(1, "");
  results(row => Number(row["Last Mileage"]) > 80000);
  control("cmbFilter3").choose("Between");
  control("txtMileage1").setText("70 000");
  says(3, "The first number is above the second.");
  control("chkFilter3").untick();
});

check("model, and a customer query that is filtered by a vehicle's value", () => {
  selectTab(1);
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
  control("chkFilter5").tick();
  control("txtModel").setText("golf");
  results(row => /golf/i.test(row.Model));
  assertMatch(calls().filter(call => /^proc_Marketing_Add/.test(call)).pop(), "proc_Marketing_AddAllVehicles");
  control("chkFilter5").untick();
  assertEqual(control("txtModel").text, "golf");
});

check("the results page shows what the last query found", () => {
  const before = control("lblCount").text;
  control("chkFilter4").tick();
  control("cmbFilter4").choose("After");
  control("txtYear0").setText("2015");
  control("cmdApplyFilters").click();
  selectTab(3);
  assertNotEqual(control("lblCount").text, before);
  assertEqual(control("lblCount").text, sql("SELECT count(*) AS n FROM [Campaign Results] WHERE CampaignID < 0")[0].n + " records ");
  selectTab(2);
  control("chkFilter4").untick();
  control("cmdApplyFilters").click();
});

check("customers who chose no marketing come in on request", () => {
  const without = results(() => true);
  assertMatch(control("lblLeftOut0").text, /^Left out before: \d+ opted out, \d+ No Marketing\.$/);
  control("chkFilter0").tick();
  assert(results(() => true) > without);
  assertMatch(control("lblLeftOut1").text, /^\d+ more with No Marketing\.$/);
});

check("those who opted out come in on request, and a word about the law follows", () => {
  const without = results(() => true);
  control("chkIncludeOptedOut").tick();
  clearMessages();
  answer("GDPR");
  assert(results(() => true) > without);
  assertEqual(messages().map(box => [box.text, box.icon]), [["Please note you have disabled the option to only send to people who have " +
    "opted in.\n\nDue to GDPR laws please ensure that you do not send marketing emails to those who do not wish to receive them.",
    "exclamation"]]);
  const found = control("lblRecords0").text;
  selectTab(1);
  control("cmdNext0").click();
  assertNotEqual(control("lblRecords0").text, found, "the first step counts them as well");
  assertEqual(messages().length, 1);
});

check("where only those who opted in are written to, Include Opted Out cannot be ticked", () => {
  start({options: {Only_Send_Comms_When_Opted_In: true}});
  control("cmdNew").click();
  control("tvQuery").choose("All Customers");
  control("cmdNext0").click();
  answer("This option can not be used");
  control("chkIncludeOptedOut").click();
  assertEqual(lastMessage().text, "This option can not be used because 'Only send Emails or SMS Text Marketing to customers who have " +
    "Consented to receive such messages' has been enabled in QBX system settings.");
  assertEqual([lastMessage().caption, lastMessage().icon], ["Your settings prevent this option", "information"]);
  assert(!control("chkIncludeOptedOut").ticked);
  const found = name => Number(control(name).text.replace("Records found: ", ""));
  assert(found("lblRecords1") < found("lblRecords0"), "those who did not consent are taken out");
  assertEqual(sql("SELECT count(*) AS n FROM [Campaign Results] WHERE ifnull(Consent_Response, 0) <> 1")[0].n, 0);
});
