// The whole road of one campaign by the keyboard alone.

start({options: {Only_Send_Comms_When_Opted_In: false}});

// Tabs from where the focus is to a control.
function goTo(name, key) {
  for (let steps = 0; focusedControl() !== name; steps++) {
    assert(steps < 40, name + " cannot be reached with " + (key || "Tab") + "; stopped at " + focusedControl());
    press(key || "Tab");
  }
}

check("the start panel has the focus on its first command", () => {
  assertEqual(focusedControl(), "cmdNew");
  press("Return");
  if (!control("ssTabMain").enabled) press("Space");
  assertEqual(currentTab(), 1);
});

check("the tree is walked with arrows", () => {
  assertEqual(focusedControl(), "tvQuery");
  press("Down");
  for (let steps = 0; control("tvQuery").selectedText !== "Recent Customers"; steps++) {
    assert(steps < 12, "found in the tree");
    press("Down");
  }
  assert(control("fraDates").visible);
});

check("dates are typed, and Alt+N goes on", () => {
  goTo("dteDate0");
  type("01/03/2025");
  goTo("dteDate1");
  type("04/03/2026");
  press("Alt+N");
  assertEqual(currentTab(), 2);
});

check("a filter is ticked and chosen", () => {
  goTo("chkFilter1");
  press("Space");
  assert(control("chkFilter1").ticked);
  goTo("cmbFilter1");
  press("Down");
  assertEqual(control("cmbFilter1").selectedText, "Type Is");
  goTo("cmbData1");
  type("Retail");
  goTo("cmdApplyFilters");
  press("F5");
  assertMatch(control("lblRecords1").text, /^Records found: [1-9]/);
  press("Alt+N");
  assertEqual(currentTab(), 3);
});

const grid = control("dbgData");

check("the grid is walked, and a flag flips with Space", () => {
  assertEqual(focusedControl(), "dbgData");
  press("Ctrl+Home");
  assertEqual(grid.currentRow, 0);
  press("Down");
  assertEqual(grid.currentRow, 1);
  for (let steps = 0; grid.currentColumn !== "Send Letter"; steps++) {
    assert(steps < 40, "the column is reached; stopped at " + grid.currentColumn);
    press("Right");
  }
  const customer = grid.cell(1, "Customer");
  press("Space");
  assertEqual(grid.cell(1, "Send Letter"), "Yes");
  assertEqual(grid.currentRow, 1);
  assertEqual(sql("SELECT Customer AS c FROM [Campaign Results] WHERE Send_Letter = 1").map(row => String(row.c)), [customer]);
});

check("the grid can be left, and send methods are set", () => {
  goTo("cmbSendBy1");
  press("Down");
  assert(control("cmbSendBy1").selectedIndex === 0);
  goTo("cmdSetSendMethods");
  onMessage(box => box.buttons.includes("Yes") ? "Yes" : "OK");
  press("Space");
  onMessage(null);
  assert(sql("SELECT count(*) AS n FROM [Campaign Results] WHERE Send_Email = 1")[0].n > 0);
});

check("the campaign is saved with a name", () => {
  onWindow("frmCampaigns", manager => {
    screenshot("keyboard_save");
    goTo("txtName");
    type("By keyboard");
    press("Return");
  });
  press("Ctrl+S");
  assertMatch(control("frmMain").caption, "By keyboard");
});

check("the last steps", () => {
  press("Alt+N");
  assertEqual(currentTab(), 4);
  press("Alt+C");
  assertEqual(currentTab(), 5);
  press("Ctrl+Q");
  assertEqual(windows(), []);
});
