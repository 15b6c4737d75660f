// Step 5: what stands in the way of a mailshot is said in order, one thing at a time; then the question about the
// credits.

start({sandbox: true, ini: {Service: {HttpTimeout: "1", SupportTelephone: "01234 567"}},
       options: {QBX_Internal: true, Reminder_From_Email: "  ", SMS_ClientPassword: " "}});
walkTo(4);
keepRows(3);
selectTab(5);

const send = () => control("cmdSendSMS").click();
const lastLines = n => control("txtProcessResults").text.trim().split("\n").slice(-n).map(line => line.slice(20));
const reached = () => [texts().length, mails().length];
const set = (name, value) => {
  option(name, value);
  control("cmdRun").click();  // which reads the settings again
};

// What is said, with which icon, and how a person mends it.
const obstacles = [
  ["Need to be logged on as Manager to perform this function.", "exclamation", () => set("QBX_Internal", false)],
  ["No SMS or Emails to process. No customers in the results list are selected", "information",
   () => execute("UPDATE [Campaign Results] SET Send_SMS = 1, Send_Email = 1")],
  ["You haven't entered an SMS Text Message Template on the Letter Templates Tab.", "exclamation", () => write({sms: "Dear {contakt}, your MOT is due."})],
  ["You haven't entered an Email Message Template on the Letter Templates Tab.", "exclamation", () => write({body: "Dear {contact}, your MOT is due."})],
  ["E-Mails cannot be sent because your Email address has not been specified", "exclamation",
   () => set("Reminder_From_Email", "office@example.com")],
  ["The SMS Account Username or Password have not been set", "exclamation", () => {
    set("SMS_ClientPassword", "secret");
    steer({credit_query: "silence"});
  }],
  ["An unexpected error occured.", "exclamation", () => steer({credit_query: "empty"})],
  [/Unable to determine the amount of SMS[^]*Please call QBX on 01234 567 if you require assistance\.$/, "exclamation", () => {
    steer({credit_query: "ok"});
    credits(0);
  }],
  ["There are no Text Message credits remaining on your account.", "exclamation", () => credits(2)],
  [/There is not enough Text Message credits [^]*\n\n2 available, but require: 3$/, "exclamation", () => credits(100)],
];
check("a run is refused for one thing after the other", () => {
  for (const [text, icon, mend] of obstacles) {
    selectTab(5);
    refused(text, send, icon);
    assertEqual([control("cmdSendSMS").enabled, control("cmdPause").enabled, control("pbEmail").visible], [true, false, false]);
    mend();
  }
  assertEqual(reached(), [0, 0]);
});

check("the logs name what was refused", () => {
  assertEqual(marketingEvents().filter(event => event.event === "Not a Manager User").length, 1);
  assertEqual(lastLines(3), ["Processing Stopped - no Text Messages available (0)", "Processing 3 SMS Texts and 3 Emails",
                             "Processing Stopped - not enough Text Messages available (2)"]);
  const lines = [0, 2].map(n => "SMS Credits Remaining / Rows to Process: " + n + " / 3");
  assertEqual(events().filter(event => event.key === "SMS-CREDITS").map(event => [event.type, event.table, event.details]),
              lines.map(line => [7, 0, line]));
});

check("a campaign that another desk deleted is not sent until it is saved again", () => {
  saveAs("Soon gone");
  execute("DELETE FROM Marketing_Campaigns WHERE Campaign_Name = 'Soon gone'");
  for (const act of [send, () => control("cmdGenerateLetters").click()])
    refused("This campaign was deleted at another desk, so nothing was sent.", act);
  answer("The campaign is no longer stored.");
  answer("Save it as a new Campaign?", "Yes");
  saveAs("Here again");
});

check("templates that would surprise are asked about last, and No sends nothing", () => {
  answer("approximately 3 SMS credits", "Yes");
  answer("The e-mail has no subject.\n{contakt} is no merge field and goes out as it stands.\n\nSend all the same?", "No");
  send();
  assertEqual([lastMessage().defaultButton, reached()], ["No", [0, 0]]);
  write({sms: "Dear {contact}, your MOT is due.", subject: "MOT"});
  selectTab(5);
});

check("the credits: Cancel sends nothing, No the e-mails alone, Yes what is left", () => {
  const question = "This campaign is going to use approximately 3 SMS credits.\n\nWould you like to proceed?\n" +
      "No: Send Email Only, Cancel: Cancel Sending";
  answer(question, "Cancel");
  send();
  assertEqual([lastMessage().caption, lastMessage().icon, reached()], ["SMS Credits", "question", [0, 0]]);
  answer(question, "No");
  send();
  assertEqual([reached(), control("lblSMS1").text, count("[Campaign Results] WHERE Processed = 1")], [[0, 3], "Sent: 0 / 3", 0]);
  steer({numbers: {[sql("SELECT Mobile FROM [Campaign Results] ORDER BY Customer")[0].Mobile]: "reply \"1\"|\"0\"|\"5\"|\"0\"|"}});
  answer(question, "Yes");
  send();
  assertEqual(lastLines(2), ["Finished because not enough SMS credits are remaining.", "Processing Finished"]);
  assertEqual([reached(), control("lblSMS1").text], [[1, 3], "Sent: 1 / 3"]);
  answer("approximately 2 SMS credits (3 in all, 1 sent).", "Yes");
  send();
  assertEqual([reached(), control("lblSMS1").text], [[3, 3], "Sent: 3 / 3"]);
});
