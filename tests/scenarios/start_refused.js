// The program is started by the host, with a user on the command line.

check("without a user it says where to start it from, and ends", () => {
  answer("Please run ");
  assertEqual(start({commandLine: ""}), "refused");
  assertMatch(lastMessage().text, /^Please run .+ from within the main QBX program\.$/);
  assertEqual([lastMessage().icon, lastMessage().caption], ["exclamation", "QBX Marketing & Reporting Module"]);
  assertEqual(windows(), []);
  assertEqual(calls(), [], "nobody connected");
});

["/?", '/? /userid:"Pat"'].forEach(line => check(line + " shows the help, says that it exits, and opens nothing", () => {
  clearMessages();
  answer("Command line options:");
  assertEqual(start({commandLine: line}), "stopped");
  assertEqual(messages().length, 1);
  assertEqual(lastMessage().text, "Command line options: /Backup /ReIndex /Silent /File:QBX.DAT\n\n" +
                                  "Command line parameters need to be passed in the order shown above.");
  assertEqual([lastMessage().icon, lastMessage().caption], ["information", "QBX Marketing & Reporting Module"]);
  assertEqual(statusTexts(), ["QBX Marketing & Reporting Module will now exit."]);
  assertEqual(windows(), []);
}));
