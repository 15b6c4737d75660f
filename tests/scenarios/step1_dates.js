// Step 1: date boxes are typed or chosen from a calendar, and may be empty.

start({options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
control("tvQuery").choose("Recent Customers");
const from = control("dteDate0");
const to = control("dteDate1");
const next = control("cmdNext0");

function refused(first, second) {
  from.setText(first);
  to.setText(second);
  answer("Dates are not valid.");
  next.click();
  assertEqual(lastMessage().icon, "exclamation");
  assertEqual(currentTab(), 1);
  assertEqual([from.text, to.text], [first, second], "what was typed stays");
}

check("an empty box shows how a date is written", () => assertEqual(from.placeholder, "DD/MM/YYYY"));

check("two dates from 1990 on are needed", () => {
  refused("", "");
  refused("01/01/2026", "");
  refused("", "01/01/2026");
  refused("31/12/1989", "01/01/2026");
  refused("31/02/2026", "01/03/2026");
  refused("soon", "01/03/2026");
  refused("01/01/2026", "01/01/2100");
});

check("a text that is no date is marked while it is typed", () => {
  to.setText("01/01/2026");
  from.setText("31/02/2026");
  assertNotEqual(from.colour, to.colour);
  assertMatch(from.toolTip, "This is not a date.");
  screenshot("date_refused");
});

check("short ways of writing are understood, and written out when the box is left", () => {
  [["1/3/26", "01/03/2026"], ["010326", "01/03/2026"], ["2026-03-01", "01/03/2026"], ["1.3.2026", "01/03/2026"]].forEach(([typed, shown]) => {
    from.setText("");
    from.type(typed + "\t");
    assertEqual(from.text, shown, typed);
  });
});

check("arrows step by a day, and the calendar opens by key", () => {
  from.setText("28/02/2026");
  from.press("Up");
  assertEqual(from.text, "01/03/2026");
  from.press("Down", 2);
  assertEqual(from.text, "27/02/2026");
  from.press("F4");
  press("Right");
  press("Return");
  assertEqual(from.text, "28/02/2026");
});

check("the two dates may stand in either order, and 01/01/1990 is early enough", () => {
  from.setText("04/03/2026");
  to.setText("01/01/1990");
  next.click();
  assertEqual(currentTab(), 2);
  assertMatch(control("lblRecords0").text, /^Records found: [1-9]/);
});

check("top customers fill in empty dates: all of time", () => {
  selectTab(1);
  control("tvQuery").choose("Top Customers");
  from.setText("");
  to.setText("");
  control("txtCriteria").setText("25");
  next.click();
  assertEqual(currentTab(), 2);
  selectTab(1);
  assertEqual([from.text, to.text], ["01/01/1990", "04/03/2026"]);
});

check("a slip of the finger is there to mend, also when the query is chosen again", () => {
  control("tvQuery").choose("Lapsed Customers");
  from.setText("1/1/26x");
  to.setText("02/02/2026");
  control("tvQuery").choose("Top Customers");
  control("tvQuery").choose("Lapsed Customers");
  assertEqual([from.text, to.text], ["1/1/26x", "02/02/2026"]);
  control("tvQuery").choose("Top Customers");
});

check("a text that is no date is refused there, too, and stays", () => {
  from.setText("31/02/2025");
  answer("Dates are not valid.");
  next.click();
  assertEqual(from.text, "31/02/2025");
  assertEqual(currentTab(), 1);
});

check("a reminder whose dates are both over says so beside them, until one is not", () => {
  const over = control("lblDatesOver");
  control("tvQuery").choose("Based on Reminder Date");
  from.setText("01/02/2026");
  to.setText("03/03/2026");
  assertEqual(over.text, "Both dates are over: this selects reminders from 01/02/2026 to 03/03/2026.");
  to.setText("04/03/2026");
  assertEqual(over.visible, false);
  to.setText("03/03/2026");
  control("tvQuery").choose("Recent Customers");
  assertEqual(over.visible, false, "other queries look back");
});
