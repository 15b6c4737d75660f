// The functions that a scenario uses, over the commands of the runner. README.md of tests/scenarios is their reference.
(function (host, global) {
  "use strict";

  // A failure that is already reported; thrown only to leave the scenario's code.
  class Abandoned extends Error {}
  let abandoned = false;
  let assertions = 0;

  function call(name, ...args) {
    const result = host.call(name, args);
    if (abandoned) throw new Abandoned("abandoned");
    return result;
  }
  function stackOf(error) {
    return error instanceof Error && error.stack ? String(error.stack) : String(new Error().stack);
  }
  function fail(text, error) {
    host.call("fail", [String(text), stackOf(error)]);
  }
  // For what happens while a command runs: the command ends, then the scenario's code is left.
  function failAndLeave(text) {
    fail(text, new Error());
    abandoned = true;
  }
  function messageOf(error) {
    return error instanceof Error ? (error.name === "Error" ? "" : error.name + ": ") + error.message : "threw " + show(error);
  }
  function report(error, prefix) {
    if (error instanceof Abandoned) return;
    fail((prefix || "") + messageOf(error), error);
  }
  function show(value) {
    if (typeof value === "function" || value instanceof RegExp || value === undefined) return String(value);
    try {
      return JSON.stringify(value);
    } catch (e) {
      return String(value);
    }
  }
  function same(a, b) {
    if (a === b || (a !== a && b !== b)) return true;
    if (a === null || b === null || typeof a !== "object" || typeof b !== "object") return false;
    if (Array.isArray(a) !== Array.isArray(b)) return false;
    const keys = Object.keys(a);
    return keys.length === Object.keys(b).length && keys.every(key => Object.prototype.hasOwnProperty.call(b, key) && same(a[key], b[key]));
  }
  function matches(text, pattern) {
    return pattern instanceof RegExp ? pattern.test(text) : String(text).indexOf(String(pattern)) >= 0;
  }

  host.functions().forEach(name => { global[name] = (...args) => call(name, ...args); });

  // ---- assertions

  function verify(condition, explain, text) {
    assertions++;
    if (!condition) throw new Error((text ? text + ": " : "") + explain);
  }
  global.assert = (condition, text) => verify(condition, "assertion failed", text);
  global.assertEqual = (actual, expected, text) => verify(same(actual, expected), "is " + show(actual) + ", expected " + show(expected), text);
  global.assertNotEqual = (actual, unwanted, text) => verify(!same(actual, unwanted), "is " + show(actual) + ", which it must not be", text);
  global.assertMatch = (actual, pattern, text) => verify(matches(actual, pattern), show(actual) + " does not match " + show(pattern), text);
  global.assertNoMatch = (actual, pattern, text) => verify(!matches(actual, pattern), show(actual) + " matches " + show(pattern), text);
  global.assertThrows = (action, pattern) => {
    let thrown = null;
    try {
      action();
    } catch (error) {
      if (error instanceof Abandoned) throw error;
      thrown = error;
    }
    verify(thrown !== null, "nothing was thrown");
    if (pattern !== undefined) verify(matches(thrown.message, pattern), show(thrown.message) + " does not match " + show(pattern));
  };
  global.check = (name, action) => {
    try {
      action();
      host.call("checked", [String(name)]);
      return true;
    } catch (error) {
      if (error instanceof Abandoned) host.call("checkFailed", [String(name)]);
      else report(error, name + ": ");
      abandoned = false;
      return false;
    }
  };
  global.print = (...values) => call("printLine", values.map(value => (typeof value === "string" ? value : show(value))).join(" "));

  // ---- what is answered in advance

  let answers = [];
  // These questions come only when something would be lost, so an answer to one of them may be left over; a later one
  // takes its place.
  const mayStayAway = part => ["Lose any changes and start a new campaign?", "Lose any changes and load an existing campaign?"]
      .some(text => matches(text, part));
  let inputs = [];
  let menus = [];
  let fileAnswers = [];
  let windows = [];
  let rule = null;
  let notices = false;

  function queue(list, entry) {
    entry.where = new Error().stack;
    list.push(entry);
  }
  function take(list, fits) {
    const index = list.findIndex(fits);
    return index < 0 ? null : list.splice(index, 1)[0];
  }
  global.answer = (part, button) => {
    if (mayStayAway(part)) answers = answers.filter(entry => String(entry.part) !== String(part));
    return queue(answers, { part: part, button: button });
  };
  global.answerInput = (text, part) => queue(inputs, { part: part === undefined ? "" : part, text: text });
  global.answerMenu = entry => queue(menus, { entry: entry });
  global.answerFile = path => queue(fileAnswers, { path: path });
  global.onMessage = action => { rule = action; };
  global.acceptNotices = on => { notices = on === undefined || on; };
  global.onWindow = (name, action) => queue(windows, { name: name, action: action });
  global.lastMessage = () => {
    const all = call("messages");
    return all.length ? all[all.length - 1] : null;
  };

  // The functions below are called by the runner inside other commands; what they return is done to the window.
  host.handle("box", box => {
    try {
      if (rule !== null) {
        const ruled = rule(box);
        if (typeof ruled === "string") return { press: ruled };
      }
      const found = take(answers, entry => matches(box.text, entry.part));
      if (found !== null) {
        if (found.button !== undefined) return { press: found.button };
        if (box.buttons.length === 1) return { press: box.buttons[0] };
        failAndLeave("Message box \"" + box.text + "\" was answered without a button; it has " + box.buttons.join(", ") + ".");
        return { close: true };
      }
      if (notices && box.buttons.length === 1) return { press: box.buttons[0] };
      failAndLeave("Nobody answers the message box \"" + box.text + "\" (" + box.icon + "; " + box.buttons.join(", ") + ").");
    } catch (error) {
      report(error, "While the message box \"" + box.text + "\" was open: ");
      abandoned = true;
    }
    return { close: true };
  });
  host.handle("problem", text => failAndLeave(text));
  host.handle("input", box => {
    const found = take(inputs, entry => matches(box.prompt, entry.part));
    const text = found !== null && typeof found.text === "function" ? found.text() : found !== null ? found.text : null;
    if (found !== null) return { text: text === null || text === undefined ? null : String(text) };
    failAndLeave("Nobody answers the input box \"" + box.prompt + "\" (" + box.caption + ").");
    return { text: null };
  });
  host.handle("menu", entries => {
    const found = menus.shift();
    if (found === undefined) {
      failAndLeave("Nobody chooses from the menu " + show(entries) + ".");
      return null;
    }
    const entry = typeof found.entry === "function" ? found.entry(entries) : found.entry;
    if (entry === null || entry === undefined || entries.indexOf(entry) >= 0) return entry;
    failAndLeave("The menu has no \"" + entry + "\" but " + show(entries) + ".");
    return null;
  });
  host.handle("file", caption => {
    const found = fileAnswers.shift();
    if (found === undefined) failAndLeave("Nobody answers the file dialog \"" + caption + "\".");
    return found === undefined || found.path === null ? null : String(found.path);
  });
  host.handle("window", (name, caption) => {
    const found = take(windows, entry => entry.name === name);
    if (found === null) {
      failAndLeave("The window " + name + " (\"" + caption + "\") opened unexpectedly.");
      return;
    }
    try {
      found.action(new WindowHandle(name));
    } catch (error) {
      report(error, "In " + name + ": ");
      abandoned = true;
    }
  });

  host.handle("stillOpen", name => {
    if (!abandoned) failAndLeave("The window " + name + " was left open.");
  });

  // ---- while something is under way

  let meanwhile = null;
  host.handle("pump", () => {
    const current = meanwhile;
    if (current === null || abandoned) return;
    current.count++;
    try {
      if (current.action(current.count) === true && meanwhile === current) meanwhile = null;
    } catch (error) {
      report(error, "Meanwhile: ");
      meanwhile = null;
      abandoned = true;
    }
  });
  global.onPump = action => { meanwhile = action ? { action: action, count: 0 } : null; };
  global.during = (operation, action) => {
    const mine = { action: action, count: 0 };
    meanwhile = mine;
    try {
      operation();
    } finally {
      meanwhile = null;
    }
    if (abandoned) throw new Abandoned("abandoned");
    verify(mine.count > 0, "the operation ended before anything could be done meanwhile");
  };
  global.cancelStatus = () => { control("frmProcessing.cmdCancel").click(); };

  // ---- controls and windows

  const members = host.call("controlMembers", []);
  class Control {
    constructor(name) { this.name = name; }
    toString() { return this.name; }
    toJSON() { return this.name; }
  }
  members.readable.forEach(property => Object.defineProperty(Control.prototype, property, {
    get() { return call("read", this.name, property); },
    set(value) { throw new Error(property + " cannot be assigned; use the methods that a user has."); },
  }));
  members.asked.forEach(question => { Control.prototype[question] = function (...args) { return call("read", this.name, question, args); }; });
  members.actions.forEach(action => {
    Control.prototype[action] = function (...args) {
      call("act", this.name, action, args);
      return this;
    };
  });
  // A misspelt property must not read as "undefined", which is as good as false.
  const strict = {
    get(target, key) {
      if (key in target || typeof key === "symbol" || key === "then") return Reflect.get(target, key, target);
      throw new Error("A control has no \"" + key + "\".");
    },
  };
  function control(name) {
    call("find", name);
    return new Proxy(new Control(name), strict);
  }
  global.control = control;
  global.press = (keys, times) => {
    for (let i = 0; i < (times === undefined ? 1 : times); i++) call("press", keys);
  };
  global.selectTab = tab => { control("ssTabMain").selectTab(tab); };
  global.currentTab = () => control("ssTabMain").currentTab;

  class WindowHandle {
    constructor(name) { this.name = name; }
    control(name) { return control(this.name + "." + name); }
    get caption() { return control(this.name).caption; }
    close() { control(this.name).close(); }
  }
  global.window = name => {
    call("find", name);
    return new WindowHandle(name);
  };

  // ---- the program

  function launch(options, fresh) {
    const wishes = Object.assign({}, options);
    const before = wishes.before;
    delete wishes.before;
    call("prepare", wishes, fresh);
    if (before !== undefined) before();
    return call("launch");
  }
  global.start = options => launch(options || {}, true);
  global.restart = options => launch(options || {}, false);
  global.killed = (code, when) => {
    const wishes = { clock: call("clock"), commandLine: call("commandLine") };
    call("startAnother", "restart(" + show(wishes) + ");\n" + code);
    try {
      while (!when()) {
        call("expectAnother");
        call("wait", 10);
      }
    } finally {
      call("killAnother");
    }
  };
  global.option = (name, value) => (value === undefined ? call("readOption", name) : call("writeOption", name, value));
  global.texts = () => JSON.parse(call("sandbox", "/api/texts"));
  global.mails = () => JSON.parse(call("sandbox", "/api/mails")).map(mail => JSON.parse(call("sandbox", "/api/mails/" + mail.number)));
  global.credits = number => {
    if (number === undefined) return JSON.parse(call("sandbox", "/api/state")).credits;
    call("setCredits", number);
  };
  global.waitFor = (condition, milliseconds) => {
    const limit = milliseconds === undefined ? 10000 : milliseconds;
    const started = Date.now();
    for (;;) {
      const result = condition();
      if (result) return result;
      if (Date.now() - started > limit) throw new Error("waited " + limit + " ms in vain for " + condition);
      call("wait", 10);
    }
  };

  // ---- short ways through the wizard

  global.shown = (...names) => names.map(name => control(name).text);
  global.click = (...names) => names.forEach(name => control(name).click());
  global.fill = values => Object.keys(values).forEach(name => {
    const [box, value] = [control(name), values[name]];
    if (typeof value === "boolean") return value ? box.tick() : box.untick();
    return /^(cmb|lst|tv)/.test(name) ? box.choose(value) : box.setText(value);
  });
  global.count = from => call("sql", "SELECT Count(*) AS n FROM " + from)[0].n;
  global.refused = (part, action, icon) => {
    global.clearMessages();
    global.answer(part);
    action();
    global.assertEqual(global.messages().map(box => box.icon), [icon || "exclamation"], "refused with one box: " + part);
  };
  global.failing = (procedure, text, action) => {
    call("failProcedure", procedure, text);
    global.answer(text);
    action();
    call("failProcedure", procedure, "");
  };
  global.cancelled = operation => {
    call("slowDatabase", 300);
    global.during(operation, () => global.statusBox() !== null && (global.cancelStatus(), true));
    call("slowDatabase", 0);
  };
  global.walkTo = (tab, query) => {
    if (control("frmMain.cmdNew").visible) control("frmMain.cmdNew").click();
    control("tvQuery").choose(query === undefined ? "All Customers" : query);
    if (control("cmbType").visible) control("cmbType").choose(0);
    for (let step = 0; step < tab - 1; step++) control("cmdNext" + step).click();
  };
  global.keepRows = (number, values) => {
    call("execute", "DELETE FROM [Campaign Results] WHERE RecordID NOT IN (SELECT RecordID FROM [Campaign Results] ORDER BY Customer LIMIT " + number + ")");
    call("execute", "UPDATE [Campaign Results] SET Mobile = '0770090010' || cast(RecordID % 10 AS varchar(9)), Email = 'c' || cast(RecordID AS varchar(9)) || '@example.com'" +
         (values ? ", " + values : ""));
    return call("sql", "SELECT * FROM [Campaign Results] ORDER BY Customer");
  };
  global.write = templates => {
    global.selectTab(4);
    const boxes = {sms: ["Text Message", "txtSMS"], subject: ["Email", "txtEmailSubject"], body: ["Email", "txtEmailBody"]};
    Object.keys(templates).forEach(what => {
      const [page, box] = boxes[what];
      control("ssTabLetters").selectTab(page);
      control(box).setText(templates[what]);
    });
  };
  global.saveAs = name => {
    global.onWindow("frmCampaigns", () => {
      control("txtName").setText(name);
      control("cmdSave").click();
    });
    control("cmdSave").click();
  };
  global.manage = action => {
    global.onWindow("frmCampaigns", manager => {
      action(manager, manager.control("lstCampaigns"));
      if (call("windows")[0] === "frmCampaigns") manager.control("cmdClose").click();
    });
    if (control("frmMain.cmdLoad").visible) return control("frmMain.cmdLoad").click();
    global.answer("Lose any changes and load an existing campaign?", "Yes");
    control("mnuLoad").trigger();
  };
  global.load = name => global.manage((manager, list) => {
    list.choose(name);
    manager.control("cmdLoad").click();
  });
  global.sentElsewhere = (campaign, action) => {
    call("execute", "INSERT INTO Campaign_Claims VALUES (" + campaign + ", 'Alex', 'FRONTDESK', 4711, '1', GetDate(), GetUtcDate())");
    action();
    call("execute", "DELETE FROM Campaign_Claims");
  };

  // ---- the end of the scenario, called by the runner

  host.handle("abandoned", error => error instanceof Abandoned);
  host.handle("finish", () => {
    abandoned = false;
    const left = [
      ...answers.filter(entry => !mayStayAway(entry.part)).map(entry => ["Nothing asked for the answer \"" + entry.part + "\".", entry]),
      ...inputs.map(entry => ["No input box asked for the answer \"" + entry.text + "\".", entry]),
      ...menus.map(entry => ["No menu asked for \"" + entry.entry + "\".", entry]),
      ...fileAnswers.map(entry => ["No file dialog asked for \"" + entry.path + "\".", entry]),
      ...windows.map(entry => ["The window " + entry.name + " never opened.", entry]),
    ];
    left.forEach(([text, entry]) => host.call("fail", [text, entry.where]));
    return assertions;
  });
})
