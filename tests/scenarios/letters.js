// Letters: the preview with the sample customer, a letter for each row, printing and saving, and what is marked; then
// the printed results list.

start();
walkTo(3);
const rows = keepRows(6, "Send_Letter = 1, Address = '1 High Street' || char(13) || 'Milbury' || char(13) || 'MB1 2AB'");
const generate = () => control("cmdGenerateLetters").click();
const sent = () => count("Send_Journal WHERE Channel = 3 AND State = 1");
const processed = () => count("[Campaign Results] WHERE Processed = 1");

// Runs `inside` in the window of the report, and closes it.
function report(inside) {
  onWindow("frmReportView", window => {
    inside(window);
    window.control("cmdClose").click();
  });
}
// F1 says what the window does.
function helps(part) {
  press("F1");
  assertMatch(control("txtHelp").text, part);
  press("F1");
  assert(!exists("frmHelp"));
}
// Chooses in the dialog of Print.
function print(window, choose) {
  onWindow("frmSelectPrinter", dialog => {
    choose(dialog);
    if (dialog.control("cmdPrint").enabled) dialog.control("cmdPrint").click();
  });
  window.control("cmdPrint").click();
}

check("without a text or without rows no letter is made", () => {
  selectTab(5);
  answer("No letter text has been entered on the Letter Templates tab.");
  generate();
  execute("UPDATE [Campaign Results] SET Send_Letter = 0");
  answer("No Letters to process. No customers in the results list are selected to receive a letter.");
  generate();
  execute("UPDATE [Campaign Results] SET Send_Letter = 1");
});

check("the letter is previewed with the sample customer, found in and zoomed", () => {
  selectTab(4);
  control("rtfLetter").type("Dear {contact}, your {make} is due.");
  report(window => {
    assertEqual(window.caption, "Letters");
    waitFor(() => window.control("lblPages").text === "of 1");
    answer("\"Vectra\" was not found.");
    window.control("txtFind").setText("Vectra");
    window.control("cmdFind").click();
    window.control("txtFind").setText("mr hartley, your vauxhall");
    window.control("cmdFind").click();
    window.control("cmbZoom").choose("Page");
    screenshot("letter-preview");
    assertEqual(keyboardFaults(), []);
    helps("Page Down scroll");
  });
  control("cmdPreview").click();
  assertEqual(sent(), 0);
});

check("a customer without an address and one who said no get none; what is only looked at is not marked", () => {
  execute("UPDATE [Campaign Results] SET Address = 'Old Mill' WHERE RecordID = " + rows[0].RecordID);
  execute("UPDATE Customers SET Consent_Response = 2 WHERE Customer = " + rows[1].Customer);
  selectTab(5);
  answer("The letters were neither printed nor saved. Mark them as processed?", "No");
  report(window => {
    assertEqual(waitFor(() => window.control("lblPages").text === "of 4"), true);
    screenshot("letters");
  });
  generate();
  const log = control("txtProcessResults").text;
  assertMatch(log, "The address has no postcode.");
  assertMatch(log, "The customer has opted out since the results were selected.");
  assertEqual([sent(), processed()], [0, 0]);
});

check("letters that may have been printed before the program ended are asked about, and so is a misspelt field", () => {
  execute("UPDATE Send_Journal SET Reason = 'printer:Office' WHERE RecordID = " + rows[2].RecordID);
  selectTab(4);
  control("rtfLetter").press("Ctrl+End").type(" {contakt}");
  selectTab(5);
  answer("1 letter was about to be handed to the printer \"Office\" at ", "No");
  answer("{contakt} is no merge field", "No");
  generate();
  assertEqual(sql("SELECT 1 FROM Send_Journal WHERE Reason IS NOT NULL"), []);
  selectTab(4);
  control("rtfLetter").press("Ctrl+End").press("Backspace", 10);
  selectTab(5);
});

check("letters that are printed are marked, the others stay due", () => {
  execute("CREATE TABLE Announced (File text)");
  execute("CREATE TRIGGER Announce AFTER UPDATE OF Reason ON Send_Journal WHEN new.Reason IS NOT NULL BEGIN INSERT INTO Announced VALUES (new.Reason); END");
  report(window => {
    print(window, dialog => {
      assertEqual(dialog.control("cmbPrinter").items, ["Office", "Workshop"]);
      assertEqual(dialog.control("cmbPrinter").selectedText, "Office");
      fill({cmbPrinter: "Workshop", chkBothSides: true, cmbTray: "tray-2", txtLastLetter: "2"});
      dialog.control("cmdNextLetters").click();
      assertEqual([dialog.control("txtFirstLetter").text, dialog.control("txtLastLetter").text, dialog.control("cmdNextLetters").enabled], ["3", "4", false]);
      fill({txtFirstLetter: "", txtLastLetter: "2"});
      screenshot("printer");
      assertEqual(keyboardFaults(), []);
      helps("Next 50");
    });
    assertEqual([sent(), processed()], [2, 2], "written down at once: the program may be killed before the window is closed");
    assertEqual(sql("SELECT * FROM Announced").map(row => row.File), ["printer:Workshop", "printer:Workshop"], "and announced before");
    assertMatch(window.control("lblQueued").text, "In the queue of the printer \"Workshop\"");
    screenshot("queued");
    onPump(() => count("Send_Journal WHERE Reason IS NOT NULL") > 0 && (cancelStatus(), true));
    answer("It is not known whether the printer \"Workshop\" has the report.");
    print(window, () => printersAnswer(false));
    printersAnswer(true);
    printerFails("out of paper");
    answer("The printer \"Workshop\" did not take the report: out of paper");
    print(window, () => {});
    printerFails("");
  });
  generate();
  assertEqual(printJobs(), [{printer: "workshop", title: "Letters", copies: 1, bothSides: true, tray: "tray-2", pages: 3}]);
  assertEqual([sent(), processed()], [2, 2]);
});

