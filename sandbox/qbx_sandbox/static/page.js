// Shows everything that the sandbox received, and asks for more once a second. It is inserted as text, never as markup.
"use strict";

const PAGE = 200; // records fetched at once
const MOST = 1000; // records on the screen
const POLL = 1000; // milliseconds

const byId = (id) => document.getElementById(id);

function make(tag, className, text) {
  const element = document.createElement(tag);
  if (className) element.className = className;
  if (text !== undefined) element.textContent = text;
  return element;
}

async function ask(path, wishes) {
  const post = wishes && { method: "POST", body: JSON.stringify(wishes) };
  const answer = await fetch(path, post || {});
  const value = await answer.json();
  if (!answer.ok) throw new Error(value.error);
  return value;
}

function moment(record) {
  const today = new Date().toLocaleDateString("sv-SE");
  const clock = record.time.slice(11, 16);
  return record.time.startsWith(today) ? clock : `${record.time.slice(8, 10)}/${record.time.slice(5, 7)} ${clock}`;
}

const number = (text) => text.replace(/^(0\d{4})(\d{6})$/, "$1 $2");

/** The newest records of one kind; older ones on request. `place` inserts an element at the new or the old end. */
class Feed {
  constructor(path, render, place, empty, earlier) {
    Object.assign(this, { path, render, place, empty, earlier });
    earlier.addEventListener("click", () => this.showEarlier());
    this.clear();
  }

  clear() {
    for (const element of this.shown || []) element.remove();
    this.shown = [];
    this.first = this.last = 0;
    this.update();
  }

  update() {
    this.empty.hidden = this.shown.length > 0;
    this.earlier.hidden = this.first <= 1;
  }

  async refresh(count) {
    if (count - this.last > PAGE) {
      this.clear();
      this.last = count - PAGE;
    }
    if (count === this.last) return;
    const records = await ask(`${this.path}?since=${this.last}&limit=${PAGE}`);
    for (const record of records) {
      const element = this.render(record);
      this.place(element, true);
      this.shown.push(element);
      this.last = record.number;
    }
    while (this.shown.length > MOST) this.shown.shift().remove();
    this.first = this.last - this.shown.length + 1;
    this.update();
  }

  async showEarlier() {
    const since = Math.max(0, this.first - 1 - PAGE);
    const records = await ask(`${this.path}?since=${since}&limit=${this.first - 1 - since}`);
    for (const record of records.reverse()) {
      const element = this.render(record);
      this.place(element, false);
      this.shown.unshift(element);
    }
    this.first = since + 1;
    this.update();
  }
}

function renderText(text) {
  const element = make("div", `text ${text.outcome}`);
  const head = make("div", "sender");
  head.append(make("b", "", text.from || "(no sender)"), make("span", "", moment(text)));
  const facts = make("div", "facts", `to ${number(text.to) || "nobody"}`);
  if (text.outcome === "accepted") facts.append(` · ${text.credits} credit${text.credits === 1 ? "" : "s"}`);
  if (text.outcome !== "accepted") facts.append(" · ", make("span", "outcome", `refused, ${text.detail}`));
  else if (text.detail) facts.append(" · ", make("span", "outcome", `answer: ${text.detail}`));
  element.append(head, make("div", "bubble", text.message), facts);
  return element;
}

function placeText(element, newest) {
  const screen = byId("texts");
  const atEnd = screen.scrollHeight - screen.scrollTop - screen.clientHeight < 60;
  if (newest) screen.append(element);
  else byId("earlier-texts").after(element);
  if (newest && atEnd) screen.scrollTop = screen.scrollHeight;
}

function renderMail(mail) {
  const element = make("button", `mail ${mail.outcome}`);
  element.type = "button";
  element.append(make("span", "to", mail.to.join(", ")));
  element.append(make("time", "", moment(mail)));
  element.append(make("span", "subject", mail.subject || (mail.file ? "(no subject)" : "not delivered")));
  element.append(make("span", "outcome", mail.outcome === "accepted" ? "" : mail.outcome));
  element.append(make("span", "start", (mail.file ? mail.body : mail.detail).slice(0, 160).replace(/\s+/g, " ") || " "));
  element.addEventListener("click", () => open(mail.number, element));
  return element;
}

function placeMail(element, newest) {
  if (newest) byId("mails").prepend(element);
  else byId("earlier-mails").before(element);
}

