// Step 4: letter, e-mail and text message are written, previewed and sent to oneself; what would surprise is said
// beside them.

start({sandbox: true, options: {Reminder_From_Name: "Hartley Motors", Reminder_From_Email: "office@example.com", Reminder_From_SMS: "Hartley"}});
control("frmMain").resize(780, 540);  // as small as it goes: everything can be reached
walkTo(4);
execute("UPDATE [Campaign Results] SET Send_SMS = 1, Send_Email = 1, Mobile = '07700900123', Email = 'c@example.com', Contact = 'Mrs Jones'");
const page = name => control("ssTabLetters").selectTab(name);

check("the letter is written, formatted and stored as rich text, with its fields in one piece", () => {
  page("Printed Letter");
  control("rtfLetter").type("Dear ");
  answerMenu("{regno}   registration number of the vehicle (AB12 CDE)");
  control("cmdInsertLetter").click();
  control("rtfLetter").press("Ctrl+A").press("Ctrl+B");
  slowDatabase(200);  // the notes below the letter, which look at the rows, are due in the midst of it
  saveAs("Letters");
  slowDatabase(0);
  const letter = sql("SELECT Letter FROM Marketing_Campaigns WHERE Campaign_Name = 'Letters'")[0].Letter;
  assertMatch(letter, /^\{\\rtf1[^]*\\b[^]*\\\{regno\\\}/);
});

check("the text is counted as it travels, stops at its longest, and says what is wrong with it", () => {
  page("Text Message");
  control("txtSMS").setText("a\nb");
  assertEqual(control("lblSMSChars").text, "Chars: 4 / 918 max, approx. 1 Credit(s)");
  control("txtSMS").setText("x".repeat(1000));
  assertEqual(control("lblSMSChars").text, "Chars: 918 / 918 max, approx. 6 Credit(s)");
  control("txtSMS").setText("Hi {contakt}, {make} \u263a");
  const notes = waitFor(() => /contakt/.test(control("lblSMSNotes").text) && control("lblSMSNotes").text);
  for (const part of ["{contakt}", "{make}", "\u263a", "This text tells nobody how to stop."]) assertMatch(notes, part);
});

check("a preview shows the sample customer, then the rows of the next run, and what is shown can be sent", () => {
  control("txtSMS").setText("Hi {contact}. Reply STOP to opt out.");
  assert(!control("fraSMSExample").visible);
  control("cmdTestSMS0").click();
  assertEqual(control("txtSMSExample").text, "Hi Mr Hartley. Reply STOP to opt out.");
  control("walkSMSForward").click();
  assertMatch(control("txtSMSExample").text, "Hi Mrs Jones");
  assertMatch(control("walkSMSPlace").text, /^1 of \d+$/);
  answerInput("07700 900999", "Enter your mobile phone number");
  answer("The recipient will see the message as being sent from: Hartley", "Yes");
  answer("Test SMS Text Message has been sent.");
  control("cmdTestSMS1").click();
  assertEqual([texts().length, texts()[0].message], [1, "Hi Mrs Jones. Reply STOP to opt out."]);
  execute("UPDATE [Campaign Results] SET Send_SMS = 0 WHERE RecordID NOT IN (SELECT RecordID FROM [Campaign Results] ORDER BY Customer DESC LIMIT 2)");
  selectTab(3);
  selectTab(4);
  assertEqual(control("walkSMSPlace").text, "Sample customer; then the 2 that the next run sends a text to");
  control("txtSMS").setText("Hello {contact}");
  waitFor(() => control("txtSMSExample").text === "Hello Mr Hartley");
  control("cmdTestSMS2").click();
  assert(!control("fraSMSExample").visible);
});

check("so does the e-mail, which says who it is from", () => {
  page("Email");
  control("txtEmailSubject").type("MOT");
  control("txtEmailBody").setText("Dear {contact}");
  waitFor(() => /From Hartley Motors/.test(control("lblEmailNotes").text));
  control("cmdTestEmail0").click();
  answerInput("me@example.com", "Enter the email address");
  answer("Continue and send a test email to: me@example.com", "Yes");
  answer("Test Email has been sent.");
  control("cmdTestEmail1").click();
  assertEqual([mails().length, mails()[0].subject], [1, "MOT"]);
  control("frmMain").resize(1120, 740);
  screenshot("templates_email");
  page("Text Message");
  screenshot("templates_text");
  page("Printed Letter");
  screenshot("templates_letter");
});
