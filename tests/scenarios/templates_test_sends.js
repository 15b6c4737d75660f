// Step 4: test messages to oneself that are called off, refused or fail; what was typed stays.

start({sandbox: true, options: {Reminder_From_Name: "", Reminder_From_Email: "  "}});
control("cmdNew").click();
write({sms: "Dear {contact}", subject: "MOT", body: "Dear {contact}"});
const page = name => control("ssTabLetters").selectTab(name);
control("cmdTestEmail0").click();
page("Text Message");
control("cmdTestSMS0").click();

const set = (name, value) => {
  option(name, value);
  acceptNotices();  // "Run" also says which step is missing
  control("cmdRun").click();
  acceptNotices(false);
  selectTab(4);
};

// Which page; what is typed into the input box (null: Cancel); the boxes that follow, each with its answer; what is
// done before.
const kEmailFails = "QBX could not send email with the current settings.";
const cases = {
  "no sender's name": ["Email", undefined, [["EMail Send Settings have not been configured on the E-Reminder Send Settings Tab.\n\nYou need to configure"]]],
  "a sender of blanks": ["Email", "me@example.com", [["Continue and send a test email to: me@example.com", "Yes"],
    ["E-Mails cannot be sent because your Email address has not been specified on the QBX System Settings screen / E-Reminders Tab."]],
    () => set("Reminder_From_Name", "Hartley Motors")],
  "Cancel": ["Email", null, [], () => set("Reminder_From_Email", "office@example.com")],
  "blanks": ["Text Message", "  ", []],
  "No": ["Text Message", "07700900999", [["Continue and send a test SMS Message to: 07700900999", "No"]]],
  "an address that is refused": ["Email", "refused@example.com", [["refused@example.com", "Yes"], [kEmailFails, "No"],
    [/^Test Email could not be sent\. [^]*\n\nAdditional Information: [^]*550/]]],
  "a refusal that is looked at": ["Email", "refused@example.com", [["refused@example.com", "Yes"], [kEmailFails, "Yes"], ["Test Email could not be sent."]]],
  "a number that is refused": ["Text Message", "07700900933", [["07700900933", "Yes"],
    ["SMS Provider reported Insufficient Credits.\n\nIf you are unsure about this message,\nplease contact QBX on the support line to report this."],
    ["Test SMS Text Message could not be sent. Please check Internet Connection is active or Send Settings are configured correctly."]]],
};

for (const name of Object.keys(cases)) {
  check("nothing is sent: " + name, () => {
    const [where, typed, boxes, before] = cases[name];
    if (before) before();
    page(where);
    if (typed !== undefined) answerInput(typed);
    boxes.forEach(box => answer(...box));
    clearMessages();
    control(where === "Email" ? "cmdTestEmail1" : "cmdTestSMS1").click();
    assertEqual(messages().length, boxes.length);
    assert([texts(), mails()].every(list => list.every(one => one.outcome !== "accepted")));
    if (typed !== undefined) assertEqual(inputBoxes().slice(-1)[0].caption, where === "Email" ? "Send Test Email" : "Send Test SMS from Hartley");
    assertEqual(shown("txtSMS", "txtEmailSubject", "txtEmailBody"), ["Dear {contact}", "MOT", "Dear {contact}"]);
  });
}

check("the window of a failed e-mail stays with the error until it is closed", () => {
  assertMatch(control("frmSendEmail.txtMsg").text, "550");
  control("frmSendEmail.cmdClose").click();
  assertEqual(events().filter(event => /Test SMS|SendEmail/.test(event.key + event.details)).map(event => [event.type, event.table]),
              [[6, 0], [6, 0], [6, 7]]);
});
