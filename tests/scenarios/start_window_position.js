// The main window opens where each user left it.

const kTwips = 15;
const stored = user => registry("user", user + "\\frmMain", "WinPos");

check("size and place are kept on closing, in twips, and come back", () => {
  start();
  control("frmMain").resize(900, 700);
  assert(closeWindow());
  assertMatch(stored("Pat"), new RegExp("^\\d+, \\d+, " + 900 * kTwips + ", " + 700 * kTwips + "$"));
  restart();
  assertEqual(control("frmMain").size, {width: 900, height: 700});
});

check("another user has another place", () => {
  closeWindow();
  restart({user: "Jo"});
  const ownSize = control("frmMain").size;
  assertNotEqual(ownSize, {width: 900, height: 700});
  closeWindow();
  assertNotEqual(stored("Jo"), stored("Pat"));
  restart({user: "Pat"});
  assertEqual(control("frmMain").size, {width: 900, height: 700});
});

check("a text that is no place is ignored", () => {
  start();
  const usual = control("frmMain").size;
  ["somewhere", "1, 2, 3", "a, b, c, d", "0, 0, 0, 0, 0", ""].forEach(text => {
    start({registry: {user: {"Pat\\frmMain": {WinPos: text}}}});
    assertEqual(control("frmMain").size, usual, text);
  });
});

check("a window that was nearly closed up, or stood beyond the screen, can be used again", () => {
  start({registry: {user: {"Pat\\frmMain": {WinPos: "-3000, 90000, 100, 90"}}}});
  const size = control("frmMain").size;
  assert(size.width > 300 && size.height > 300, JSON.stringify(size));
  control("cmdNew").click();
  assertEqual(currentTab(), 1);
  screenshot("smallest_window");
});
