// The campaign manager when others were faster, or the database fails: a clear word, and nothing is lost.

const names = list => list.items.map((_, row) => list.cell(row, "Campaign Name"));
const select = (list, name) => list.clickCell(names(list).indexOf(name), "Campaign Name");
const question = "Lose any changes and load an existing campaign?";

function manage(action) {
  onWindow("frmCampaigns", window => {
    action(window, window.control("lstCampaigns"));
    if (windows()[0] === "frmCampaigns") window.control("cmdClose").click();
  });
  answer(question, "Yes");
  control("mnuLoad").trigger();
}
function removedByAnother(name) {
  execute("DELETE FROM Marketing_Campaigns WHERE Campaign_Name = '" + name + "'");
}

start();
control("cmdNew").click();
control("tvQuery").choose("Top Customers");
control("txtCriteria").setText("42");
const caption = control("frmMain").caption;

check("a campaign that somebody deleted cannot be loaded; the list shows it, the wizard keeps what it holds", () => {
  manage((window, list) => {
    select(list, "MOT due");
    removedByAnother("MOT due");
    answer("Campaign not found!");
    window.control("cmdLoad").click();
    assertEqual(lastMessage().icon, "exclamation");
    assert(!names(list).includes("MOT due"));
    assertEqual(window.control("txtDesc").text, "");
    window.control("cmdLoad").click();
    assert(exists("frmCampaigns.cmdLoad"), "with nothing chosen nothing happens");
  });
  assertEqual([control("txtCriteria").text, control("tvQuery").selectedText], ["42", "Top Customers"]);
});

check("nor edited, copied or deleted: each says so once and refreshes the list", () => {
  const acts = {
    "Lapsed customers": window => {
      window.control("cmdEdit").click();
      removedByAnother("Lapsed customers");
      window.control("cmdSave").click();
    },
    "Top 25 of the year": window => {
      removedByAnother("Top 25 of the year");
      answerInput("A copy");
      window.control("cmdCopy").click();
    },
  };
  for (const name of Object.keys(acts)) {
    manage((window, list) => {
      select(list, name);
      const before = messages().length;
      answer("The campaign is no longer stored.");
      acts[name](window);
      assertEqual(messages().length, before + 1);
      assert(!names(list).includes(name), name);
    });
  }
  manage((window, list) => {
    select(list, "Recent visitors: winter check");
    removedByAnother("Recent visitors: winter check");
    answer("OK to delete the selected Campaign 'Recent visitors: winter check'?", "Yes");
    acceptNotices();
    window.control("cmdDelete").click();
    acceptNotices(false);
    assert(!names(list).includes("Recent visitors: winter check"));
  });
});

const failures = [
  ["proc_sel_Marketing_Campaigns", "Database Error - no list today", null],
  ["proc_selp_Marketing_Campaign", "LoadCampaign", window => window.control("cmdLoad").click()],
  ["proc_updp_Marketing_Campaign_Details", "UpdateCampaignDetails",
   window => { window.control("cmdEdit").click(); window.control("txtName").setText("Changed"); window.control("cmdSave").click(); }],
  ["proc_copy_Marketing_Campaign", "CopyCampaign", window => { answerInput("A copy"); window.control("cmdCopy").click(); }],
  ["proc_delp_Marketing_Campaign", "DeleteCampaign", window => { answer("OK to delete", "Yes"); window.control("cmdDelete").click(); }],
];
for (const [procedure, routine, act] of failures) {
  check(procedure + " failing is reported, and the next try works", () => {
    const stored = sql("SELECT ID, Campaign_Name FROM Marketing_Campaigns");
    if (act === null) failProcedure(procedure, "no list today");
    if (act === null) answer("no list today");
    manage((window, list) => {
      if (act === null) return;
      select(list, "Audi, BMW and Volkswagen");
      failProcedure(procedure, "no list today");
      answer("no list today");
      act(window);
      assert(exists("frmCampaigns.cmdLoad"), "the manager stays");
    });
    failProcedure(procedure, "");
    assertMatch(log().slice(-2).join("\n"), routine);
    assertEqual(sql("SELECT ID, Campaign_Name FROM Marketing_Campaigns"), stored);
    assertEqual([control("txtCriteria").text, control("frmMain").caption], ["42", caption]);
  });
}

check("the history that cannot be read is reported", () => {
  dropProcedure("proc_sel_Marketing_Campaigns_History");
  answer("Could not find");
  manage((window, list) => assert(list.rowCount > 0));
  restoreProcedure("proc_sel_Marketing_Campaigns_History");
  assertMatch(log().slice(-2).join("\n"), "select_Marketing_Campaigns_History");
});

check("what was typed in an edit that failed is there again in the next one", () => {
  manage((window, list) => {
    select(list, "Audi, BMW and Volkswagen");
    window.control("cmdEdit").click();
    window.control("txtDescription").setText("A long text that took a while");
    failProcedure("proc_updp_Marketing_Campaign_Details", "not now");
    answer("not now");
    window.control("cmdSave").click();
    failProcedure("proc_updp_Marketing_Campaign_Details", "");
    window.control("cmdEdit").click();
    assertEqual(window.control("txtDescription").text, "A long text that took a while");
    window.control("cmdSave").click();
  });
  assertEqual(sql("SELECT COUNT(*) AS n FROM Marketing_Campaigns WHERE Campaign_Description = 'A long text that took a while'")[0].n, 1);
});

check("a campaign that somebody sends is not deleted", () => {
  const [campaign] = sql("SELECT MIN(ID) AS ID FROM Marketing_Campaigns");
  const name = sql("SELECT Campaign_Name FROM Marketing_Campaigns WHERE ID = " + campaign.ID)[0].Campaign_Name;
  execute("INSERT INTO Campaign_Claims VALUES (" + campaign.ID + ", 'Alex', 'FRONTDESK', 4711, '1', GetDate(), '2026-03-04 10:20:00')");
  manage((window, list) => {
    select(list, name);
    answer("OK to delete", "Yes");
    answer(/being sent by Alex.*FRONTDESK/);
    window.control("cmdDelete").click();
    assert(names(list).includes(name));
  });
  assertEqual(sql("SELECT ID FROM Marketing_Campaigns WHERE ID = " + campaign.ID).length, 1);
  execute("DELETE FROM Campaign_Claims");
});

check("a name that could not be stored is not in the caption, and counts as a change", () => {
  const save = name => {
    onWindow("frmCampaigns", window => {
      window.control("txtName").setText(name);
      window.control("cmdSave").click();
    });
    control("mnuSave").trigger();
  };
  save("Stored");
  const stored = control("frmMain").caption;
  assertMatch(stored, " - [Stored]");
  failProcedure("proc_updp_Marketing_Campaign", "not now");
  answer("not now");
  save("Not stored");
  failProcedure("proc_updp_Marketing_Campaign", "");
  assertEqual(control("frmMain").caption, stored);
  answer("have not been saved", "No");
  assert(!closeWindow());
  onWindow("frmCampaigns", window => {
    assertEqual(window.control("txtName").text, "Not stored", "what was typed is there again");
    window.control("cmdSave").click();
  });
  control("mnuSave").trigger();
  assertMatch(control("frmMain").caption, " - [Not stored]");
});
