// Step 1: the tree, and what each query describes, asks for and sets by itself.

start({clock: "2026-08-31 09:00"});
control("cmdNew").click();

const panels = ["fraDates", "fraMakes", "fraCriteria", "fraReminder", "fraOptionsText", "fraPickStart"];
const choose = query => control("tvQuery").choose(query);
const dates = () => shown("dteDate0", "dteDate1");

check("before a query is chosen, and at a group, there is nothing to run", () => {
  assertEqual(control("tvQuery").selectedText, "Customer specific Queries");
  assertEqual(control("tvQuery").items, ["Customer specific Queries", "All Customers", "Lapsed Customers", "Recent Customers",
    "Top Customers", "Bottom Customers", "Vehicle Specific Queries", "All Vehicles", "Specific Makes", "Based on Reminder Date"]);
  assertEqual(shown("lblPickStart", "lblStepComplete0"), ["<- Pick a start point to see more options", "Click Next> for Filter Options"]);
  assert(control("txtQueryDesc").readOnly && !control("cmdBack0").visible && !control("fraType").visible);
  choose("All Customers");
  choose("Vehicle Specific Queries");
  assertEqual(shown("txtQueryDesc", "lblQueryOptions", "lblInfo1"), ["Vehicle Specific Queries",
    "Please select a Query to see the options that are available.", "       Please select a Customer or Vehicle related query."]);
  assertEqual([panels.filter(name => control(name).visible), control("cmdNext0").enabled], [["fraPickStart"], false]);
});

const none = "No Options available. Please click Next to apply some Filters.";
const between = ["Invoiced between", "From:", "To:"];
const queries = [
  ["All Customers", "All customers in the system.", none, []],
  ["All Vehicles", "All vehicles in the system (which have an associated customer).", none, []],
  ["Top Customers", "Top Customers based on Turnover for a specified period. e.g Top customers for the past 12 months, or Top customers " +
    "of all time.", "Specify how many Top customers and an optional date range e.g Top 25 over last 12 months.",
    ["fraDates", "fraCriteria"], between],
  ["Bottom Customers", "Least spending Customers based on Turnover for a specified period. e.g Least spending customers for the past 12 " +
    "months, or Least spending customers of all time.", "Specify how many customers and an optional date range e.g Least spending 25 over " +
    "last 12 months.", ["fraDates", "fraCriteria"], between],
  ["Recent Customers", "Recent Customers i.e Customers who have been invoiced recently. e.g All customers who have been in in the last 12 " +
    "months.", "Customers seen between these dates.", ["fraDates"], between],
  ["Based on Reminder Date", "All vehicles with a specific Recall Date. e.g All Vehicles with an MOT Due date in December 2026.",
    "Choose the Reminder and the Recall Due Date Range.", ["fraDates", "fraReminder"], ["Recall Date Range", "From:", "To:"]],
  ["Specific Makes", "All vehicles which are of a specific Make. e.g All vehicles which are an Audi or BMW.",
    "Choose the Makes to include in the query.", ["fraMakes"]],
  ["Lapsed Customers", "Lapsed Customers i.e Customers where no invoices have been generated for a certain amount of time. e.g Customer " +
    "who have not been in for at least 12 months, excluding any who have not been in for 2 years or more.",
    "Customers not seen since Date 1, ignoring any records after Date 2.", ["fraDates", "fraOptionsText"],
    ["Invoiced Date", "Last Seen Start:", "Last Seen End:"]],
];
check("each query has its words and its options", () => queries.forEach(([query, description, options, visible, captions]) => {
  choose(query);
  assertEqual(shown("txtQueryDesc", "lblQueryOptions", "lblInfo1"),
              [description, options, "       Please complete the Criteria on the right and then click Next >"]);
  assertEqual([panels.filter(name => control(name).visible), control("cmdNext0").enabled], [visible, true], query);
  if (captions) assertEqual(shown("fraDates", "lblDate0", "lblDate1"), captions);
  screenshot("step1_" + query.replace(/ /g, "_"));
}));

check("lapsed customers come with dates, a worked example and a line that says what they select, which follows every edit", () => {
  assertEqual(dates(), ["31/08/2026", "28/02/2026"], "half a year back, at the end of a shorter month");
  assertEqual(control("lblOptionsExample").text, "For Customers not seen in the last 6 months, set the Start to be 31/08/2026 and the " +
                                                 "Last Seen Start Date to be 28/02/2026");
  control("dteDate1").setText("31/01/2026");
  assertEqual(control("lblQuerySelects").text,
              "Customers with an invoice before 31/01/2026 and none from then to 31/08/2026; later invoices do not count.");
  screenshot("step1_selects");
  control("dteDate1").setText("31/02/2026");
  assertEqual(control("lblQuerySelects").text, "Needs two dates, both from 1990 on.");
});

check("dates, numbers and reminder carry over from query to query, makes do not", () => {
  fill({dteDate0: "01/05/2026", dteDate1: ""});
  choose("Top Customers");
  assertEqual(shown("lblCriteria", "lblCriteriaStart", "txtCriteria", "txtCriteriaStart"), ["Records to return:", "Start at record:", "100", "1"]);
  fill({txtCriteria: "12", txtCriteriaStart: "3"});
  choose("Based on Reminder Date");
  control("cmbReminder").choose(1);
  choose("Specific Makes");
  control("txtMakes").setText("Lada");
  choose("Bottom Customers");
  assertEqual(shown("txtCriteria", "txtCriteriaStart"), ["12", "3"]);
  choose("Based on Reminder Date");
  assertEqual(control("cmbReminder").selectedText, "Service Reminder");
  choose("Specific Makes");
  assertEqual(control("txtMakes").text, "");
  choose("Lapsed Customers");
  assertEqual(dates(), ["01/05/2026", ""], "only an empty first date brings the defaults");
});

check("a garage that uses the platform chooses a campaign type as well; reminders carry the names that the garage gave them", () => {
  const names = ["MOT Reminder", "Service Reminder", "Recall 3: Cambelt", "Recall 4: Air Conditioning", "Recall 5: Brake Fluid", "Recall 6: Warranty"];
  assertEqual(control("cmbReminder").items, names);
  choose("Based on Reminder Date");
  option("Using_Vrelo", 1);  // which becomes known when the settings are read again
  option("Reminder3Name", "Tyres");
  answer("Step 1 has not been completed.");
  control("cmdRun").click();
  assertEqual([control("fraType").caption, control("cmbType").items],
              ["Campaign Type", ["Reminders", "Advice Notices", "Promotions", "Other"]]);
  assertEqual(control("cmbReminder").items[2], "Recall 3: Tyres");
  screenshot("step1_campaign_type");
  control("tvQuery").press("Ctrl+Space");
  assertEqual(control("tvQuery").selectedText, "Based on Reminder Date", "the chosen query stays chosen");
});
