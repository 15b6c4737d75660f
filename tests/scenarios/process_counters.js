// Step 5: the counters of letters, texts and e-mails; step 3 after rows were processed.

start();
control("cmdNew").click();
control("tvQuery").choose("All Customers");
control("cmdNext0").click();
control("cmdNext1").click();

const labels = () => ["lblLetters", "lblSMS0", "lblSMS1", "lblSMS2", "lblEmail0", "lblEmail1"].map(name => control(name).text);
const first = (flags, n) => execute("UPDATE [Campaign Results] SET " + flags +
                                    " WHERE RecordID IN (SELECT RecordID FROM [Campaign Results] ORDER BY RecordID LIMIT " + n + ")");

check("a campaign that contacts nobody counts nothing", () => {
  selectTab(5);
  assertEqual(labels(), ["Letters to Generate: 0", "SMS's to Send: 0", "Sent: 0 / 0", "Credit Cost: 0", "Email's to Send: 0", "Sent: 0 / 0"]);
  assertEqual(control("lblInfo5").text.trim(), "When you are ready please click the Process Letters or Process SMS/Email buttons below.");
});

check("opening the page counts what the database holds now", () => {
  first("Send_SMS = 1, Send_Email = 1", 5);
  first("Processed = 1", 2);
  first("Send_Letter = 1", 3);
  assertEqual(control("lblSMS0").text, "SMS's to Send: 0");
  selectTab(3);
  selectTab(5);
  assertEqual(labels().filter(text => !/Credit/.test(text)),
              ["Letters to Generate: 3", "SMS's to Send: 5", "Sent: 2 / 5", "Email's to Send: 5", "Sent: 2 / 5"]);
  assert(/^Credit Cost: \d+ \(\d+ in all\)$/.test(control("lblSMS2").text), control("lblSMS2").text);
});

check("so does the run command while the page is open", () => {
  selectTab(3);
  control("cmdNext2").click();
  selectTab(5);
  first("Send_Letter = 1", 4);
  control("cmdRun").click();
  assertEqual([currentTab(), control("lblLetters").text], [5, "Letters to Generate: 4"]);
  first("Send_Letter = 0", 1);
  control("cmdRun").click();
  assertEqual(control("lblLetters").text, "Letters to Generate: 3");
});

check("counters that cannot be read are reported, and the old ones stay", () => {
  first("Send_Letter = 1", 9);
  failProcedure("proc_selp_Results_Counters", "no counters today");
  selectTab(3);
  answer("no counters today");
  selectTab(5);
  assertEqual(control("lblLetters").text, "Letters to Generate: 3");
  failProcedure("proc_selp_Results_Counters", "");
});

check("the steps ask before rows of which some were sent are replaced", () => {
  const question = "Please note that some results have been processed. If you click next on Step 1 or Step 2 then the results will be reset. " +
      "If you want to process any unprocessed results you can just switch to the tab directly without using the Next button.\n\n" +
      "Do you want to reload the results and reset the Processed Status?";
  const before = sql("SELECT * FROM [Campaign Results]");
  selectTab(1);
  answer(question, "No");
  control("cmdNext0").click();
  assertEqual(lastMessage().icon, "question");
  assertEqual(currentTab(), 1);
  selectTab(2);
  answer(question, "No");
  control("cmdNext1").click();
  assertEqual(currentTab(), 2);
  assertEqual(sql("SELECT * FROM [Campaign Results]"), before);
  answer(question, "Yes");
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
  selectTab(5);
  assertEqual(control("lblSMS1").text, "Sent: 0 / 0");
});
