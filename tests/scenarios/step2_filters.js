// Step 2: the filters, how they look, and that they reach the host.

start({garage: 200, options: {Only_Send_Comms_When_Opted_In: false}});
walkTo(2, "All Vehicles");

check("captions, conditions and lists", () => {
  assertEqual(shown(...[0, 1, 2, 3, 4, 5].map(index => "chkFilter" + index)), ["Include customers who have selected No Marketing",
    "Customer Type", "Enquiry Source", "Last known Mileage", "Year of Manufacture", "Vehicle Model is:"]);
  assertEqual(shown("fraCustomerFilter", "fraVehicleFilter", "fraRecords", "chkIncludeOptedOut", "cmdApplyFilters", "lblStepComplete1", "lblInfo2"),
              ["Customer Filter", "Vehicle Filter", "Records found", "Include Opted Out", "Refresh", "Click Next> to see the results",
               "       Please apply additional filters if required."]);
  assertEqual([1, 2, 3, 4].map(index => control("cmbFilter" + index).items), [["Type Is", "Type Is Not"], ["Source Is", "Source Is Not"],
    ["Higher Than", "Less Than", "Between"], ["Is", "After", "Before", "Between"]]);
  assertEqual(control("cmbData1").items.slice().sort(), sql("SELECT Description AS d FROM Customer_Types ORDER BY 1").map(row => row.d));
  assertEqual(control("cmbData2").items.slice().sort(), sql("SELECT Description AS d FROM Enquiry_Sources ORDER BY 1").map(row => row.d));
  assertEqual(shown("lblRecordsNote0", "lblRecordsNote1"), [" Records found from Step 1", " Records found after filters applied"]);
  assertEqual(control("cmdNext1").toolTip, "Apply Additional Filters and go to next step");
});

check("a filter that is off is grey, and its values can be edited all the same", () => {
  const normal = control("txtModel").colour;
  [["chkFilter1", "cmbFilter1", "cmbData1"], ["chkFilter4", "cmbFilter4", "txtYear0"]].forEach(([tick, ...rest]) => {
    rest.forEach(name => assert(control(name).colour !== normal && control(name).enabled, name));
    control(tick).tick();
    rest.forEach(name => assertEqual(control(name).colour, normal, name));
  });
  screenshot("step2_on");
  [1, 4].forEach(index => control("chkFilter" + index).untick());
});

check("the second field stands only for Between", () => {
  const seconds = () => ["lblAnd3", "txtMileage1", "lblAnd4", "txtYear1"].map(name => control(name).visible);
  const wide = control("txtMileage0").size.width;
  control("cmbFilter3").choose("Between");
  assertEqual(seconds(), [true, true, false, false]);
  assert(control("txtMileage0").size.width < wide && Math.abs(control("txtMileage0").size.width - control("txtMileage1").size.width) <= 1);
  control("cmbFilter3").choose("Less Than");
  assertEqual([seconds(), control("txtMileage0").size.width], [[false, false, false, false], wide]);
});

// Presses Next on step 2, looks at every row, and comes back.
function results(fits) {
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
  const rows = sql("SELECT * FROM [Campaign Results]");
  assert(rows.length > 0, "there are rows");
  rows.forEach(row => assert(fits(row), JSON.stringify(row)));
  control("cmdBack2").click();
  assertEqual(control("lblRecords1").text, "Records found: " + rows.length);
  return rows.length;
}
let all = 0;

check("a filter that is off is not sent, whatever it holds", () => {
  fill({cmbData1: "Trade", cmbFilter1: "Type Is", txtYear0: "2015"});
  all = results(() => true);
  assertEqual(control("lblRecords0").text, "Records found: " + all);
});

check("customer type, is and is not; enquiry source, chosen and typed", () => {
  control("chkFilter1").tick();
  const trade = results(row => row.Cust_Type === "Trade");
  control("cmbFilter1").choose("Type Is Not");
  assertEqual(results(row => row.Cust_Type !== "Trade") + trade, all);
  fill({chkFilter1: false, chkFilter2: true, cmbFilter2: "Source Is", cmbData2: "Google"});
  results(row => row.Enquiry_Source === "Google");
  control("cmbData2").setText("Radio");
  results(row => row.Enquiry_Source === "Radio");
  control("chkFilter2").untick();
});

check("year and mileage, one bound and between two", () => {
  fill({chkFilter4: true, cmbFilter4: "Before"});
  results(row => row.Year < 2015);
  fill({cmbFilter4: "Between", txtYear1: "2016"});
  results(row => row.Year >= 2015 && row.Year <= 2016);
  fill({chkFilter4: false, chkFilter3: true, txtMileage0: "60000 or so"});
  results(row => row.Last_Mileage < 60000);
  fill({cmbFilter3: "Between", txtMileage1: "90000"});
  results(row => row.Last_Mileage >= 60000 && row.Last_Mileage <= 90000);
});

check("a line beside a filter says what it does where its controls do not show it", () => {
  const says = text => assertEqual(control("lblFilterNote3").visible ? control("lblFilterNote3").text : "", text);
  control("txtMileage1").setText("50 000");
  says("The first number is above the second.");
  fill({cmbFilter3: "Higher Than", txtMileage0: "80k"});
  says("Read as 80.");
  screenshot("step2_notes");
  control("txtMileage0").setText("80,000");
  says("");
  results(row => row.Last_Mileage > 80000);
  control("chkFilter3").untick();
});

check("model, and a customer query that is filtered by a vehicle's value", () => {
  selectTab(1);
  walkTo(2);
  fill({chkFilter5: true, txtModel: "golf"});
  results(row => /golf/i.test(row.Model));
  assertMatch(calls().filter(call => /^proc_Marketing_Add/.test(call)).pop(), "proc_Marketing_AddAllVehicles");
  control("chkFilter5").untick();
  assertEqual(control("txtModel").text, "golf");
});

check("the results page shows what the last query found", () => {
  const before = control("lblCount").text;
  control("cmdApplyFilters").click();
  selectTab(3);
  assertNotEqual(control("lblCount").text, before);
  assertEqual(control("lblCount").text, count("[Campaign Results] WHERE CampaignID < 0") + " records ");
  selectTab(2);
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
  refused("Please note you have disabled the option to only send to people who have opted in.\n\nDue to GDPR laws please ensure that you do " +
          "not send marketing emails to those who do not wish to receive them.", () => assert(results(() => true) > without));
  const found = control("lblRecords0").text;
  selectTab(1);
  control("cmdNext0").click();
  assertNotEqual(control("lblRecords0").text, found, "the first step counts them as well");
  assertEqual(messages().length, 1);
});

check("where only those who opted in are written to, Include Opted Out cannot be ticked", () => {
  start({options: {Only_Send_Comms_When_Opted_In: true}});
  walkTo(2);
  refused("This option can not be used because 'Only send Emails or SMS Text Marketing to customers who have Consented to receive such " +
          "messages' has been enabled in QBX system settings.", () => control("chkIncludeOptedOut").click(), "information");
  assertEqual([lastMessage().caption, control("chkIncludeOptedOut").ticked], ["Your settings prevent this option", false]);
  const found = name => Number(control(name).text.replace("Records found: ", ""));
  assert(found("lblRecords1") < found("lblRecords0"), "those who did not consent are taken out");
  assertEqual(count("[Campaign Results] WHERE coalesce(Consent_Response, 0) <> 1"), 0);
});
