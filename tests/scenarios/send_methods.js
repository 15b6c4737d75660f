// Step 3: the frame "Send Methods" sets the flags of all rows of the campaign by rules.

const rowsWith = condition => sql("SELECT Customer FROM [Campaign Results] WHERE CampaignID < 0 AND " + condition + " ORDER BY Customer");
const kHasMobile = "Mobile <> '' AND Len(Mobile) > 5";
const kHasEmail = "Email <> '' AND CharIndex('@', Email) > 1";
const chosen = () => [0, 1, 2].map(i => control("cmbSendBy" + i).selectedIndex);

function begin(options) {
  start(options);
  walkTo(3);
  execute("UPDATE [Campaign Results] SET Email = '@x' WHERE RecordID % 7 = 0; UPDATE [Campaign Results] SET Mobile = '123' WHERE RecordID % 5 = 0");
}

// Rules by position; null leaves a list alone.
function apply(...rules) {
  rules.forEach((rule, i) => { if (rule !== null) control("cmbSendBy" + i).choose(rule); });
  const earlier = calls().length;
  control("cmdSetSendMethods").click();
  return calls().slice(earlier).filter(call => /^UPDATE/.test(call)).map(call => /SET (\w+)/.exec(call)[1]);
}

begin();
const grid = control("dbgData");
const total = grid.rowCount;

check("the lists offer the rules, with nothing chosen; without a rule the grid is only read again", () => {
  assertEqual(shown("fraSendMethods", "lblSendBy0", "lblSendBy1", "lblSendBy2").sort(), ["By Email", "By Letter", "By SMS", "Send Methods"]);
  assertEqual([0, 1, 2].map(i => control("cmbSendBy" + i).items), [
    ["All Customers with a Mobile No", "No Customers", "All except when Letter or Email", "All except when Letter", "All except when Email",
     "All customers without an Email Address"],
    ["All Customers with an Email Address", "No Customers", "All except when Letter or SMS", "All except when Letter", "All except when SMS"],
    ["All Customers", "No Customers", "All except when Email or SMS", "All except when Email", "All except when SMS"]]);
  assertEqual([chosen(), control("cmbSendBy0").placeholder], [[-1, -1, -1], "(no change)"]);
  execute("UPDATE [Campaign Results] SET Firstname = 'Changed' WHERE RecordID = " + grid.cell(0, "RecordID"));
  assertEqual([apply(), grid.cell(0, "Firstname")], [[], "Changed"]);
});

check("rules set the flags, empty the lists, and show in the grid and the counters without a word; other campaigns are left alone", () => {
  execute("INSERT INTO [Campaign Results] (CampaignID, Customer) VALUES (1, 1)");
  apply(0, 0, 0);
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith(kHasMobile));
  assertEqual(rowsWith("Send_Email = 1"), rowsWith(kHasEmail));
  assertEqual(rowsWith("Send_Letter = 1").length, total);
  assertEqual([chosen(), grid.cell(0, "Send Letter"), messages()], [[-1, -1, -1], "Yes", []]);
  assertEqual(count("[Campaign Results] WHERE CampaignID = 1 AND 1 IN (Send_SMS, Send_Email, Send_Letter)"), 0);
  selectTab(5);
  assertEqual(shown("lblLetters", "lblSMS0"), ["Letters to Generate: " + total, "SMS's to Send: " + rowsWith(kHasMobile).length]);
  selectTab(3);
});

check("texts, then e-mails, then letters: each rule sees what those before it did; a list without a rule leaves its flag alone", () => {
  apply(1, null, 1);
  // Texts are decided on the e-mails as they were before.
  assertEqual(apply(4, 1, 2), ["Send_SMS", "Send_Email", "Send_Letter"]);
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith("NOT (" + kHasEmail + ")"));
  assertEqual(rowsWith("Send_Email = 1"), []);
  assertEqual(rowsWith("Send_Letter = 1"), rowsWith(kHasEmail));
});

check("a rule that fails is reported, and those of the other lists are tried", () => {
  apply(1, 1, 1);
  failing("UPDATE", "flags are locked", () => {
    for (let i = 0; i < 2; i++) answer("flags are locked");
    apply(0, 0, 0);
  });
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
  failing("proc_selp__Option", "no settings today", () => {
    acceptNotices();
    control("cmdRun").click();
    assertEqual(apply(0, null, 0), []);
    acceptNotices(false);
  });
  assertEqual(lastMessage().text.includes("The company's settings could not be read"), true);
  assertEqual(chosen(), [0, -1, 0]);
  control("cmdSetSendMethods").click();
  assertEqual(rowsWith("Send_SMS = 1"), rowsWith(kHasMobile));
});

check("a rule that was chosen and not applied does not reach the next campaign", () => {
  control("cmbSendBy2").choose(0);
  answer("Lose any changes and start a new campaign?", "Yes");
  control("mnuStart").trigger();
  selectTab(3);
  assertEqual(chosen(), [-1, -1, -1]);
});
