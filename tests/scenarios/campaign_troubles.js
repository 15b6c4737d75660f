// The campaign manager when others were faster, or the database fails: a clear word, and nothing is lost.

const names = list => list.items.map((_, row) => list.cell(row, "Campaign Name"));
const removedByAnother = name => execute("DELETE FROM Marketing_Campaigns WHERE Campaign_Name = '" + name + "'");

start();
walkTo(1, "Top Customers");
control("txtCriteria").setText("42");
const held = () => [...shown("txtCriteria", "frmMain"), control("tvQuery").selectedText, control("frmMain").caption];
const before = held();

check("a campaign that somebody deleted cannot be loaded; the list shows it, the wizard keeps what it holds", () => {
  manage((window, list) => {
    list.choose("MOT due");
    removedByAnother("MOT due");
    refused("Campaign not found!", () => window.control("cmdLoad").click());
    assertEqual([names(list).includes("MOT due"), window.control("txtDesc").text], [false, ""]);
    window.control("cmdLoad").click();
    assert(exists("frmCampaigns.cmdLoad"), "with nothing chosen nothing happens");
  });
  assertEqual(held(), before);
});

check("nor edited, copied or deleted: each says so once and refreshes the list", () => {
  const acts = {
    "Lapsed customers": window => { window.control("cmdEdit").click(); removedByAnother("Lapsed customers"); window.control("cmdSave").click(); },
    "Top 25 of the year": window => { removedByAnother("Top 25 of the year"); answerInput("A copy"); window.control("cmdCopy").click(); },
  };
  for (const name of Object.keys(acts)) {
    manage((window, list) => {
      list.choose(name);
      refused("The campaign is no longer stored.", () => acts[name](window));
      assert(!names(list).includes(name), name);
    });
  }
  manage((window, list) => {
    list.choose("Recent visitors: winter check");
    removedByAnother("Recent visitors: winter check");
    answer("OK to delete the selected Campaign 'Recent visitors: winter check'?", "Yes");
    acceptNotices();
    window.control("cmdDelete").click();
    acceptNotices(false);
    assert(!names(list).includes("Recent visitors: winter check"));
  });
});

const failures = [
  ["proc_selp_Marketing_Campaign", "LoadCampaign", window => window.control("cmdLoad").click()],
  ["proc_updp_Marketing_Campaign_Details", "UpdateCampaignDetails",
   window => { window.control("cmdEdit").click(); window.control("txtDescription").setText("Typed at length"); window.control("cmdSave").click(); }],
  ["proc_copy_Marketing_Campaign", "CopyCampaign", window => { answerInput("A copy"); window.control("cmdCopy").click(); }],
  ["proc_delp_Marketing_Campaign", "DeleteCampaign", window => { answer("OK to delete", "Yes"); window.control("cmdDelete").click(); }],
];
check("a procedure that fails is reported, and nothing changes", () => {
  const stored = sql("SELECT * FROM Marketing_Campaigns");
  for (const [procedure, routine, act] of failures) {
    manage((window, list) => {
      list.choose("Audi, BMW and Volkswagen");
      failing(procedure, "not today", () => act(window));
      assertMatch(log().slice(-2).join("\n"), routine);
      assert(exists("frmCampaigns.cmdLoad"), "the manager stays");
      if (!/Details/.test(procedure)) return;
      window.control("cmdEdit").click();
      assertEqual(window.control("txtDescription").text, "Typed at length", "what was typed is there again");
      window.control("cmdCancel").click();
    });
  }
  failing("proc_sel_Marketing_Campaigns", "not today", () => manage(() => {}));
  failing("proc_sel_Marketing_Campaigns_History", "not today", () => manage((window, list) => assert(list.rowCount > 0)));
  assertMatch(log().pop(), "Database Error - not today");
  assertEqual([sql("SELECT * FROM Marketing_Campaigns"), held()], [stored, before]);
});

check("a campaign that somebody sends is not deleted", () => {
  const [campaign] = sql("SELECT ID FROM Marketing_Campaigns WHERE Campaign_Name = 'Audi, BMW and Volkswagen'");
  sentElsewhere(campaign.ID, () => manage((window, list) => {
    list.choose("Audi, BMW and Volkswagen");
    answer("OK to delete", "Yes");
    answer(/being sent by Alex.*FRONTDESK/);
    window.control("cmdDelete").click();
    assert(names(list).includes("Audi, BMW and Volkswagen"));
  }));
  assertEqual(count("Marketing_Campaigns WHERE ID = " + campaign.ID), 1);
});

check("a name that could not be stored is not in the caption, and counts as a change", () => {
  saveAs("Stored");
  failing("proc_updp_Marketing_Campaign", "not now", () => saveAs("Not stored"));
  assertMatch(control("frmMain").caption, " - [Stored]");
  answer("have not been saved", "No");
  assert(!closeWindow());
  onWindow("frmCampaigns", window => {
    assertEqual(window.control("txtName").text, "Not stored", "what was typed is there again");
    window.control("cmdSave").click();
  });
  control("mnuSave").trigger();
  assertMatch(control("frmMain").caption, " - [Not stored]");
});
