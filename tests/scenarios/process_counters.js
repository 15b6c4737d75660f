// Step 5: the counters of letters, texts and e-mails.

start();
walkTo(3);
const labels = () => shown("lblLetters", "lblSMS0", "lblSMS1", "lblEmail0", "lblEmail1");
const first = (flags, n) => execute("UPDATE [Campaign Results] SET " + flags +
                                    " WHERE RecordID IN (SELECT RecordID FROM [Campaign Results] ORDER BY RecordID LIMIT " + n + ")");

check("opening the page counts what the database holds now", () => {
  selectTab(5);
  assertEqual(labels(), ["Letters to Generate: 0", "SMS's to Send: 0", "Sent: 0 / 0", "Email's to Send: 0", "Sent: 0 / 0"]);
  assertEqual(control("lblSMS2").text, "Credit Cost: 0");
  first("Send_SMS = 1, Send_Email = 1", 5);
  first("Processed = 1", 2);
  first("Send_Letter = 1", 3);
  selectTab(3);
  selectTab(5);
  assertEqual(labels(), ["Letters to Generate: 3", "SMS's to Send: 5", "Sent: 2 / 5", "Email's to Send: 5", "Sent: 2 / 5"]);
  assertMatch(control("lblSMS2").text, /^Credit Cost: \d+ \(\d+ in all\)$/);
});

check("so does the run command while the page is open; counters that cannot be read are reported, and the old ones stay", () => {
  selectTab(3);
  control("cmdNext2").click();
  selectTab(5);
  first("Send_Letter = 1", 4);
  control("cmdRun").click();
  assertEqual([currentTab(), labels()[0]], [5, "Letters to Generate: 4"]);
  first("Send_Letter = 1", 9);
  selectTab(3);
  failing("proc_selp_Results_Counters", "no counters today", () => selectTab(5));
  assertEqual(labels()[0], "Letters to Generate: 4");
});
