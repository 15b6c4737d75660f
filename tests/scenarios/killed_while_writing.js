// The program is killed while texts are being written: the next start offers them, and an orderly end leaves nothing
// behind.

start();
control("cmdNew").click();
write({sms: "Stored"});
saveAs("MOT");
const drafts = () => files().filter(name => /^MARKETING-DRAFT/.test(name));
const writeLetter = `
  load("MOT");
  selectTab(4);
  control("rtfLetter").type("Dear {contact}");
  write({sms: "Your MOT is due"});
  wait(60000);`;
const writeNew = `
  control("cmdNew").click();
  write({subject: "Offer"});
  wait(60000);`;

check("what was written is taken up in its campaign, and counts as changed", () => {
  killed(writeLetter, () => drafts().length > 0);
  answer(/for the campaign "MOT"\.\n\nNot saved, as of 04\/03\/2026 10:20:\n *the letter\n *the text message "Your MOT is due"\n/, "Yes");
  restart();
  assertEqual([currentTab(), control("rtfLetter").text, control("txtSMS").text], [4, "Dear {contact}", "Your MOT is due"]);
  assertMatch(control("frmMain").caption, "[MOT]");
  assertEqual(lastMessage().defaultButton, "Yes");
  answer("have not been saved", "No");
  assert(!closeWindow() && drafts().length === 1);
});

check("an orderly end removes it, and so does undoing what was written", () => {
  restart();
  assertEqual(drafts(), []);
  load("MOT");
  write({sms: "x"});
  waitFor(() => drafts().length === 1);
  write({sms: "Stored"});
  waitFor(() => drafts().length === 0);
});

check("nothing is thrown away by a slip, and a damaged draft is set aside", () => {
  killed(writeNew, () => drafts().length > 0);
  const draft = drafts()[0];
  answer("a campaign that was not saved yet", "No");
  answer("for good?", "No");
  restart();
  answer("a campaign that was not saved yet", "Cancel");
  restart();
  const text = readFile(draft);
  writeFile(draft, text.substring(0, 40));
  restart();
  assertMatch(log().pop(), "is damaged");
  writeFile(draft, text);
  answer('the e-mail "Offer"', "No");
  answer("for good?", "Yes");
  restart();
  assertEqual(drafts(), [draft + ".DAMAGED"]);
});
