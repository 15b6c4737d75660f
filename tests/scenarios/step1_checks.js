// Step 1: date boxes are typed or chosen from a calendar, and may be empty; what "Next >" refuses, and what it writes
// down.

start({options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
const [from, to, next] = ["dteDate0", "dteDate1", "cmdNext0"].map(control);
const click = () => next.click();
const choose = query => control("tvQuery").choose(query);

check("one thing at a time is refused, nothing runs, and each Next is on record", () => {
  choose("Top Customers");
  from.setText("01/01/1980");
  fill({txtCriteria: "some", txtCriteriaStart: "none"});
  refused("Please select a Campaign Type.", click, "information");
  assertEqual(lastMessage().caption, "QBX Marketing & Reporting Module");
  control("cmbType").choose("Promotions");
  refused("Dates are not valid.", click);
  assertEqual(from.text, "01/01/1980", "what was typed stays");
  from.setText("");
  refused("Criteria is not valid. Number expected.", click);
  control("txtCriteria").setText("5 or so");
  refused("Criteria Start Record is not valid. Number expected.", click);
  assertEqual(currentTab(), 1);
  assertNoMatch(calls().join("\n"), "proc_Marketing_Add");
  const clicks = events().filter(event => event.details === "Clicked: Next(0)");
  assertEqual(clicks.map(event => [event.type, event.table, event.key, event.user]), [1, 2, 3, 4].map(() => [9, 0, "MARKETING", "Pat"]));
});

check("a number is read from the start of its text; top customers fill in empty dates: all of time", () => {
  control("txtCriteriaStart").setText("2nd");
  click();
  assertEqual(shown("lblRecords0", "dteDate0", "dteDate1"), ["Records found: 5", "01/01/1990", "04/03/2026"]);
  selectTab(1);
});

check("an empty box shows how a date is written, and a text that is no date is marked while it is typed", () => {
  assertEqual(from.placeholder, "DD/MM/YYYY");
  to.setText("01/01/2026");
  from.setText("31/02/2026");
  assertNotEqual(from.colour, to.colour);
  assertMatch(from.toolTip, "This is not a date.");
  screenshot("date_refused");
  choose("Lapsed Customers");
  choose("Top Customers");
  assertEqual(from.text, "31/02/2026", "a slip of the finger is there to mend, also when the query is chosen again");
});

check("short ways of writing are understood, and written out when the box is left", () => {
  ["1/3/26", "010326", "2026-03-01", "1.3.2026"].forEach(typed => {
    from.setText("");
    from.type(typed + "\t");
    assertEqual(from.text, "01/03/2026", typed);
  });
});

check("arrows step by a day, and the calendar opens by key", () => {
  from.setText("28/02/2026");
  from.press("Up");
  assertEqual(from.text, "01/03/2026");
  from.press("Down", 2).press("F4");
  press("Right");
  press("Return");
  assertEqual(from.text, "28/02/2026");
});

check("the two dates may stand in either order, and 01/01/1990 is early enough", () => {
  choose("Recent Customers");
  from.setText("04/03/2026");
  to.setText("31/12/1989");
  refused("Dates are not valid.", click);
  to.setText("01/01/1990");
  click();
  assertMatch(control("lblRecords0").text, /^Records found: [1-9]/);
  selectTab(1);
});

check("a reminder whose dates are both over says so beside them, until one is not", () => {
  choose("Based on Reminder Date");
  from.setText("01/02/2026");
  to.setText("03/03/2026");
  assertEqual(control("lblDatesOver").text, "Both dates are over: this selects reminders from 01/02/2026 to 03/03/2026.");
  to.setText("31/12/2026");
  assertEqual(control("lblDatesOver").visible, false);
  refused("No Reminder specified.", click);
  control("cmbReminder").choose("Service Reminder");
  click();
  const due = count("Vehicles WHERE Vehicle IN (SELECT Vehicle FROM [Campaign Results]) AND " +
                    "Recall_Date2 >= '2026-02-01' AND Recall_Date2 < '2027-01-01'");
  assert(due > 0);
  assertEqual(control("lblRecords0").text, "Records found: " + due);
});
