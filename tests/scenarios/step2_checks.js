// Step 2: what "Next >" and "Refresh" refuse, in their order; what is counted, and that filters wait to be applied.

start({options: {Only_Send_Comms_When_Opted_In: false}});
const modelMissing = "You have chosen to filter specific Models, but have not entered a vehicle model.";
const next = () => control("cmdNext1").click();
const refresh = () => control("cmdApplyFilters").click();
const queriesRun = () => calls().filter(call => /^proc_Marketing_Add/.test(call)).length;

check("step 2 before step 1 was completed", () => {
  walkTo(1);
  selectTab(2);
  refused("Please go to Step 1 and click Next to complete that step before continuing onto another step.", next, "information");
  control("chkFilter5").tick();
  refused(modelMissing, next);
  refused("Please complete Step 1 first and click Next.", refresh);
  assertEqual([currentTab(), queriesRun()], [2, 0]);
});

check("Top and Bottom Customers take no vehicle filters, which is said first; filters of the customer are welcome", () => {
  selectTab(1);
  walkTo(2, "Top Customers");
  refused("Vehicle Filters cannot be used when using the Top Customers Query option.", next);
  fill({chkFilter5: false, chkFilter1: true});
  next();
  assertEqual(currentTab(), 3);
});

check("then mileage, year and model; equal bounds pass", () => {
  selectTab(1);
  walkTo(2, "All Vehicles");
  control("chkFilter1").untick();
  [3, 4, 5].forEach(index => control("chkFilter" + index).tick());
  [3, 4].forEach(index => control("cmbFilter" + index).choose("Between"));
  const fields = {txtMileage0: "60000", txtMileage1: "50000", txtYear0: "2016", txtYear1: "2015", txtModel: "  "};
  Object.keys(fields).forEach(name => control(name).setText(fields[name]));
  refused("Mileage Filter is not valid. Mileage From must be less than Mileage To", next);
  control("txtMileage0").setText("50000");
  refused("Year Filter is not valid. Year From must be less than Year To", next);
  control("txtYear0").setText("2015");
  refused(modelMissing, next);
  refused(modelMissing, refresh);
  control("chkFilter5").untick();
  next();
  assertEqual(currentTab(), 3);
});

check("Refresh counts and stays, and takes those out who did not consent", () => {
  start({garage: 200, options: {Only_Send_Comms_When_Opted_In: true}});
  walkTo(2, "All Vehicles");
  fill({chkFilter4: true, cmbFilter4: "After", txtYear0: "2015"});
  const [first, before] = [control("lblRecords0").text, queriesRun()];
  clearStatusTexts();
  control("lblRecords1").press("F5");
  assertEqual([queriesRun(), statusTexts()], [before + 2, ["Applying Filters to the results...", "Processing the Query..."]]);
  const rows = sql("SELECT count(*) AS n, min(Year) AS oldest, min(coalesce(Consent_Response, 0)) AS consent FROM [Campaign Results]")[0];
  assertEqual([currentTab(), ...shown("lblRecords0", "lblRecords1")], [2, first, "Records found: " + rows.n]);
  assert(rows.oldest > 2015 && rows.consent === 1);
  refused("Step 2 has not been completed.", () => control("cmdRun").click());
});

check("filters that are not applied to the rows say so, on both pages", () => {
  const pending = (is, why) => assertEqual(/The filters are not applied to these rows yet/.test(control("lblFiltersPending").text), is, why);
  start({garage: {customers: 200, seed: 5}, options: {Only_Send_Comms_When_Opted_In: false}});
  walkTo(2, "All Vehicles");
  pending(false);
  fill({chkFilter4: true, cmbFilter4: "After"});
  control("txtYear0").type("2015");
  pending(true);
  assertEqual(control("dbgFirst").enabled, false);
  refresh();
  pending(false);
  assertEqual([control("dbgFirst").enabled, control("dbgFirst").rowCount], [true, Math.min(count("[Campaign Results]"), 50)]);
  selectTab(1);
  control("cmdNext0").click();
  selectTab(3);
  pending(true);
  selectTab(2);
  fill({chkFilter4: false, chkIncludeOptedOut: true});
  pending(true, "opted-out customers are not among the rows yet");
  acceptNotices();
  next();
  pending(false);
  selectTab(2);
  control("chkIncludeOptedOut").untick();
  pending(true, "opted-out customers are among the rows still");
  control("chkIncludeOptedOut").tick();
  click("cmdBack1", "cmdNext0");
  pending(false, "step 1 includes them as well");
});