check("what is left is saved, and asked about when made again", () => {
  answer("2 letters were about to be handed to the printer \"Workshop\" at ", "No");
  answer("Do you want to generate letters for results which have been processed before as part of this campaign?", "No");
  report(window => {
    answerFile(programFolder() + "/no folder/letters.pdf");
    answer("The file cannot be written: ");
    window.control("cmdExport").click();
    execute("DELETE FROM Announced");
    answerFile(programFolder() + "/letters.pdf");
    window.control("cmdExport").click();
    assertEqual(sql("SELECT * FROM Announced").map(row => row.File), [1, 2].map(() => programFolder() + "/letters.pdf"), "before the file is there: the program may be killed");
  });
  generate();
  assert(readFile("letters.pdf").startsWith("%PDF"), "a PDF file");
  assertEqual([sent(), processed(), control("lblLettersOut").text], [4, 4, "Went out: 4 / 6"]);
  answer("processed before as part of this campaign?", "Yes");
  answer("The letters were neither printed nor saved. Mark them as processed?", "No");
  report(() => {});
  generate();
  assertEqual([sent(), processed()], [4, 4], "a look at letters that went out does not make them due again");
  const marketing = marketingEvents().map(event => event.event);
  for (const event of ["Generate Letters", "Print Letters", "Export Letters"]) assert(marketing.includes(event), event);
  answer("processed before as part of this campaign?", "No");
  answer("No letter was made. The results log says why each customer who is left gets none.");
  generate();
  execute("DELETE FROM [Campaign Results] WHERE RecordID = " + rows[1].RecordID);
});

check("a letter that the mailshot overtook is told of beside the button", () => {
  execute("UPDATE [Campaign Results] SET Send_Email = 1, Processed = 1 WHERE RecordID = " + rows[0].RecordID);
  selectTab(4);
  selectTab(5);
  assertEqual(control("lblLettersMissed").text, "1 customer with a letter was processed by the mailshot and gets none; make letters first.");
  answer("processed before as part of this campaign?", "No");
  answer("There are not results selected to be processed as letters, or all selected results have already been processed.");
  generate();
});

check("the results list is printed as the grid shows it", () => {
  selectTab(3);
  control("dbgData").clickHeading("Lastname");
  report(window => {
    assertEqual(window.caption, "Campaign Results");
    screenshot("results-list");
    print(window, dialog => assert(!dialog.control("txtFirstLetter").visible));
  });
  control("cmdPrintResults").click();
  assertEqual(printJobs().length, 2);
});

check("a damaged definition is named with its place; Retry reads it again", () => {
  const path = "Reports/CampaignResults.rpt";
  const good = readFile(path);
  writeFile(path, good.replace("<detail height=\"5\">", "<detail heigth=\"5\">"));
  let asked = 0;
  onMessage(box => {
    if (!box.text.startsWith("The following error has occured in PrintReport")) return null;
    assertMatch(box.text, "CampaignResults.rpt, line ");
    assertEqual([box.caption, box.icon, box.buttons], ["Application Error", "stop", ["Retry", "Ignore", "Abort"]]);
    if (++asked === 1) return "Retry";
    writeFile(path, good);
    return "Retry";
  });
  report(() => {});
  control("cmdPrintResults").click();
  onMessage(null);
  assertEqual(asked, 2);
});

check("a group that hides its details shows them at a double-click; what is in view is printed on the default printer", () => {
  const path = "Reports/CampaignResults.rpt";
  writeFile(path, readFile(path).replace(/  <detail height="5">/, '  <group field="CampaignID" drillDown="yes"><header height="160"><text x="0" y="70" width="100" height="5">Campaign <field name="CampaignID"/></text></header></group>\n$&'));
  const jobs = printJobs().length;
  report(window => {
    assertEqual([window.control("cmdDetails").enabled, window.control("cmdBack").visible], [true, false]);
    screenshot("drill-down");
    window.control("CRViewer").doubleClick();
    assertMatch(window.control("lblDetails").text, /^Details of -?\d+$/);
    screenshot("details");
    assertEqual(keyboardFaults(), []);
    answer("Print the report currently in view to the default printer?", "Yes");
    window.control("cmdPrint").click();
    assertMatch(window.control("lblQueued").text, "\"Office\"");
    press("Esc");
    assertEqual(window.control("lblDetails").visible, false);
    window.control("cmdDetails").click();
  });
  answerMenu(String(sql("SELECT CampaignID FROM [Campaign Results] LIMIT 1")[0].CampaignID));
  control("cmdPrintResults").click();
  assertEqual(printJobs().length, jobs + 1);
});
