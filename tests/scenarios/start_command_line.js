// The program is started by the host, with a user on the command line.

check("without a user it says where to start it from, and ends", () => {
  refused(/^Please run .+ from within the main QBX program\.$/, () => assertEqual(start({commandLine: ""}), "refused"));
  assertEqual([lastMessage().caption, windows(), calls()], ["QBX Marketing & Reporting Module", [], []]);
});

check("/? shows the help, says that it exits, and opens nothing", () => {
  refused("Command line options: ", () => assertEqual(start({commandLine: '/? /userid:"Pat"'}), "stopped"), "information");
  assertEqual([statusTexts(), windows()], [["QBX Marketing & Reporting Module will now exit."], []]);
});

check("a command line that means nothing ends the program with a line in the status box", () => {
  clearMessages();
  assertEqual(start({commandLine: "/backup"}), "stopped");
  assertEqual(statusTexts(), ["QBX Marketing & Reporting Module will now exit."]);
  assertEqual([messages(), windows(), calls()], [[], [], []]);
});

check("a user of 28 characters is cut to 20, blanks inside the quotes stay, and the debug option is noted", () => {
  assertEqual(start({commandLine: '/USERID:"Jo Brown of the Front Desk"', ini: {App: {Debug: " yes "}}}), "running");
  assertMatch(control("lblConnection").text, "User: Jo Brown of the Fron ");
  assertMatch(log().join("\n"), "Debug Option specified.");
});
