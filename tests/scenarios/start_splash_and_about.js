// The splash covers the start, and the about box shows the same window with what this computer is connected to.

check("the splash stands until the main window is there", () => {
  const seen = [];
  onPump(() => {
    if (exists("frmAbout") && seen.length === 0) seen.push(...control("frmAbout").visibleTexts());
  });
  assertEqual(start(), "running");
  onPump(null);
  assertEqual(seen[0], "QBX Marketing & Reporting Module");
  assertMatch(seen[1], /^Version: \d/);
  assertEqual(windows(), ["frmMain"]);
});

check("the start is written down", () => {
  assertEqual(events(), [{type: 9, table: 0, key: "MARKETING", details: "Login: Pat on Computer: WORKSHOP-PC", user: "Pat",
                          date: "2026-03-04 10:20:30.000"}]);
  assertEqual(ini("Database", "Name"), "QBXKorvelManager");
  assertEqual(messages(), []);
});

check("the about box names computer and database, and Escape closes it", () => {
  onWindow("frmAbout", window => {
    assertEqual(window.caption, "About QBX Marketing & Reporting Module");
    assertMatch(window.control("lblComputer").text, "WORKSHOP-PC");
    assertMatch(window.control("lblDatabase").text, "QBXKorvelManager");
    const lines = name => window.control(name).size.height / window.control("lblServer").size.height;
    assert(lines("lblHint") > 1.5, "the hint stands there whole");
    press("Escape");
  });
  control("mnuAbout").trigger();
  assertEqual(windows(), ["frmMain"]);
});
