// The database goes away while the wizard is open, and comes back: it is said once, and nothing is lost.

start({options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
control("tvQuery").choose("All Customers");

const rows = () => sql("SELECT RecordID FROM [Campaign Results] ORDER BY 1").map(row => row.RecordID);

// Notices are read, questions answered Yes.
function toldOnce(what, action) {
  clearMessages();
  onMessage(box => box.buttons.includes("Yes") ? "Yes" : "OK");
  action();
  onMessage(null);
  const notices = messages().filter(box => box.icon !== "question");
  assertEqual(notices.length, 1, what + ": " + JSON.stringify(notices));
  assertMatch(notices[0].text, "SQL Server does not exist or access denied.", what);
  assert(!busy(), what);
}

check("each command says it once", () => {
  loseConnection();
  toldOnce("Next", () => control("cmdNext0").click());
  assertEqual(currentTab(), 1);
  toldOnce("a list of makes", () => control("tvQuery").choose("Specific Makes"));
  toldOnce("load", () => {
    onWindow("frmCampaigns", manager => manager.close());
    control("mnuLoad").trigger();
  });
  toldOnce("the last tab", () => selectTab(5));
  toldOnce("a new campaign", () => control("mnuStart").trigger());
  assertEqual(currentTab(), 1);
  control("tvQuery").choose("All Customers");
  clearMessages();
  onMessage(() => "OK");
  control("cmdRun").click();
  onMessage(null);
  assertEqual(messages().filter(box => /does not exist/.test(box.text)).length, 1, "run");
});

check("when it is back, the wizard goes on; the campaign gets the number that it lacked", () => {
  restoreConnection();
  control("cmdNext0").click();
  assertEqual(currentTab(), 2);
  assert(rows().length > 0);
  assert(sql("SELECT max(CampaignID) AS id FROM [Campaign Results]")[0].id < 0);
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
  during(() => control("cmdNext1").click(), () => {
    if (statusBox() === null) return false;
    press("Escape");
    return true;
  });
  unlockDatabase();
  assertEqual(currentTab(), 2);
  assertEqual(rows(), before);
  lockDatabase(300);
  control("cmdNext1").click();
  assertEqual(currentTab(), 3);
});

check("closing says it once", () => {
  loseConnection();
  toldOnce("closing", () => assert(closeWindow()));
});
