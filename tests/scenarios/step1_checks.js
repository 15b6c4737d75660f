// Step 1: what "Next >" refuses, in its order, and what it writes down.

start({options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
const next = control("cmdNext0");

function refused(text, icon) {
  clearMessages();
  answer(text);
  next.click();
  assertEqual(messages().map(box => [box.text, box.icon, box.caption]), [[text, icon || "exclamation", "QBX Marketing & Reporting Module"]]);
  assertEqual(currentTab(), 1);
  assertNoMatch(calls().join("\n"), "proc_Marketing_Add", "no query has run");
}

check("no query at all", () => {
  if (next.enabled) refused("Invalid Campaign Type Selected.");
});

check("the campaign type comes before the dates, the dates before the numbers", () => {
  control("tvQuery").choose("Top Customers");
  control("dteDate0").setText("01/01/1980");
  control("txtCriteria").setText("0");
  control("txtCriteriaStart").setText("none");
  refused("Please select a Campaign Type.", "information");
  control("cmbType").choose("Other");
  refused("Dates are not valid.");
  control("dteDate0").setText("");
  refused("Criteria is not valid. Number expected.");
  ["some", "-3", ""].forEach(number => {
    control("txtCriteria").setText(number);
    refused("Criteria is not valid. Number expected.");
  });
  control("txtCriteria").setText("5 or so");
  refused("Criteria Start Record is not valid. Number expected.");
});

check("the dates of a reminder come before the reminder", () => {
  control("tvQuery").choose("Based on Reminder Date");
  control("dteDate0").setText("");
  refused("Dates are not valid.");
  control("dteDate0").setText("01/01/2026");
  refused("No Reminder specified.");
});

check("each Next is written into the event table, refused ones as well", () => {
  const clicks = events().filter(event => event.details === "Clicked: Next(0)");
  assert(clicks.length >= 8);
  clicks.forEach(event => assertEqual([event.type, event.table, event.key, event.user], [9, 0, "MARKETING", "Pat"]));
});

check("a number is read from the start of its text", () => {
  control("tvQuery").choose("Top Customers");
  control("txtCriteriaStart").setText("2nd");
  next.click();
  assertEqual(control("lblRecords0").text, "Records found: 5");
});

check("the second reminder selects by the second recall date", () => {
  selectTab(1);
  control("tvQuery").choose("Based on Reminder Date");
  control("dteDate0").setText("01/01/2026");
  control("dteDate1").setText("31/12/2026");
  control("cmbReminder").choose("Service Reminder");
  next.click();
  const due = sql("SELECT count(*) AS n FROM Vehicles WHERE Vehicle IN (SELECT Vehicle FROM [Campaign Results]) AND " +
                  "substr(Recall_Date2, 1, 10) BETWEEN '2026-01-01' AND '2026-12-31'")[0].n;
  assert(due > 0);
  assertEqual(control("lblRecords0").text, "Records found: " + due);
});
