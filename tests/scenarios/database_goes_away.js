// The database goes away while the wizard is open, and comes back: it is said once, and nothing is lost.

start({options: {Only_Send_Comms_When_Opted_In: false}});
walkTo(1);
const rows = () => sql("SELECT RecordID FROM [Campaign Results] ORDER BY 1").map(row => row.RecordID);

// Notices are read, questions answered Yes.
function toldOnce(what, action) {
  clearMessages();
  onMessage(box => box.buttons.includes("Yes") ? "Yes" : "OK");
  action();
  onMessage(null);
  const notices = messages().filter(box => box.icon !== "question" && !/settings data|has not been completed/.test(box.text));
  assertEqual([notices.length, busy()], [1, false], what + ": " + JSON.stringify(notices));
  assertMatch(notices[0].text, "SQL Server does not exist or access denied.", what);
}

check("each command says it once", () => {
  loseConnection();
  toldOnce("Next", () => control("cmdNext0").click());
  assertEqual(currentTab(), 1);
  toldOnce("a list of makes", () => control("tvQuery").choose("Specific Makes"));
  toldOnce("load", () => manage(window => assertMatch(window.control("lblCreatedBy").text, "could not be read")));
  toldOnce("the last tab", () => selectTab(5));
  toldOnce("texts and e-mails", () => control("cmdSendSMS").click());
  toldOnce("letters", () => control("cmdGenerateLetters").click());
  toldOnce("a new campaign", () => control("mnuStart").trigger());
  assertEqual(currentTab(), 1);
  toldOnce("run", () => control("cmdRun").click());
});

check("when it is back, the wizard goes on; the campaign gets the number that it lacked", () => {
  restoreConnection();
  walkTo(2);
  assertEqual([currentTab(), count("[Campaign Results] WHERE CampaignID < 0") > 0, count("[Campaign Results] WHERE CampaignID >= 0")], [2, true, 0]);
});

check("a database that was taken offline is named", () => {
  control("cmdNext1").click();
  const before = rows();
  takeOffline();
  breakConnection();
  selectTab(2);
  answer("Database 'QBXKorvelManager' cannot be opened because it is offline.");
  control("cmdNext1").click();
  assertEqual(currentTab(), 2);
  bringOnline();
  assertEqual(rows(), before);
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});

check("while somebody else writes, the query waits, and can be cancelled", () => {
  selectTab(2);
  const before = rows();
  lockDatabase();
  during(() => control("cmdNext1").click(), () => statusBox() !== null && (press("Escape"), true));
  unlockDatabase();
  assertEqual([currentTab(), rows()], [2, before]);
  lockDatabase(300);
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});

check("closing says it once", () => {
  loseConnection();
  toldOnce("closing", () => assert(closeWindow()));
});
