// Step 5: a mailshot from the first check to the last row, paused, resumed, and looked up the next day.

start({sandbox: true});
walkTo(4);
const rows = 6;
const record = keepRows(rows, "Send_SMS = 1, Send_Email = 1");
write({sms: "Dear {contact}, your MOT is due. Reply STOP to opt out.", subject: "MOT", body: "Dear {contact}, your MOT is due."});
selectTab(5);
const send = () => control("cmdSendSMS").click();
const logText = () => control("txtProcessResults").text;

check("a pause acts after the current row; everything else is off meanwhile", () => {
  assertEqual(shown("cmdSendSMS", "cmdPause"), ["Send the SMS and Email Mailshots", "Pause Sending"]);
  answer("This campaign is going to use approximately 6 SMS credits.", "Yes");
  during(send, () => {
    if (texts().length < 2) return false;
    assertEqual([control("cmdSave").enabled, control("cmdSendSMS").enabled, control("frmSendEmail").visible], [false, false, true]);
    assert(control("pbEmail").maximum === 12 && /of 12/.test(control("lblRunProgress").text), control("lblRunProgress").text);
    control("frmMain.cmdPause").click();
    return true;
  });
  assertMatch(logText(), "Pausing Sending");
  assertMatch(logText(), /Processing has been paused\s*$/);
  assert(texts().length < rows && control("cmdSendSMS").enabled && !control("cmdPause").enabled);
  assert(!exists("frmSendEmail") || !control("frmSendEmail").visible, "the window of the e-mails is closed");
});

check("Cancel while the database is waited for pauses, too", () => {
  answer("approximately", "Yes");
  answer("Operation cancelled by user");
  const before = texts().length;
  during(send, () => texts().length > before && (slowDatabase(1500), (statusBox() || {}).cancel) && (slowDatabase(0), cancelStatus(), true));
  assertEqual(texts().length, before + 1);
});

check("going on sends the rest, and nothing twice; what failed is listed with its reason", () => {
  steer({numbers: {[record[rows - 1].Mobile]: "code 33"}});
  answer("approximately", "Yes");
  send();
  assertEqual(texts().filter(text => text.to !== record[rows - 1].Mobile).length, rows - 1);
  assertEqual(mails().length, rows);
  assertEqual(control("lblEmail1").text, "Sent: 5 / 6");
  assertEqual(control("lstTroubles").rowCount, 1);
  const row = control("lstTroubles").row(0);
  assertEqual([row.Message, row.State, row.To], ["Text", "Failed", record[rows - 1].Mobile]);
  assertMatch(row.Reason, "Invalid Number Format");
  screenshot("process_troubles");
  control("lstTroubles").choose(0).press("Return");
  assertEqual([currentTab(), control("dbgData").cell(control("dbgData").currentRow, "Mobile")], [3, record[rows - 1].Mobile]);
});

check("a message in doubt is settled by hand", () => {
  execute("UPDATE Send_Journal SET State = 0 WHERE State = 2");
  selectTab(5);
  assertEqual(control("lstTroubles").row(0).State, "In doubt");
  control("lstTroubles").choose(0);
  answer("Count the messages in doubt of 1 row(s) as sent?", "Yes");
  control("cmdSettleSent").click();
  assertEqual(count("[Campaign Results] WHERE Processed = 0"), 0);
  assert(!control("fraTroubles").visible);
});

check("the log is copied, saved, and stands there the next day", () => {
  control("cmdCopyLog").click();
  assertMatch(clipboard(), "Processing 6 SMS Texts and 6 Emails");
  answerFile(programFolder() + "/run.txt");
  control("cmdSaveLog").click();
  assertMatch(readFile("run.txt"), "Processing has been paused");
  saveAs("MOT");
  answer("No results left to process.");
  send();
  screenshot("process_mailshot");
  restart();
  load("MOT");
  selectTab(5);
  assertMatch(logText(), /^The last run of this campaign on this computer:\n== Run of 04\/03\/2026 10:20, started by Pat\n/);
  assertMatch(logText(), /== Went on at .*\n(.*\n)*.*Failed Reason: SMS Gateway reported Invalid Number Format/);
});

check("texts that would go to the same phone are told before a run", () => {
  assert(!control("lblShared").visible);
  execute("UPDATE [Campaign Results] SET Processed = 0, Mobile = '+44 7700 900100' WHERE RecordID IN (" + record[0].RecordID + ", " + record[1].RecordID + ")");
  selectTab(4);
  selectTab(5);
  assertEqual(control("lblShared").text, "2 texts go to a mobile number that another row has, too.");
});
