// Step 2: what "Next >" and "Refresh" refuse, in their order.

start({options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();

const modelMissing = "You have chosen to filter specific Models, but have not entered a vehicle model.";
const queriesRun = () => calls().filter(call => /^proc_Marketing_Add/.test(call)).length;

function refused(text, icon, button) {
  const before = queriesRun();
  clearMessages();
  answer(text);
  control(button || "cmdNext1").click();
  assertEqual(messages().map(box => [box.text, box.icon]), [[text, icon || "exclamation"]]);
  assertEqual(currentTab(), 2);
  assertEqual(queriesRun(), before, "no query has run");
}

function chooseQuery(query) {
  selectTab(1);
  control("tvQuery").choose(query);
  control("cmdNext0").click();
  assertEqual(currentTab(), 2);
}

check("step 2 before step 1 was completed", () => {
  control("tvQuery").choose("All Customers");
  selectTab(2);
  refused("Please go to Step 1 and click Next to complete that step before continuing onto another step.", "information");
  control("chkFilter5").tick();
  refused(modelMissing);
  refused("Please complete Step 1 first and click Next.", "exclamation", "cmdApplyFilters");
  control("chkFilter5").untick();
});

check("Top and Bottom Customers take no vehicle filters, which is said first", () => {
  chooseQuery("Top Customers");
  control("cmbFilter3").choose("Between");
  control("txtMileage0").setText("60000");
  control("txtMileage1").setText("50000");
  [3, 4, 5].forEach(index => {
    control("chkFilter" + index).tick();
    refused("Vehicle Filters cannot be used when using the Top Customers Query option.");
    control("chkFilter" + index).untick();
  });
  chooseQuery("Bottom Customers");
  control("chkFilter3").tick();
  refused("Vehicle Filters cannot be used when using the Bottom Customers Query option.");
  control("chkFilter3").untick();
  control("chkFilter1").tick();
  control("cmdNext1").click();
  assertEqual(currentTab(), 3, "filters of the customer are welcome");
});

check("then mileage, year and model", () => {
  chooseQuery("All Vehicles");
  control("chkFilter1").untick();
  [3, 4, 5].forEach(index => control("chkFilter" + index).tick());
  control("cmbFilter4").choose("Between");
  control("txtYear0").setText("2016");
  control("txtYear1").setText("2015");
  refused("Mileage Filter is not valid. Mileage From must be less than Mileage To");
  control("txtMileage0").setText("50000");
  refused("Year Filter is not valid. Year From must be less than Year To");
  control("txtYear0").setText("2015");
  refused(modelMissing);
  control("txtModel").setText("  ");
  refused(modelMissing);
  refused(modelMissing, "exclamation", "cmdApplyFilters");
  control("chkFilter5").untick();
  control("cmdNext1").click();
  assertEqual(currentTab(), 3, "equal bounds pass");
});

check("Refresh looks only at the model: it counts and stays", () => {
  start({garage: 200, options: {Only_Send_Comms_When_Opted_In: true}});
  control("cmdNew").click();
  chooseQuery("All Vehicles");
  control("chkFilter4").tick();
  control("cmbFilter4").choose("After");
  control("txtYear0").setText("2015");
  const first = control("lblRecords0").text;
  const before = queriesRun();
  clearStatusTexts();
  control("lblRecords1").press("F5");
  assertEqual(queriesRun(), before + 2);
  assertEqual(statusTexts(), ["Applying Filters to the results...", "Processing the Query..."]);
  assertEqual(currentTab(), 2);
  assertEqual(control("lblRecords0").text, first);
  const rows = sql("SELECT count(*) AS n, min(Year) AS oldest, min(ifnull(Consent_Response, 0)) AS consent FROM [Campaign Results]")[0];
  assertEqual(control("lblRecords1").text, "Records found: " + rows.n);
  assert(rows.oldest > 2015);
  assertEqual(rows.consent, 1);
  answer("Step 2 has not been completed.");
  control("cmdRun").click();
  control("cmbFilter4").choose("Between");
  control("txtYear1").setText("2010");
  control("cmdApplyFilters").click();
  assertEqual(control("lblRecords1").text, "Records found: 0");
});

check("filters that are not applied to the rows say so, on both pages", () => {
  const pending = /The filters are not applied to these rows yet/;
  start({garage: {customers: 200, seed: 5}, options: {Only_Send_Comms_When_Opted_In: false}});
  control("cmdNew").click();
  control("tvQuery").choose("All Vehicles");
  control("cmdNext0").click();
  assertEqual(control("lblFiltersPending").text, "");
  control("chkFilter4").tick();
  control("cmbFilter4").choose("After");
  control("txtYear0").type("2015");
  assertMatch(control("lblFiltersPending").text, pending);
  assertEqual(control("dbgFirst").enabled, false);
  control("cmdApplyFilters").click();
  assertEqual(control("lblFiltersPending").text, "");
  const found = sql("SELECT Count(*) AS n FROM [Campaign Results]")[0].n;
  assertEqual([control("dbgFirst").enabled, control("dbgFirst").rowCount], [true, Math.min(found, 50)]);
  selectTab(1);
  control("cmdNext0").click();
  assertMatch(control("lblFiltersPending").text, pending);
  selectTab(3);
  assertMatch(control("lblFiltersPending").text, pending);
  selectTab(2);
  control("cmdNext1").click();
  assertEqual(control("lblFiltersPending").text, "");
  selectTab(1);
  control("cmdNext0").click();
  control("chkFilter4").untick();
  control("chkIncludeOptedOut").tick();
  assertMatch(control("lblFiltersPending").text, pending, "opted-out customers are not among the rows yet");
  acceptNotices();
  control("cmdNext1").click();
  control("cmdBack2").click();
  assertEqual(control("lblFiltersPending").text, "");
  control("chkIncludeOptedOut").untick();
  selectTab(3);
  assertMatch(control("lblFiltersPending").text, pending, "opted-out customers are among the rows still");
  selectTab(2);
  control("chkIncludeOptedOut").tick();
  control("cmdBack1").click();
  control("cmdNext0").click();
  assertEqual(control("lblFiltersPending").text, "", "step 1 includes them as well");
});
