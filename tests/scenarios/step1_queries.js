// Step 1: the tree, and what each query describes, asks for and sets by itself.

start({clock: "2026-08-31 09:00"});
control("cmdNew").click();

const panels = ["fraDates", "fraMakes", "fraCriteria", "fraReminder", "fraOptionsText", "fraPickStart"];
const shown = () => panels.filter(name => control(name).visible);
const choose = query => control("tvQuery").choose(query);
const captions = () => ["fraDates", "lblDate0", "lblDate1"].map(name => control(name).text);
const dates = () => [control("dteDate0").text, control("dteDate1").text];

check("before a query is chosen", () => {
  assertEqual(control("tvQuery").selectedText, "Customer specific Queries");
  assertEqual(control("lblQueryOptions").text, "Please select a Query to see the options that are available.");
  assertEqual(control("lblInfo1").text, "       Please select a Customer or Vehicle related query.");
  assertEqual(control("lblPickStart").text, "<- Pick a start point to see more options");
  assertEqual(control("lblStepComplete0").text, "Click Next> for Filter Options");
  assertEqual(shown(), ["fraPickStart"]);
  assert(control("txtQueryDesc").readOnly);
  assert(!control("cmdNext0").enabled);
  assert(!control("cmdBack0").visible, "there is no step before the first");
  assert(!control("fraType").visible);
});

check("the tree", () => {
  assertEqual(control("tvQuery").items, ["Customer specific Queries", "All Customers", "Lapsed Customers", "Recent Customers",
    "Top Customers", "Bottom Customers", "Vehicle Specific Queries", "All Vehicles", "Specific Makes", "Based on Reminder Date"]);
});

["Customer specific Queries", "Vehicle Specific Queries"].forEach(group => check(group + " is a group, not a query", () => {
  choose("All Customers");
  choose(group);
  assertEqual(control("txtQueryDesc").text, group.replace("specific", "Specific"));
  assertEqual(control("lblQueryOptions").text, "Please select a Query to see the options that are available.");
  assertEqual(control("lblInfo1").text, "       Please select a Customer or Vehicle related query.");
  assertEqual(shown(), ["fraPickStart"]);
  assert(!control("cmdNext0").enabled);
}));

const none = "No Options available. Please click Next to apply some Filters.";
[
  ["All Customers", "All customers in the system.", none, []],
  ["All Vehicles", "All vehicles in the system (which have an associated customer).", none, []],
  ["Top Customers", "Top Customers based on Turnover for a specified period. e.g Top customers for the past 12 months, or Top customers " +
    "of all time.", "Specify how many Top customers and an optional date range e.g Top 25 over last 12 months.",
    ["fraDates", "fraCriteria"], ["Invoiced between", "From:", "To:"]],
  ["Bottom Customers", "Least spending Customers based on Turnover for a specified period. e.g Least spending customers for the past 12 " +
    "months, or Least spending customers of all time.", "Specify how many customers and an optional date range e.g Least spending 25 over " +
    "last 12 months.", ["fraDates", "fraCriteria"], ["Invoiced between", "From:", "To:"]],
  ["Recent Customers", "Recent Customers i.e Customers who have been invoiced recently. e.g All customers who have been in in the last 12 " +
    "months.", "Customers seen between these dates.", ["fraDates"], ["Invoiced between", "From:", "To:"]],
  ["Based on Reminder Date", "All vehicles with a specific Recall Date. e.g All Vehicles with an MOT Due date in December 2026.",
    "Choose the Reminder and the Recall Due Date Range.", ["fraDates", "fraReminder"], ["Recall Date Range", "From:", "To:"]],
  ["Specific Makes", "All vehicles which are of a specific Make. e.g All vehicles which are an Audi or BMW.",
    "Choose the Makes to include in the query.", ["fraMakes"]],
  ["Lapsed Customers", "Lapsed Customers i.e Customers where no invoices have been generated for a certain amount of time. e.g Customer " +
    "who have not been in for at least 12 months, excluding any who have not been in for 2 years or more.",
    "Customers not seen since Date 1, ignoring any records after Date 2.", ["fraDates", "fraOptionsText"],
    ["Invoiced Date", "Last Seen Start:", "Last Seen End:"]],
].forEach(([query, description, options, visible, dateCaptions]) => check(query, () => {
  choose(query);
  assertEqual(control("txtQueryDesc").text, description);
  assertEqual(control("lblQueryOptions").text, options);
  assertEqual(control("lblInfo1").text, "       Please complete the Criteria on the right and then click Next >");
  assertEqual(shown(), visible);
  if (dateCaptions) assertEqual(captions(), dateCaptions);
  assert(control("cmdNext0").enabled);
  screenshot("step1_" + query.replace(/ /g, "_"));
}));

