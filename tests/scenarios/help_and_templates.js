// The Help menu's own commands, and the page of templates.

// The name of the database has another case than its file.
start({ini: {App: {Debug: "YES"}}, registry: {machine: {"": {Database: "qbxKORVELmanager"}}}});

check("the log file opens with the desktop's own program", () => {
  control("mnuLog").trigger();
  assertEqual(shellOpened(), [programFolder() + "/MARKETING.LOG"]);
});

check("the database is backed up to a file, which holds the same customers; without a file's name nothing happens", () => {
  const backUp = file => {
    answerFile(file);
    control("mnuBackup").trigger();
  };
  refused("The database was not backed up.", () => backUp(programFolder() + "/backup/copy.db"));
  refused("The database was backed up to", () => backUp(programFolder() + "/copy.db"), "information");
  assertEqual(files().filter(name => name.startsWith("copy.db")), ["copy.db"]);
  assert(readFile("copy.db").startsWith("SQLite format 3"), "it is a database");
  backUp(null);
});

check("templates come from another campaign, once that was agreed to", () => {
  control("cmdNew").click();
  write({sms: "my own text"});
  const take = () => control("cmdLoadLetters").click();
  refused("Campaign not selected.", take);
  control("cmbCampaigns").choose("MOT due");
  const question = "The existing Letter Templates in the Campaign will be lost and replaced by the letters in the selected Campaign.\n\nOK to continue?";
  answer(question, "No");
  take();
  assertEqual(control("txtSMS").text, "my own text");
  answer(question, "Yes");
  take();
  const stored = sql("SELECT SMS, Email_Subject FROM Marketing_Campaigns WHERE Campaign_Name = 'MOT due'")[0];
  assertEqual(shown("txtSMS", "txtEmailSubject"), [stored.SMS.replace(/\r\n?/g, "\n"), stored.Email_Subject]);
  execute("DELETE FROM Marketing_Campaigns WHERE Campaign_Name = 'MOT due'");
  answer(question, "Yes");
  answer("Campaign not found!");
  take();
  assertEqual(control("txtEmailSubject").text, stored.Email_Subject, "the texts stay");
});
