// Step 5: who is left out, what was delivered before, what nobody knows, and a campaign that somebody else sends.

start({sandbox: true});
walkTo(4);
const rows = keepRows(4, "Send_SMS = 1, Send_Email = 1");
write({sms: "Dear {contact}, your MOT is due.", subject: "MOT", body: "Dear {contact}, your MOT is due."});
selectTab(5);

const send = () => {
  answer("SMS credits", "Yes");
  control("cmdSendSMS").click();
};
const lines = () => control("txtProcessResults").text.trim().split("\n").map(line => line.slice(20));
// What reached each row since the last call: T for its text, E for its e-mail.
let seen = [0, 0];
function arrived() {
  const all = [texts(), mails()];
  const since = all.map((list, i) => list.slice(seen[i]).filter(one => one.outcome === "accepted"));
  seen = all.map(list => list.length);
  return rows.map(row => "T".repeat(since[0].filter(text => text.to === row.Mobile).length) +
                         "E".repeat(since[1].filter(mail => mail.to[0] === row.Email).length));
}

check("while somebody else sends the campaign it is refused, and those who said no since the query are left out", () => {
  sentElsewhere(rows[0].CampaignID, () => refused("This campaign is already being sent by Alex on computer FRONTDESK (process 4711).\n\n" +
    "Please wait until that run has finished or was paused.", () => control("cmdSendSMS").click()));
  assertEqual(arrived(), ["", "", "", ""]);
  execute("UPDATE Customers SET No_Marketing = 1 WHERE Customer = " + rows[0].Customer);
  steer({recipients: {[rows[1].Email]: "550 No such user", [rows[3].Email]: "dropdata"}, numbers: {[rows[2].Mobile]: "no answer"}});
  onMessage(box => (/^QBX could not send email/.test(box.text) ? "No" : undefined));
  answer(/It is not known whether the text went out/);
  send();
  onMessage(null);
  assertEqual(arrived(), ["", "T", "TE", "T"]);
  assertEqual(lines().filter(line => /^Left out/.test(line)),
              ["Left out: " + rows[0].Customer + ". The customer was set to \"No Marketing\" since the results were selected."]);
  assertEqual(control("lstTroubles").items.map((_, i) => control("lstTroubles").row(i)).map(row => [row.Message, row.State, row.To]),
              [["E-mail", "Failed", rows[1].Email], ["Text", "In doubt", rows[2].Mobile], ["E-mail", "In doubt", rows[3].Email]]);
});

const kDelivered = "1 customer already got its text or e-mail of this campaign; only the other half failed.\n\nSend them again what they already got?";

check("what was delivered is asked about: No tries what is missing, Yes sends the row whole; what is in doubt is left alone", () => {
  steer({recipients: {[rows[3].Email]: "ok"}, numbers: {[rows[2].Mobile]: "ok"}});
  answer(kDelivered, "No");
  answer(/^QBX could not send email/, "No");
  control("cmdSendSMS").click();
  assertEqual([arrived(), messages().slice(-2)[0].defaultButton], [["", "", "", ""], "No"]);
  assertMatch(lines().slice(-2)[0], "2 row(s) are in doubt and were left alone");
  steer({recipients: {[rows[1].Email]: "ok"}});
  answer(kDelivered, "Yes");
  send();
  assertEqual(arrived(), ["", "TE", "", ""]);
});

check("a message in doubt that did not arrive is sent by the next run, which repeats nothing else", () => {
  const settle = button => {
    control("lstTroubles").choose(1);
    answer("Did the messages in doubt of 1 row(s) not arrive?\n\nThe next run will send them.", button);
    control("cmdSettleNotSent").click();
  };
  settle("No");
  assertEqual(control("lstTroubles").cell(1, "State"), "In doubt");
  settle("Yes");
  assertEqual(control("lstTroubles").rowCount, 1);
  control("cmdSendSMS").click();
  assertEqual(arrived(), ["", "", "", "E"]);
  assertEqual(sql("SELECT Processed FROM [Campaign Results] ORDER BY Customer").map(row => row.Processed), [0, 1, 0, 1]);
});
