// Step 1: makes are chosen from the list, typed, or both.

start({options: {Only_Send_Comms_When_Opted_In: false}});
control("cmdNew").click();
control("tvQuery").choose("Specific Makes");
const list = control("lstMakes");
const text = control("txtMakes");

check("the list holds the vehicle makes of the host", () => {
  assertEqual(list.items, sql("SELECT Description FROM Makes WHERE Kind = 0 ORDER BY 1").map(row => row.Description));
  assertEqual(control("Label1").text, "Makes:");
});

check("chosen makes stand in the text in the order of the list", () => {
  list.choose("Ford");
  list.toggle("Audi");
  assertEqual(text.text, "Audi, Ford");
  list.toggle("Audi");
  assertEqual(text.text, "Ford");
});

check("typed makes that are not in the list are kept behind the chosen ones; others are chosen in the list", () => {
  text.setText("Lada,  audi, Ford , Wartburg");
  assertEqual(list.selectedTexts, ["Audi", "Ford"]);
  list.toggle("BMW");
  list.toggle("Audi");
  assertEqual(text.text, "BMW, Ford, Lada, Wartburg");
  list.choose([]);
  assertEqual(text.text, "Lada, Wartburg");
});

check("nothing chosen and nothing typed is refused, blanks as well", () => {
  ["", "   "].forEach(nothing => {
    text.setText(nothing);
    answer("Makes Selection is not valid. Please choose one or more Makes.");
    control("cmdNext0").click();
    assertEqual(lastMessage().icon, "exclamation");
    assertEqual(currentTab(), 1);
  });
});

check("only vehicles of these makes are selected", () => {
  list.choose(["Ford", "Audi"]);
  text.setText(text.text + ", Vauxhall ");
  control("cmdNext0").click();
  control("cmdNext1").click();
  const grid = control("dbgData");
  assert(grid.rowCount > 0);
  const makes = new Set();
  for (let row = 0; row < grid.rowCount; row++) makes.add(grid.cell(row, "Make"));
  assertEqual([...makes].sort(), ["Audi", "Ford", "Vauxhall"]);
});

check("choosing the query again empties the text and the selection", () => {
  selectTab(1);
  control("tvQuery").choose("All Vehicles");
  control("tvQuery").choose("Specific Makes");
  assertEqual(text.text, "");
  assertEqual(list.selectedTexts, []);
});

check("the list follows the text, so that a click adds to what was typed", () => {
  start();
  control("cmdNew").click();
  control("tvQuery").choose("Specific Makes");
  control("txtMakes").setText("audi, Zagato, Volkswagen");
  assertEqual(control("lstMakes").selectedTexts, ["Audi", "Volkswagen"]);
  control("lstMakes").toggle("BMW");
  assertEqual(control("txtMakes").text, "Audi, BMW, Volkswagen, Zagato");
});
