// A command line that means nothing ends the program with a line in the status box.

["/backup", "Pat"].forEach(line => check(line + " is not understood", () => {
  assertEqual(start({commandLine: line}), "stopped");
  assertEqual(statusTexts(), ["QBX Marketing & Reporting Module will now exit."]);
  assertEqual(messages(), []);
  assertEqual(windows(), []);
  assertEqual(calls(), [], "nobody connected");
}));

check("a user of 28 characters is cut to 20, blanks inside the quotes stay", () => {
  assertEqual(start({commandLine: '/USERID:"Jo Brown of the Front Desk"'}), "running");
  assertMatch(control("lblConnection").text, "User: Jo Brown of the Fron ");
  assert(events().some(event => event.type === 9 && event.key === "MARKETING" && event.user === "Jo Brown of the Fron" &&
                                /^Login: Jo Brown of the Fron on Computer: \S+$/.test(event.details)));
});

check("the debug option is noted", () => {
  start({ini: {App: {Debug: " yes "}}});
  assertMatch(log().join("\n"), "Debug Option specified.");
});
