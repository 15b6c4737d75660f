// The whole road of one campaign by the keyboard alone.

start({options: {Only_Send_Comms_When_Opted_In: false}});

// Presses a key until it is there.
function until(what, there, key) {
  for (let steps = 0; !there(); steps++) {
    assert(steps < 40, what + " cannot be reached with " + key + "; stopped at " + focusedControl());
    press(key);
  }
}
const goTo = name => until(name, () => focusedControl() === name, "Tab");

check("from the start panel to the filters: the tree is walked with arrows, dates are typed, and Alt+N goes on", () => {
  assertEqual(focusedControl(), "cmdNew");
  press("Return");
  assertEqual([currentTab(), focusedControl()], [1, "tvQuery"]);
  until("the query", () => control("tvQuery").selectedText === "Recent Customers", "Down");
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
  goTo("cmbFilter1");
  press("Down");
  assertEqual([control("chkFilter1").ticked, control("cmbFilter1").selectedText], [true, "Type Is"]);
  goTo("cmbData1");
  type("Retail");
  press("F5");
  assertMatch(control("lblRecords1").text, /^Records found: [1-9]/);
  press("Alt+N");
  assertEqual([currentTab(), focusedControl()], [3, "dbgData"]);
});

check("the grid is walked, a flag flips with Space, and send methods are set", () => {
  const grid = control("dbgData");
  press("Ctrl+Home");
  press("Down");
  until("the column", () => grid.currentColumn === "Send Letter", "Right");
  press("Space");
  assertEqual([grid.currentRow, grid.cell(1, "Send Letter")], [1, "Yes"]);
  assertEqual(sql("SELECT Customer AS c FROM [Campaign Results] WHERE Send_Letter = 1").map(row => String(row.c)), [grid.cell(1, "Customer")]);
  goTo("cmbSendBy1");
  press("Down");
  goTo("cmdSetSendMethods");
  press("Space");
  assert(count("[Campaign Results] WHERE Send_Email = 1") > 0);
});

check("the campaign is saved with a name, and the last steps are reached", () => {
  onWindow("frmCampaigns", () => {
    screenshot("keyboard_save");
    goTo("txtName");
    type("By keyboard");
    press("Return");
  });
  press("Ctrl+S");
  assertMatch(control("frmMain").caption, "By keyboard");
  press("Alt+N");
  assertEqual(currentTab(), 4);
  press("Alt+C");
  assertEqual(currentTab(), 5);
  press("Ctrl+Q");
  assertEqual(windows(), []);
});