function session(mail) {
  const secured = { "": "no encryption", starttls: "STARTTLS", implicit: "TLS from the start" }[mail.tls];
  const user = mail.user ? `logged in as ${mail.user}` : "not logged in";
  return `connection ${mail.connection}, ${secured}, ${user}`;
}

async function open(numberOfMail, button) {
  const mail = await ask(`/api/mails/${numberOfMail}`);
  for (const other of document.querySelectorAll(".mail[aria-current]")) other.removeAttribute("aria-current");
  button.setAttribute("aria-current", "true");
  const facts = make("dl");
  const fact = (name, value) => value && facts.append(make("dt", "", name), make("dd", "", value));
  fact("From", mail.sender || mail.from);
  fact("To", mail.to.join(", "));
  fact("Received", `${mail.time.slice(8, 10)}/${mail.time.slice(5, 7)}/${mail.time.slice(0, 4)} ${mail.time.slice(11, 19)}`);
  fact("Outcome", mail.outcome + (mail.detail ? `: ${mail.detail}` : ""));
  fact("Session", session(mail));
  const reader = byId("reader");
  reader.replaceChildren(make("h2", "", mail.subject || (mail.file ? "(no subject)" : "Not delivered")), facts);
  if (!mail.file) return;
  reader.append(make("div", "body", mail.body));
  reader.append(folded("Headers", mail.headers.map(([name, value]) => `${name}: ${value}`).join("\n")));
  reader.append(folded(`Source, ${mail.size.toLocaleString("en-GB")} bytes`, mail.raw));
  reader.scrollTop = 0;
}

function folded(title, text) {
  const details = make("details");
  details.append(make("summary", "", title), make("pre", "", text));
  return details;
}

const texts = new Feed("/api/texts", renderText, placeText, byId("no-texts"), byId("earlier-texts"));
const mails = new Feed("/api/mails", renderMail, placeMail, byId("no-mails"), byId("earlier-mails"));
const emptyReader = byId("reader").firstElementChild;
let resets = 0;

async function refresh() {
  const state = await ask("/api/state");
  if (state.resets !== resets || state.texts < texts.last || state.mails < mails.last) {
    resets = state.resets;
    texts.clear();
    mails.clear();
    byId("reader").replaceChildren(emptyReader);
  }
  showFigures(state);
  await Promise.all([texts.refresh(state.texts), mails.refresh(state.mails)]);
}

function showFigures(state) {
  byId("credits").textContent = state.credits.toLocaleString("en-GB");
  byId("text-count").textContent = state.texts.toLocaleString("en-GB");
  byId("mail-count").textContent = state.mails.toLocaleString("en-GB");
  const { http, smtp, smtps } = state.ports;
  byId("ports").textContent = `Gateway 127.0.0.1:${http} · Mail 127.0.0.1:${smtp}, with TLS :${smtps} · ${state.folder}`;
}

async function poll() {
  try {
    await refresh();
    byId("offline").hidden = true;
  } catch (error) {
    byId("offline").hidden = false;
  }
  setTimeout(poll, POLL);
}

async function showSteering() {
  const { numbers, mailboxes, recipients } = await ask("/api/steer");
  const rows = (id, table, shape) => byId(id).replaceChildren(...Object.entries(table).map(([name, behaviour]) => {
    const row = make("tr");
    row.append(make("td", "", shape(name)), make("td", "", behaviour));
    return row;
  }));
  rows("steered-numbers", numbers, number);
  rows("steered-mailboxes", { ...mailboxes, ...recipients }, (name) => name);
  byId("steering").showModal();
}

byId("show-steering").addEventListener("click", showSteering);
byId("reset").addEventListener("click", async () => {
  if (confirm("Forget every text and mail received so far?")) await ask("/api/reset", {});
});
byId("credit-form").addEventListener("submit", async (event) => {
  event.preventDefault();
  showFigures(await ask("/api/credits", { credits: byId("credit-input").valueAsNumber }));
  event.target.reset();
});
byId("mails").addEventListener("keydown", (event) => {
  const step = { ArrowDown: "nextElementSibling", ArrowUp: "previousElementSibling" }[event.key];
  const next = step && document.activeElement[step];
  if (!next || !next.classList.contains("mail")) return;
  event.preventDefault();
  next.focus();
  next.click();
});
poll();
