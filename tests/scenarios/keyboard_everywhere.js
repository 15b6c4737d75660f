// Tab reaches everything that can be used, in the order of the eye; it has a name and, where it has a caption, a
// letter. F1 says what a page does.

const fine = where => assertEqual(keyboardFaults(), [], where);
const helps = (part, from) => {
  control(from).press("F1");
  fine("help");
  assertMatch(control("txtHelp").text, part);
  press("Escape");
  assertEqual([focusedControl(), exists("frmHelp")], [from.split(".").pop(), false]);
};
const queries = () => control("tvQuery").items.forEach(query => fine(query + control("tvQuery").choose(query).kind));

check("the boat edition's first pages", () => {
  start({edition: "boat"});
  control("cmdNew").click();
  queries();
  selectTab(2);
  fine("filters");
  press("F1");
  assertNoMatch(control("txtHelp").text, /vehicle|mileage/i);
  answer("have not been saved", "Yes");
  closeWindow();
});

start({sandbox: true, options: {Using_Vrelo: true, Only_Send_Comms_When_Opted_In: false}});

check("the start panel, queries, filters and results; tips and help say what happens to the rows", () => {
  fine("start panel");
  helps("Ctrl+N starts a new one", "cmdLoad");
  control("cmdNew").click();
  queries();
  helps("Choose in the tree", "tvQuery");
  walkTo(2, "All Vehicles");
  fill({cmbFilter3: "Between", cmbFilter4: "Between"});
  fine("filters");
  helps(control("cmbFilter3").toolTip, "cmbFilter3");
  control("cmdNext1").click();
  fine("results");
  control("cmbSendBy1").choose("No Customers");
  assertEqual(control("cmbSendBy1").toolTip, "Unticks Send Email in every row.");
  helps(control("cmbSendBy1").toolTip, "cmbSendBy1");
});

check("the templates with their previews, an input box and the window of an e-mail that failed", () => {
  selectTab(4);
  control("rtfLetter").press("Ctrl+F");
  fine("letter");
  press("Alt+A");
  fine("examples");
  press("Alt+X");
  control("txtSMS").type("Dear {contact}");
  control("cmdTestSMS0").click();
  fine("text message");
  answerInput(() => fine("input box") || helps("Enter your mobile phone number", "txtInput") || null);
  control("cmdTestSMS1").click();
  press("Alt+E");
  control("txtEmailSubject").type("MOT\tDear {contact}");
  control("cmdTestEmail0").click();
  fine("e-mail");
  helps("Ctrl+Tab puts a tab into the letter", "txtEmailBody");
  steer({recipients: {"me@example.com": "drop"}});
  answerInput("me@example.com");
  onMessage(box => box.buttons.includes("Yes") ? "Yes" : "OK");
  control("cmdTestEmail1").click();
  onMessage(null);
  control("frmSendEmail.cmdClose").focus();
  fine("window of an e-mail that failed");
  helps("until you close the window", "frmSendEmail.cmdClose");
  control("frmSendEmail.cmdClose").click();
});

check("the last step with its list of failures", () => {
  execute("UPDATE [Campaign Results] SET Processed = 1; UPDATE [Campaign Results] SET Processed = 0, Send_SMS = 1, Mobile = '07700900123' WHERE RecordID = (SELECT min(RecordID) FROM [Campaign Results])");
  steer({numbers: {"07700900123": "code 33"}});
  selectTab(5);
  answer("approximately", "Yes");
  control("cmdSendSMS").click();
  control("lstTroubles").choose(0);
  fine("process");
  helps("may have arrived or not", "txtProcessResults");
});

check("the campaign manager and the about box", () => {
  onWindow("frmCampaigns", manager => {
    fine("save");
    helps("F2 edits", "txtName");
    manager.control("txtName").type("Keys\n");
  });
  control("cmdSave").click();
  onWindow("frmCampaigns", manager => {
    fine("campaigns");
    press("Alt+H");
    fine("history");
    press("Alt+X");
    manager.control("cmdEdit").click();
    fine("edit");
    manager.close();
  });
  control("mnuLoad").trigger();
  onWindow("frmAbout", () => fine("about") || helps("Which version", "cmdOK") || press("Return"));
  control("mnuAbout").click();
});
