// Misspelt words are put right from the menu of each editor of step 4, by keyboard; what the user taught it is kept.

start();
walkTo(4);
const page = name => control("ssTabLetters").selectTab(name);
const choose = (name, entry) => {
  answerMenu(entry);
  control(name).press("Shift+F10");
};

check("a suggestion takes the place of the word in the letter, and the marks are not stored", () => {
  page("Printed Letter");
  control("rtfLetter").type("Dear {contact}, zxqwvb, please recieve").press("Ctrl+B").press("Home");
  screenshot("spelling_letter");
  control("rtfLetter").press("End");
  choose("rtfLetter", "receive");
  assertEqual(control("rtfLetter").text, "Dear {contact}, zxqwvb, please receive");
  saveAs("Spelt");
  const letter = sql("SELECT Letter FROM Marketing_Campaigns WHERE Campaign_Name = 'Spelt'")[0].Letter;
  assertMatch(letter, "zxqwvb, please receive");
  assertNoMatch(letter, "\\ul");
});

check("so in subject and body of the e-mail, whose values follow", () => {
  page("Email");
  control("txtEmailSubject").type("Your apointment").press("Home").press("Right", 6);
  choose("txtEmailSubject", "appointment");
  control("txtEmailBody").type("We recieve you").press("Left", 5);
  choose("txtEmailBody", "receive");
  screenshot("spelling_email");
  control("cmdTestEmail0").click();
  assertEqual(shown("txtEmailSubjectExample", "txtEmailBodyExample"), ["Your appointment", "We receive you"]);
});

check("a word that is added is kept for the user, and so is the tick", () => {
  page("Text Message");
  control("txtSMS").type("Vrelo");
  choose("txtSMS", "Add to dictionary");
  choose("txtSMS", "Check spelling");
  assertEqual([readFile("MARKETING-WORDS-pat.TXT"), registry("user", "Pat\\Spelling", "Check")], ["Vrelo\n", "False"]);
});
