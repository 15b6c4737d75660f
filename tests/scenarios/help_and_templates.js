// The Help menu's own commands, and the page of templates.

// The name of the database has another case than its file.
start({ini: {App: {Debug: "YES"}}, registry: {machine: {"": {Database: "qbxKORVELmanager"}}}});

check("the log file opens with the desktop's own program", () => {
  control("mnuLog").trigger();
  assertEqual(shellOpened(), [programFolder() + "/MARKETING.LOG"]);
});

check("the database is backed up to a file, which holds the same customers", () => {
  answerFile(programFolder() + "/backup/copy.db");
  answer("The database was not backed up.");
  control("mnuBackup").trigger();
  answerFile(programFolder() + "/copy.db");
  answer("The database was backed up to");
  control("mnuBackup").trigger();
  assertEqual(lastMessage().icon, "information");
  const copy = files().filter(name => name.startsWith("copy.db"));
  assertEqual(copy, ["copy.db"]);
  assert(readFile("copy.db").startsWith("SQLite format 3"), "it is a database");
});

check("without a file's name nothing happens", () => {
  answerFile(null);
  control("mnuBackup").trigger();
});

control("cmdNew").click();
selectTab(4);

check("the text message counts its characters and credits", () => {
  control("ssTabLetters").selectTab("Text Message");
  control("txtSMS").setText("x".repeat(161));
  assertEqual(control("lblSMSChars").text, "Chars: 161 / 918 max, approx. 2 Credit(s)");
  control("txtSMS").setText("");
  assertEqual(control("lblSMSChars").text, "Chars: 0 / 918 max, approx. 1 Credit(s)");
});

check("templates come from another campaign, once that was agreed to", () => {
  answer("Campaign not selected.");
  control("cmdLoadLetters").click();
  assertEqual(lastMessage().icon, "exclamation");
  control("txtSMS").setText("my own text");
  control("cmbCampaigns").choose("MOT due");
  const question = "The existing Letter Templates in the Campaign will be lost and replaced by the letters in the selected Campaign.\n\nOK to continue?";
  answer(question, "No");
  control("cmdLoadLetters").click();
  assertEqual(control("txtSMS").text, "my own text");
  answer(question, "Yes");
  control("cmdLoadLetters").click();
  const stored = sql("SELECT SMS, Email_Subject FROM Marketing_Campaigns WHERE Campaign_Name = 'MOT due'")[0];
  assertEqual(control("txtSMS").text, stored.SMS.replace(/\r\n?/g, "\n"));
  control("ssTabLetters").selectTab("Email");
  assertEqual(control("txtEmailSubject").text, stored.Email_Subject);
});

check("a campaign that is gone by then is told, and the texts stay", () => {
  const before = control("txtEmailSubject").text;
  execute("DELETE FROM Marketing_Campaigns WHERE Campaign_Name = 'MOT due'");
  answer("OK to continue?", "Yes");
  answer("Campaign not found!");
  control("cmdLoadLetters").click();
  assertEqual(control("txtEmailSubject").text, before);
});

answer("Campaign details may have changed", "Yes");
check("the boat edition's examples speak of boats", () => {
  closeWindow();
  start({edition: "boat"});
  control("cmdNew").click();
  selectTab(4);
  control("ssTabLetters").selectTab("Examples");
  assertMatch(control("lblExample2").text, "For Boat specific Mail Merges you can use boat data");
  assertMatch(control("txtExample2").text, "your boat {make} {model} may be due for a service replacement");
});
