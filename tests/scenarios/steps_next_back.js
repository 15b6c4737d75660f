// Moving between the steps, the run command, and the question before sent rows are replaced.

start({options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();

function notRun(step, caption) {
  const text = "Step " + step + " has not been completed. Please go to tab " + caption + " and click 'Next >'.";
  refused(text, () => control("cmdRun").click());
}

check("the campaign runs only when the three steps are complete, one after the other", () => {
  walkTo(1);
  notRun(1, "1. Query / Report Starting Point");
  control("cmdNext0").click();
  notRun(2, "2. Data Filtering");
  control("cmdNext1").click();
  assertEqual(shown("lblStepComplete2", "lblInfo3"), ["Press Next> for Marketing Options",
                                                      "       Query results. You can remove records you don't want to include."]);
  notRun(3, "3. Report Results");
  assertEqual(currentTab(), 3);
  control("cmdNext2").click();
  assertEqual(currentTab(), 4);
  control("cmdRun").click();
  assertEqual([currentTab(), control("lblInfo5").text],
              [5, "       When you are ready please click the Process Letters or Process SMS/Email buttons below."]);
});

check("Back goes one step, keeps the steps complete, and is written down", () => {
  selectTab(3);
  click("cmdBack2", "cmdBack1");
  assertEqual(currentTab(), 1);
  control("cmdRun").click();
  assertEqual(currentTab(), 5);
  const clicks = events().filter(event => event.key === "MARKETING" && /^Clicked/.test(event.details)).map(event => event.details);
  assertEqual(clicks, ["Clicked: Next(0)", "Clicked: Next(1)", "Clicked: Next(2)", "Clicked: Back(2)", "Clicked: Back(1)"]);
});

const question = "Please note that some results have been processed. If you click next on Step 1 or Step 2 then the results will be reset. " +
  "If you want to process any unprocessed results you can just switch to the tab directly without using the Next button.\n\n" +
  "Do you want to reload the results and reset the Processed Status?";
const processed = () => count("[Campaign Results] WHERE Processed = 1");

check("rows that were sent are not replaced without a question, which comes before the checks of the step", () => {
  execute("UPDATE [Campaign Results] SET Send_Email = 1, Processed = 1 WHERE RecordID IN " +
          "(SELECT RecordID FROM [Campaign Results] ORDER BY RecordID LIMIT 2)");
  [[1, "cmdNext0"], [2, "cmdNext1"]].forEach(([tab, button]) => {
    selectTab(tab);
    answer(question, "No");
    control(button).click();
    assertEqual([lastMessage().icon, currentTab(), processed()], ["question", tab, 2]);
  });
  selectTab(3);
  control("cmdNext2").click();
  assertEqual(currentTab(), 4, "step 3 asks nothing");
  selectTab(1);
  control("tvQuery").choose("Specific Makes");
  answer(question, "Yes");
  answer("Makes Selection is not valid.");
  control("cmdNext0").click();
  assertEqual(processed(), 2);
  answer(question, "Yes");
  walkTo(2);
  assertEqual([currentTab(), processed()], [2, 0]);
});

check("a garage that sends through the host's mail server is told so each time tab 5 opens", () => {
  start({ini: {Service: {MailHost: "mail.invalid"}}});
  control("cmdNew").click();
  for (const time of [1, 2]) {
    refused("Please note that this system is currently configured to use the QBX Email Server. You can configure the system to use your " +
      "own email account in the QBX System Settings screen on the Communcations Tab.\n\nUsing your own account may bring benefits such as " +
      "recording the sent emails in your own Outbound or Sent Items list. It should also be quicker to connect and to send emails using your " +
      "own email provider.", () => selectTab(5), "information");
    selectTab(time);
  }
});
