// Step 3: the frame "Send Methods" sets the flags of all rows of the campaign by rules.

const kFlags = ["Send_SMS", "Send_Email", "Send_Letter"];
const rowsWith = condition => sql("SELECT Customer FROM [Campaign Results] WHERE CampaignID < 0 AND " + condition + " ORDER BY Customer");
const kHasMobile = "Mobile <> '' AND length(Mobile) > 5";
const kHasEmail = "Email <> '' AND instr(Email, '@') > 1";

function begin(options) {
  start(options);
  control("cmdNew").click();
  control("tvQuery").choose("All Customers");
  if (options) control("cmbType").choose(0);
  control("cmdNext0").click();
  control("cmdNext1").click();
  execute("UPDATE [Campaign Results] SET Email = '@x' WHERE RecordID % 7 = 0; UPDATE [Campaign Results] SET Mobile = '123' WHERE RecordID % 5 = 0");
}

// Rules by position; null leaves a list alone.
function apply(sms, email, letter) {
  [sms, email, letter].forEach((rule, i) => { if (rule !== null) control("cmbSendBy" + i).choose(rule); });
  const earlier = calls().length;
  control("cmdSetSendMethods").click();
  return calls().slice(earlier).filter(call => /^UPDATE/.test(call));
}

begin();
const grid = control("dbgData");
const total = grid.rowCount;

check("the lists offer the rules, with nothing chosen", () => {
  assertEqual(control("fraSendMethods").caption, "Send Methods");
  assertEqual([0, 1, 2].map(i => control("lblSendBy" + i).text).sort(), ["By Email", "By Letter", "By SMS"]);
  assertEqual(control("cmbSendBy0").items, ["All Customers with a Mobile No", "No Customers", "All except when Letter or Email",
    "All except when Letter", "All except when Email", "All customers without an Email Address"]);
  assertEqual(control("cmbSendBy1").items, ["All Customers with an Email Address", "No Customers", "All except when Letter or SMS",
    "All except when Letter", "All except when SMS"]);
  assertEqual(control("cmbSendBy2").items, ["All Customers", "No Customers", "All except when Email or SMS", "All except when Email",
    "All except when SMS"]);
  for (const i of [0, 1, 2]) {
    const list = control("cmbSendBy" + i);
    assertEqual([list.selectedIndex, list.placeholder], [-1, "(no change)"]);
  }
});

check("without a rule nothing is changed, and the grid is read again", () => {
  execute("UPDATE [Campaign Results] SET Firstname = 'Changed' WHERE RecordID = " + grid.cell(0, "RecordID"));
  assertEqual(apply(null, null, null), []);
  assertEqual(grid.cell(0, "Firstname"), "Changed");
});

check("rules set the flags, empty the lists, and show in the grid and the counters without a word", () => {
  apply(0, 0, 0);
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith(kHasMobile));
  assertEqual(rowsWith("Send_Email = 1"), rowsWith(kHasEmail));
  assertEqual(rowsWith("Send_Letter = 1").length, total);
  for (const i of [0, 1, 2]) assertEqual(control("cmbSendBy" + i).selectedIndex, -1);
  assertEqual(grid.cell(0, "Send Letter"), "Yes");
  assertEqual(messages(), []);
  selectTab(5);
  assertEqual(control("lblLetters").text, "Letters to Generate: " + total);
  assertEqual(control("lblSMS0").text, "SMS's to Send: " + rowsWith(kHasMobile).length);
  selectTab(3);
});

check("a list without a rule leaves its flag alone", () => {
  const texts = rowsWith("Send_SMS = 1");
  apply(null, 1, null);
  assertEqual(rowsWith("Send_Email = 1"), []);
  assertEqual(rowsWith("Send_SMS = 1"), texts);
});

check("texts, then e-mails, then letters: each rule sees what those before it did", () => {
  apply(1, 0, 1);
  const statements = apply(4, 1, 2);  // texts are decided on the e-mails as they were before
  assertEqual(statements.map(text => /SET (\w+)/.exec(text)[1]), kFlags);
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith("NOT ifnull(" + kHasEmail + ", 0)"));
  assertEqual(rowsWith("Send_Email = 1"), []);
  assertEqual(rowsWith("Send_Letter = 1"), rowsWith(kHasEmail));
});

check("texts can go to those without an e-mail address", () => {
  apply(5, null, null);
  const without = rowsWith("Mobile <> '' AND (Email = '' OR length(Email) < 6 OR instr(Email, '@') < 2)");
  assert(without.length > 0);
  assertEqual(rowsWith("Send_SMS = 1").filter(row => without.some(w => w.Customer === row.Customer)), without);
});

check("other campaigns are left alone", () => {
  execute("INSERT INTO [Campaign Results] (CampaignID, Customer) VALUES (1, 1)");
  apply(2, 2, 0);
  assertEqual(sql("SELECT Send_Letter AS f FROM [Campaign Results] WHERE CampaignID = 1 AND Customer = 1")[0].f, 0);
});

check("a rule that fails is reported, and those of the other lists are applied", () => {
  apply(1, 1, 1);
  failProcedure("UPDATE", "flags are locked");
  for (let i = 0; i < 3; i++) answer("flags are locked");
  apply(0, 0, 0);
  failProcedure("UPDATE", "");
  assertEqual(rowsWith("Send_Letter = 1"), []);
  apply(null, null, 0);
  assertEqual(rowsWith("Send_Letter = 1").length, total);
});

for (const strict of [false, true]) {
  check("consent counts for letters, and for the others when the garage says so: " + strict, () => {
    begin({options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: strict}});
    apply(0, 0, 0);
    const consent = (has, column) => rowsWith(has + (strict ? " AND " + column + " = 1" : ""));
    assertEqual(rowsWith("Send_SMS = 1"), consent(kHasMobile, "Can_Send_SMS"));
    assertEqual(rowsWith("Send_Email = 1"), consent(kHasEmail, "Can_Send_Email"));
    assertEqual(rowsWith("Send_Letter = 1"), rowsWith("Can_Send_Letter = 1"));
    assert(rowsWith("Send_Letter = 1").length < rowsWith("1 = 1").length);
  });
}

check("while the settings cannot be read nothing is set and the choices stay; once they can, it goes on", () => {
  begin({options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: false}});
  failProcedure("proc_selp__Option", "no settings today");
  acceptNotices();
  control("cmdRun").click();
  acceptNotices(false);
  for (const text of ["no settings today", "Error reading all settings data.", "The company's settings could not be read"]) answer(text);
  assertEqual(apply(0, null, 0), []);
  assertEqual([0, 1, 2].map(i => control("cmbSendBy" + i).selectedIndex), [0, -1, 0]);
  failProcedure("proc_selp__Option", "");
  control("cmdSetSendMethods").click();
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith(kHasMobile));
});

check("a rule that was chosen and not applied does not reach the next campaign", () => {
  control("cmbSendBy2").choose(0);
  acceptNotices();
  onMessage(box => /Lose any changes/.test(box.text) ? "Yes" : undefined);
  control("mnuStart").trigger();
  selectTab(3);
  assertEqual(control("cmbSendBy2").selectedIndex, -1);
});
