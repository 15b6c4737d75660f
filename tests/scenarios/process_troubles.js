// Step 5: rows that cannot be sent, servers that refuse or fall silent, and the product family's own mail server.

const kEmailQuestion = /^QBX could not send email with the current settings\. [^]*\n\nDo you wish to see the error message and cancel any other emails/;

// Rows in the order of the run; what stands beside each is the mobile, the e-mail address, and whether text and e-mail
// are wanted.
function begin(options, rows) {
  start(Object.assign({sandbox: true}, options));
  control("frmMain").resize(780, 540);
  walkTo(4);
  keepRows(rows.length, "Contact = ' '").forEach((row, i) => {
    const [mobile, email, sms, mail] = rows[i];
    execute("UPDATE [Campaign Results] SET Mobile = '" + mobile + "', Email = '" + email + "', Send_SMS = " + sms + ", Send_Email = " + mail +
            " WHERE RecordID = " + row.RecordID);
  });
  write({sms: "Dear {contact}, your MOT is due.", subject: "MOT", body: "Dear {contact}, your MOT is due."});
  selectTab(5);
}
const send = () => {
  answer("SMS credits", "Yes");
  control("cmdSendSMS").click();
};
const lines = () => control("txtProcessResults").text.trim().split("\n").map(line => line.slice(20));
const processed = () => sql("SELECT Processed FROM [Campaign Results] ORDER BY Customer").map(row => row.Processed);
const accepted = () => mails().filter(mail => mail.outcome === "accepted").map(mail => mail.to[0]);
const troubles = () => control("lstTroubles").items.map((_, i) => control("lstTroubles").row(i));

begin({}, [["07700 900100/home", "", 1, 0], ["07700900", "b@example.com", 1, 1], ["07700900", "", 1, 0],
           ["", "refused@example.com", 0, 1], ["", "", 0, 1], ["", "f@example.com", 0, 1]]);

check("bad numbers and addresses do not stop a run; a short number is none where an e-mail goes in its place", () => {
  answer(kEmailQuestion, "No");
  send();
  assertEqual(texts().map(text => [text.to, text.message]), [["07700900100", "Dear Customer, your MOT is due."]]);
  assertEqual([accepted(), processed()], [["b@example.com", "f@example.com"], [1, 1, 0, 0, 0, 1]]);
  assertEqual(lines()[0], "Processing 3 SMS Texts and 4 Emails");
  const named = lines().filter(line => /^(SMS|Email) Failed to: /.test(line)).map(line => line.replace(/: \d+/, ""));
  assertEqual(named, ["Email Failed to, refused@example.com", "Email Failed to, "]);
  assertEqual(troubles().map(row => [row.Message, row.State, row.To]),
              [["Text", "Failed", "07700900"], ["E-mail", "Failed", "refused@example.com"], ["E-mail", "Failed", ""]]);
  assertEqual(troubles().map(row => row.Reason.replace(/.*550.*/, "550")),
              ["The mobile number is missing or too short.", "550", "No Email Address specified."]);
  assertEqual([control("lblSMS1").text, control("lblEmail1").text], ["Sent: 2 / 3", "Sent: 2 / 4"]);
});

check("a cancelled e-mail stops the run behind its row, and its window stays until it is closed", () => {
  execute("UPDATE [Campaign Results] SET Processed = 0 WHERE Email = 'f@example.com'; DELETE FROM Send_Journal");
  answer(kEmailQuestion, "Yes");
  control("cmdSendSMS").click();  // no text is left to go, so nothing is asked about credits
  assertEqual([accepted().length, lines().slice(-1)], [2, ["Processing has been paused"]]);
  const window = name => control("frmSendEmail." + name);
  assertEqual([window("lblStatus").text, window("lblProgress").text], ["Send Failed", ""]);
  assertMatch(window("txtMsg").text, "550");
  screenshot("send_email_failed", "frmSendEmail");
  window("cmdClose").click();
  assert(!exists("frmSendEmail") || !control("frmSendEmail").visible);
  assert(log().some(line => line.includes("SendEmail Failed: ")));
  assertEqual(events().filter(event => event.key === "SendEmail").map(event => [event.type, event.table])[0], [6, 0]);
});

check("a gateway that falls silent leaves a text in doubt; one that is away is asked about once, and the e-mails go on", () => {
  begin({ini: {Service: {HttpTimeout: "1"}}},
        [100, 101, 102, 103, 104, 105].map((n, i) => ["07700900" + n, "c" + i + "@example.com", 1, i % 2]));
  steer({numbers: {"07700900100": "silence", "07700900101": "http 503", "07700900102": "http 503", "07700900103": "http 503"}});
  answer(/It is not known whether the text went out/);
  answer(/^The SMS gateway has failed 3 times in a row\. The last time: [^]*\n\nGo on sending\?$/, "No");
  send();
  assertEqual([texts().filter(text => text.outcome === "accepted").length, accepted().length, processed()],
              [1, 3, [0, 0, 0, 0, 0, 0]]);
  const end = lines().slice(-3);
  assertEqual([end[0], end[2]], ["Texts are paused: the SMS gateway failed three times in a row.", "Processing has been paused"]);
  assertMatch(end[1], "1 row(s) are in doubt and were left alone");
  assertEqual(troubles().map(row => row.State), ["In doubt", "Failed", "Failed", "Failed"]);
  assertMatch(control("lblRunProgress").text, /^7 of 9(?!.*left)/);
  screenshot("process_gateway_away");
});

check("a connection that is lost breaks the run off with a report; the window does not close meanwhile, and nothing goes twice", () => {
  begin({}, [100, 101, 102].map((n, i) => ["07700900" + n, "c" + i + "@example.com", 1, 1]));
  answer(/^An unexpected error occured\.[^]*The Location ID is 5400\./);
  acceptNotices();
  during(send, () => {
    if (texts().length < 2) return false;
    assert(!closeWindow());
    loseConnection();
    return true;
  });
  acceptNotices(false);
  assertEqual([lines().slice(-1)[0], control("cmdSendSMS").enabled, control("pbEmail").visible], ["Processing was broken off", true, false]);
  restoreConnection();
  send();
  for (const reached of [texts().map(text => text.to), accepted()]) assertEqual([...new Set(reached)], reached);
  assertEqual(troubles().map(row => row.State), processed().filter(done => done === 0).map(() => "In doubt"));
  assert(troubles().length <= 1, "at most the one message that was on its way");
});

check("the product family's server: a notice, its own account, and one count-down a run", () => {
  const notice = "Please note that this system is currently configured to use the QBX Email Server.";
  answer(notice);
  begin({ini: {Service: {MailHost: "127.0.0.1", MailAccount: "built-in"}}, options: {SMTP_UserName: ""}},
        [["", "a@example.com", 0, 1], ["", "b@example.com", 0, 1]]);
  assertEqual(lastMessage().icon, "information");
  const shown = [];
  during(() => control("cmdSendSMS").click(), () => {
    if (!exists("frmSendEmail") || !control("frmSendEmail").visible) return false;
    const window = name => control("frmSendEmail." + name);
    assertEqual([window("fraSend").text, window("lblInfo").visible], ["Sending Email via the QBX Email Server", true]);
    if (shown.slice(-1)[0] !== window("lblStatus").text) shown.push(window("lblStatus").text);
    return false;
  });
  assertEqual(shown.filter(text => /secs/.test(text)), [2, 1].map(n => "Sending via the QBX Email Server in " + n + " secs..."));
  assertEqual(mails().map(mail => [mail.user, mail.connection]), [["built-in", 1], ["built-in", 1]]);
});
