// Loading a campaign: every setting comes back in its control.

const title = () => control("frmMain").caption;
const campaign = (name, values) => execute("INSERT INTO Marketing_Campaigns (Campaign_Name, " + Object.keys(values).join(", ") + ") VALUES ('" + name +
  "', " + Object.values(values).map(v => (typeof v === "string" ? "'" + v.replace(/'/g, "''") + "'" : v === null ? "NULL" : v)).join(", ") + ")");
const saved = () => {
  onWindow("frmCampaigns", window => window.control("cmdSave").click());
  control("cmdSave").click();
};

start({before: () => campaign("Everything", {
  CampaignTypeID: 9, Step1: 1, Step2: 1, Step3: 1, Makes: "AUDI, BMW", Date1: "2024-01-31 00:00:00", Date2: "2025-02-28 12:30:00",
  Records: 77, RecordsStart: 12, ReminderID: 2, Marketing: 1, UseCustType: 1, UseEnquirySource: 1, UseLastKnownMileage: 1, UseYearOfManufacture: 1,
  WhenCustType: 1, WhenEnquirySource: 0, WhenLastKnownMileage: 2, WhenYearOfManufacture: 2, ValueCustType: "Trade", ValueEnquirySource: "Radio",
  ValueLastKnownMileage1: "10000", ValueLastKnownMileage2: "90000", ValueYearOfManufacture1: "2001", ValueYearOfManufacture2: "2019",
  Email_Subject: "Hello {firstname}", Email_Body: "Body", SMS: "A text", Campaign_Description: "All that can be stored",
})});
const base = title();

check("the manager opens on its list, with the first campaign chosen and saving out of reach", () => {
  manage((window, list) => {
    const tabs = window.control("ssTabCampaigns");
    assertEqual([tabs.currentTab, [1, 2, 3].map(tab => tabs.tabEnabled(tab))], [2, [false, true, true]]);
    assertEqual(list.columns, ["ID", "Campaign Name", "Last Run", "Created", "Description", "Created By"]);
    const [first] = sql("SELECT * FROM Marketing_Campaigns WHERE ID = " + list.cell(0, "ID"));
    assertEqual([list.selectedIndex, ...shown("txtDesc", "lblCreatedBy")], [0, first.Campaign_Description, "Created By: " + first.Created_By]);
    assertMatch(list.cell(0, "Created"), /^\d\d\/\d\d\/\d{4} \d\d:\d\d$/);
    for (const name of ["cmdLoad", "cmdEdit", "cmdCopy", "cmdDelete"]) assert(window.control(name).enabled, name);
    screenshot("campaign_load");
  });
  assert(control("fraStart").visible, "nothing was loaded");
});

check("every setting comes back in its control; nothing was counted yet", () => {
  walkTo(2);
  assertMatch(control("lblRecords0").text, /\d/);
  load("Everything");
  assertEqual([currentTab(), title(), control("tvQuery").selectedText, control("txtMakes").text],
              [1, base + " - [Everything]", "Specific Makes", "AUDI, BMW"]);
  assertEqual(shown("lblRecords0", "lblRecords1"), ["Records found: ", "Records found: "]);
  control("tvQuery").choose("Based on Reminder Date");
  assertEqual([control("cmbReminder").selectedIndex, ...shown("txtCriteria", "txtCriteriaStart", "dteDate0", "dteDate1")],
              [2, "77", "12", "31/01/2024", "28/02/2025"]);
  selectTab(2);
  assertEqual([0, 1, 2, 3, 4, 5].map(i => control("chkFilter" + i).ticked), [true, true, true, true, true, false]);
  assertEqual([1, 2, 3, 4].map(i => control("cmbFilter" + i).selectedIndex), [1, 0, 2, 2]);
  assertEqual(shown("cmbData1", "cmbData2", "txtMileage0", "txtMileage1", "txtYear0", "txtYear1"),
              ["Trade", "Radio", "10000", "90000", "2001", "2019"]);
  assert(!control("chkIncludeOptedOut").ticked);
  control("cmdRun").click();
  assertEqual(currentTab(), 5, "all steps are complete");
});

check("its rows and counters are those of the campaign; nobody changed it, so it closes without a question", () => {
  const id = sql("SELECT ID FROM Marketing_Campaigns WHERE Campaign_Name = 'Everything'")[0].ID;
  execute("INSERT INTO [Campaign Results] (CampaignID, Lastname, Send_SMS) VALUES (" + id + ", 'Alone', 1)");
  load("Everything");
  selectTab(3);
  assertEqual([control("dbgData").rowCount, control("dbgData").cell(0, "Lastname"), control("lblCount").text], [1, "Alone", "1 records "]);
  selectTab(5);
  assertEqual(control("lblSMS0").text, "SMS's to Send: 1");
  clearMessages();
  assert(closeWindow());
  assertEqual(messages(), []);
  restart();
});

check("a double-click loads too; a new campaign inherits nothing", () => {
  manage((window, list) => list.doubleClickCell(list.rowCount - 1, "Campaign Name"));
  assertMatch(title(), / - \[.+\]$/);
  load("Everything");
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  assertEqual(title(), base);
  control("tvQuery").choose("Top Customers");
  assertEqual(shown("dteDate0", "dteDate1", "txtCriteria", "txtCriteriaStart"), ["", "", "100", "1"]);
  selectTab(2);
  for (let i = 0; i < 6; i++) assert(!control("chkFilter" + i).ticked, "filter " + i);
  assertEqual(control("cmbData1").text, "");
  refused("Step 1 has not been completed.", () => control("cmdRun").click());
});

check("No to the question keeps the campaign", () => {
  load("Everything");
  write({sms: "x"});
  answer("Lose any changes and load an existing campaign?", "No");
  control("mnuLoad").trigger();
  answer("Lose any changes and start a new campaign?", "No");
  control("mnuStart").trigger();
  assertEqual(title(), base + " - [Everything]");
});

check("a date of 1995 or none, and a query that is none, leave the controls alone", () => {
  campaign("Odd", {CampaignTypeID: 0, Date1: "1995-12-31 00:00:00", Date2: null, ReminderID: 99, Records: 1, RecordsStart: 1});
  load("Everything");
  load("Odd");
  assertEqual([control("tvQuery").selectedText, control("cmbReminder").selectedIndex, ...shown("dteDate0", "dteDate1")],
              ["", -1, "31/01/2024", "28/02/2025"]);
});

check("a condition that the lists do not have is reported, and the rest is set up", () => {
  campaign("Strange", {CampaignTypeID: 2, WhenCustType: 42, UseCustType: 1, Records: 5, RecordsStart: 1});
  answer("An unexpected error occured.");
  load("Strange");
  assertMatch(log().join("\n"), "(in SetupCampaignData)");
  selectTab(2);
  assertEqual([control("cmbFilter1").selectedIndex, control("chkFilter1").ticked], [-1, true]);
});

check("a stored number that reads otherwise than it used to is told, until it is saved", () => {
  campaign("Grouped", {CampaignTypeID: 8, UseLastKnownMileage: 1, WhenLastKnownMileage: 0, ValueLastKnownMileage1: "80,000",
                       ValueLastKnownMileage2: "1,000", Records: 100, RecordsStart: 1});
  answer("Last known Mileage: \"80,000\" was read as 80 before and is read as 80000 now.");
  load("Grouped");
  assertEqual(control("txtMileage0").text, "80,000");
  saved();
  assertEqual(count("Marketing_Campaigns WHERE Campaign_Name = 'Grouped' AND ValueLastKnownMileage1 = '80000'"), 1);
  load("Grouped");
});

check("texts of a megabyte are loaded and saved whole", () => {
  const long = "Dear customer, \u00fc \u{1F697}.\r\n".repeat(45000);
  campaign("Long", {CampaignTypeID: 2, Email_Body: long, Campaign_Description: long.slice(0, 200000), Records: 100, RecordsStart: 1});
  load("Long");
  saved();
  const [stored] = sql("SELECT Email_Body, Campaign_Description FROM Marketing_Campaigns WHERE Campaign_Name = 'Long'");
  assert(stored.Email_Body === long && stored.Campaign_Description === long.slice(0, 200000));
});
