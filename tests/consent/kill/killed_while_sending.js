// The program is killed in the middle of a run. The next start shows the message that was being sent, and repeats no
// message that arrived.

start({sandbox: true});
control("cmdNew").click();
control("tvQuery").choose("All Customers");
control("cmdNext0").click();
control("cmdNext1").click();
execute("DELETE FROM [Campaign Results] WHERE RecordID NOT IN (SELECT RecordID FROM [Campaign Results] ORDER BY Customer LIMIT 6)");
execute("UPDATE [Campaign Results] SET Send_SMS = 1, Send_Email = 1, Mobile = '0770090010' || cast(RecordID % 10 AS varchar(9)), Email = 'c' || cast(RecordID AS varchar(9)) || '@example.com'");
const row = Array.from(sql("SELECT Mobile, Email FROM [Campaign Results] ORDER BY Customer"));
selectTab(4);
control("ssTabLetters").selectTab("Text Message");
control("txtSMS").setText("Dear {contact}, your MOT is due. Reply STOP to opt out.");
control("ssTabLetters").selectTab("Email");
control("txtEmailSubject").setText("MOT");
control("txtEmailBody").setText("Dear {contact}, your MOT is due.");
onWindow("frmCampaigns", window => {
  window.control("txtName").setText("MOT");
  window.control("cmdSave").click();
});
control("cmdSave").click();

const lastPage = `
  onWindow("frmCampaigns", window => {
    window.control("lstCampaigns").choose("MOT");
    window.control("cmdLoad").click();
  });
  control("cmdLoad").click();
  selectTab(5);`;
const send = `
  onMessage(box => /approximately/.test(box.text) ? "Yes" : undefined);
  control("cmdSendSMS").click();`;
let before = [0, 0];
const arrived = () => [...texts().slice(before[0]).map(text => text.to), ...mails().slice(before[1]).map(mail => String(mail.to))];
const everything = [...row.map(one => one.Mobile), ...row.map(one => one.Email)].sort();

function kill(name, behaviour, when, inDoubt) {
  check(name, () => {
    steer(behaviour);
    killed(lastPage + send, when);
    steer({});
    restart();
    eval(lastPage);
    const doubt = exists("lstTroubles") && control("fraTroubles").visible ? control("lstTroubles").row(0) : null;
    if (inDoubt !== undefined) {
      assertEqual([doubt.State, doubt.To, control("lstTroubles").rowCount], ["In doubt", inDoubt, 1]);
      assertMatch(control("lblTroubles").text, "1 in doubt: the next run leaves these rows alone");
    }
    const onItsWay = doubt !== null && arrived().includes(doubt.To);
    eval(send);
    assertEqual(arrived().length, new Set(arrived()).size, "nothing arrived twice");
    if (doubt !== null) {
      control("lstTroubles").choose(0);
      answer("1 row(s)", "Yes");
      control(onItsWay ? "cmdSettleSent" : "cmdSettleNotSent").click();
      acceptNotices();
      control("cmdSendSMS").click();
    }
    assertEqual(arrived().sort(), everything);
    before = [texts().length, mails().length];
    execute("DELETE FROM Send_Journal");
    execute("UPDATE [Campaign Results] SET Processed = 0, Processed_Date = NULL");
  });
}
kill("with a text on its way", {numbers: {[row[1].Mobile]: "slow"}, delay: 60}, () => arrived().includes(row[1].Mobile), row[1].Mobile);
kill("with an e-mail on its way", {recipients: {[row[3].Email]: "slow"}, delay: 60}, () => arrived().includes(row[3].Email), row[3].Email);
kill("anywhere", {numbers: {[row[5].Mobile]: "slow"}, delay: 60}, () => arrived().length > 4);
