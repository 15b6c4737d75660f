// Step 1: makes are chosen from the list, typed, or both.

start({options: {Only_Send_Comms_When_Opted_In: false}});
walkTo(1, "Specific Makes");
const list = control("lstMakes");
const text = control("txtMakes");

check("the list holds the vehicle makes of the host, and what is chosen stands in the text in its order", () => {
  assertEqual(list.items, sql("SELECT Description FROM Makes WHERE Kind = 0 ORDER BY 1").map(row => row.Description));
  assertEqual(control("Label1").text, "Makes:");
  list.choose("Ford");
  list.toggle("Audi");
  assertEqual(text.text, "Audi, Ford");
});

check("the list follows what is typed, and what it does not have is kept behind", () => {
  text.setText("Lada,  audi, Ford , Wartburg");
  assertEqual(list.selectedTexts, ["Audi", "Ford"]);
  list.toggle("BMW");
  list.toggle("Audi");
  assertEqual(text.text, "BMW, Ford, Lada, Wartburg");
  list.choose([]);
  assertEqual(text.text, "Lada, Wartburg");
});

check("nothing chosen and nothing typed is refused", () => {
  text.setText("   ");
  refused("Makes Selection is not valid. Please choose one or more Makes.", () => control("cmdNext0").click());
  assertEqual(currentTab(), 1);
});

check("only vehicles of these makes are selected", () => {
  list.choose(["Ford", "Audi"]);
  text.setText(text.text + ", Vauxhall ");
  control("cmdNext0").click();
  assertEqual(sql("SELECT DISTINCT Make FROM [Campaign Results] ORDER BY 1").map(row => row.Make), ["Audi", "Ford", "Vauxhall"]);
});

check("choosing the query again empties the text and the selection", () => {
  selectTab(1);
  control("tvQuery").choose("All Vehicles");
  control("tvQuery").choose("Specific Makes");
  assertEqual([text.text, list.selectedTexts], ["", []]);
});
