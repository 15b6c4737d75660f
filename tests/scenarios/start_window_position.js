// The main window opens where each user left it.

const kTwips = 15;

check("size and place are kept on closing, in twips, and come back for that user", () => {
  start();
  const usual = control("frmMain").size;
  control("frmMain").resize(900, 700);
  assert(closeWindow());
  assertMatch(registry("user", "Pat\\frmMain", "WinPos"), new RegExp("^\\d+, \\d+, " + 900 * kTwips + ", " + 700 * kTwips + "$"));
  restart({user: "Jo", registry: {user: {"Jo\\frmMain": {WinPos: "1, 2, 3"}}}});  // which is no place
  assertEqual(control("frmMain").size, usual);
  restart({user: "Pat"});
  assertEqual(control("frmMain").size, {width: 900, height: 700});
});

check("a window that was nearly closed up, or stood beyond the screen, can be used again", () => {
  start({registry: {user: {"Pat\\frmMain": {WinPos: "-3000, 90000, 100, 90"}}}});
  const size = control("frmMain").size;
  assert(size.width > 300 && size.height > 300, JSON.stringify(size));
  control("cmdNew").click();
  assertEqual(currentTab(), 1);
  screenshot("smallest_window");
});