check("lapsed customers come with dates and a worked example", () => {
  assertEqual(dates(), ["31/08/2026", "28/02/2026"], "half a year back, at the end of a shorter month");
  assertEqual(control("lblOptionsExample").text, "For Customers not seen in the last 6 months, set the Start to be 31/08/2026 and the " +
                                                 "Last Seen Start Date to be 28/02/2026");
});

check("a line under the options says what the query selects, and follows every edit", () => {
  const says = text => assertEqual(control("lblQuerySelects").text, text);
  says("Customers with an invoice before 28/02/2026 and none from then to 31/08/2026; later invoices do not count.");
  control("dteDate1").setText("31/01/2026");
  says("Customers with an invoice before 31/01/2026 and none from then to 31/08/2026; later invoices do not count.");
  screenshot("step1_selects");
  control("dteDate1").setText("31/02/2026");
  says("Needs two dates, both from 1990 on.");
  control("dteDate1").setText("28/02/2026");
  choose("Vehicle Specific Queries");
  says("");
  choose("Lapsed Customers");
});

check("dates that stand there are kept, and carry over from query to query", () => {
  control("dteDate0").setText("01/05/2026");
  control("dteDate1").setText("");
  choose("Recent Customers");
  assertEqual(dates(), ["01/05/2026", ""]);
  choose("Lapsed Customers");
  assertEqual(dates(), ["01/05/2026", ""], "only an empty first date brings the defaults");
  control("dteDate0").setText("");
  choose("Recent Customers");
  choose("Lapsed Customers");
  assertEqual(dates(), ["31/08/2026", "28/02/2026"]);
});

check("numbers and reminder carry over, makes do not", () => {
  choose("Top Customers");
  assertEqual(control("lblCriteria").text, "Records to return:");
  assertEqual(control("lblCriteriaStart").text, "Start at record:");
  assertEqual([control("txtCriteria").text, control("txtCriteriaStart").text], ["100", "1"]);
  control("txtCriteria").setText("12");
  control("txtCriteriaStart").setText("3");
  choose("Based on Reminder Date");
  control("cmbReminder").choose(1);
  choose("Specific Makes");
  control("txtMakes").setText("Lada");
  choose("Bottom Customers");
  assertEqual([control("txtCriteria").text, control("txtCriteriaStart").text], ["12", "3"]);
  choose("Based on Reminder Date");
  assertEqual(control("cmbReminder").selectedText, "Service Reminder");
  choose("Specific Makes");
  assertEqual(control("txtMakes").text, "");
});

check("the reminders carry the names that the garage gave them", () => {
  assertEqual(control("cmbReminder").items, ["MOT Reminder", "Service Reminder", "Recall 3: Cambelt", "Recall 4: Air Conditioning",
                                             "Recall 5: Brake Fluid", "Recall 6: Warranty"]);
  start({options: {MOT_Reminder_Name: " ", Reminder3Name: "Tyres", Reminder6Name: ""}});
  control("cmdNew").click();
  assertEqual(control("cmbReminder").items.filter((_, index) => [0, 2, 5].includes(index)), ["MOT Reminder", "Recall 3: Tyres", "Recall 6: "]);
});

check("a garage that uses the platform chooses a campaign type as well", () => {
  start({options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: false}});
  control("cmdNew").click();
  assertEqual(control("fraType").caption, "Campaign Type");
  assertEqual(control("cmbType").items, ["Reminders", "Advice Notices", "Promotions", "Other"]);
  choose("All Customers");
  screenshot("step1_campaign_type");
  answer("Please select a Campaign Type.");
  control("cmdNext0").click();
  assertEqual(lastMessage().icon, "information");
  control("cmbType").choose("Promotions");
  control("cmdNext0").click();
  assertEqual(currentTab(), 2);
});

check("the chosen query stays chosen", () => {
  selectTab(1);
  control("tvQuery").press("Ctrl+Space");
  assertEqual(control("tvQuery").selectedText, "All Customers");
  assert(control("cmdNext0").enabled);
});

check("the campaign type and the reminder names follow options that become known later", () => {
  start();
  control("cmdNew").click();
  control("tvQuery").choose("Based on Reminder Date");
  assert(!control("fraType").visible);
  option("Using_Vrelo", 1);
  option("Reminder3Name", "Cambelt");
  answer("Step 1 has not been completed.");
  control("cmdRun").click();
  assert(control("fraType").visible);
  assertEqual(control("cmbReminder").items[2], "Recall 3: Cambelt");
});
