"use strict";
// The page: cards, search, filters and the view of one effect. GALLERY comes from data.js.

const FRAMES_PER_SECOND = 14;
const HOLD = 7;  // frames for which the first and the last picture stay
const $ = (id) => document.getElementById(id);
const make = (tag, className, text) => {
  const node = document.createElement(tag);
  if (className) node.className = className;
  if (text !== undefined) node.textContent = text;
  return node;
};

const FILTERS = [
  { name: "All", takes: () => true },
  { name: "Sample effects", takes: (item) => item.kind === "effect" },
  { name: "Transitions", takes: (item) => item.kind === "transition" },
  { name: "Not drawn", takes: (item) => item.error !== "" },
];
const GROUPS = [["effect", "Sample effects"], ["transition", "Public transitions"]];

let filter = FILTERS[0];
let shown = [];    // the items on the page, in order
let current = -1;  // the one in the detail view, as an index into `shown`
const cards = new Map();

// ---- moving pictures

/** Shows one frame of an item's strip of frames. */
function showFrame(box, item, frame) {
  const last = item.frames - 1;
  box.style.backgroundPosition = last > 0 ? `${(100 * frame) / last}% 0` : "0 0";
  const way = box.querySelector(".way");
  if (way && last > 0) way.style.transform = `scaleX(${frame / last})`;
}

function loadFrames(box, item) {
  if (item.error) return;
  box.style.backgroundImage = `url("${encodeURI(item.pictures)}")`;
  box.style.backgroundSize = `${item.frames * 100}% 100%`;
  showFrame(box, item, item.still);
}

/** The frame at a step that counts on for ever: to the end, a rest, and back. */
function frameAtStep(item, step) {
  const last = item.frames - 1;
  const at = step % (2 * (last + HOLD));
  return at <= last + HOLD ? Math.min(at, last) : Math.max(last - (at - last - HOLD), 0);
}

/** Plays an item in a box until stop() is called. `onFrame` hears of each frame. */
class Player {
  constructor(box, item, onFrame) {
    Object.assign(this, { box, item, onFrame, timer: 0, step: 0 });
  }
  get playing() { return this.timer !== 0; }
  start(frame = 0) {
    if (this.playing || this.item.frames < 2 || this.item.error) return;
    this.step = frame;
    this.box.classList.add("playing");
    this.timer = setInterval(() => this.show(frameAtStep(this.item, this.step++)),
      1000 / FRAMES_PER_SECOND);
  }
  stop() {
    clearInterval(this.timer);
    this.timer = 0;
    this.box.classList.remove("playing");
  }
  show(frame) {
    showFrame(this.box, this.item, frame);
    if (this.onFrame) this.onFrame(frame);
  }
}

// ---- cards

const seen = new IntersectionObserver((entries) => {
  for (const entry of entries.filter((e) => e.isIntersecting)) {
    loadFrames(entry.target, entry.target.item);
    seen.unobserve(entry.target);
  }
}, { rootMargin: "400px" });

/** What stands below a name: a transition's author, or the first words on an effect. */
function subtitle(item) {
  return item.author || item.description.replace(/^[^:]*: /, "");
}

function makeCard(item) {
  const card = make("button", "card");
  card.type = "button";
  card.dataset.key = item.key;
  const box = make("div", item.error ? "frames broken" : "frames");
  box.item = item;
  if (item.error) {
    box.append(make("code", "", item.error));
  } else {
    box.append(make("i", "way"));
    seen.observe(box);
  }
  const caption = make("div", "caption");
  caption.append(make("b", "", item.name), make("span", "", subtitle(item)));
  card.append(box, caption);
  const player = new Player(box, item);
  const start = () => player.start();
  const stop = () => {
    player.stop();
    showFrame(box, item, item.still);
  };
  for (const event of ["pointerenter", "focus"]) card.addEventListener(event, start);
  for (const event of ["pointerleave", "blur"]) card.addEventListener(event, stop);
  card.addEventListener("click", () => open(shown.indexOf(item)));
  return card;
}

function matches(item, words) {
  return words.every((word) => item.haystack.includes(word));
}

function refresh() {
  const words = $("search").value.toLowerCase().split(/\s+/).filter(Boolean);
  const found = GALLERY.items.filter((item) => matches(item, words));
  [...$("filters").children].forEach((button, i) => {
    button.setAttribute("aria-pressed", String(FILTERS[i] === filter));
    button.lastChild.textContent = found.filter(FILTERS[i].takes).length;
  });
  shown = [];
  $("sections").replaceChildren();
  for (const [kind, title] of GROUPS) {
    const items = found.filter((item) => item.kind === kind && filter.takes(item));
    if (items.length === 0) continue;
    shown.push(...items);
    const group = make("section", "group");
    const grid = make("div", "grid");
    grid.append(...items.map((item) => cards.get(item)));
    group.append(make("h2", "", `${title} \u00b7 ${items.length}`), grid);
    $("sections").append(group);
  }
  $("nothing").hidden = shown.length > 0;
}

// ---- the view of one effect

let player = null;

function tabs(bar, pre, entries, word) {
  const select = (chosen) => {
    entries.forEach((entry, i) => {
      bar.children[i].setAttribute("aria-selected", String(entry === chosen));
    });
    showSource(pre, chosen.text);
    scrollToWord(pre, word);
  };
  bar.replaceChildren(...entries.map((entry) => {
    const button = make("button", "", entry.name);
    button.type = "button";
    button.setAttribute("role", "tab");
    button.addEventListener("click", () => select(entry));
    return button;
  }));
  select(entries[0]);
}

const number = (value) => String(Math.round(value * 1e4) / 1e4);
const valueText = (values) => values.map(number).join(", ");

function paramRow(param) {
  const row = make("tr");
  const value = param.default ? valueText(param.default) : `${param.count} values`;
  const course = param.from ? `${valueText(param.from)} to ${valueText(param.to)}` : "";
  for (const text of [param.name, param.declared || param.type, value, course]) {
    row.append(make("td", "", text));
  }
  return row;
}

function paramTable(params) {
  const table = make("table");
  const head = make("tr");
  for (const title of ["Parameter", "Type", "Default", "Moves"]) head.append(make("th", "", title));
  table.append(head, ...params.map(paramRow));
  return table;
}

function addList(target, title, lines) {
  if (lines.length === 0) return;
  const list = make("ul");
  list.append(...lines.map((line) => make("li", "", line)));
  target.append(make("h3", "", title), list);
}

function parityText(item) {
  if (!item.parity) return [];
  const share = number(100 * item.parity.share);
  return [`Largest difference of a channel: ${item.parity.largest} of 255`,
    `Pixels off by more than 2 of 255: ${share} %`];
}

function fillFacts(item) {
  const facts = $("facts");
  facts.replaceChildren();
  if (item.error) facts.append(make("div", "error", item.error));
  if (item.rule) facts.append(make("p", "", item.rule));
  if (item.description) facts.append(make("p", "", item.description));
  if (item.params.length > 0) facts.append(paramTable(item.params));
  addList(facts, "Rewritten for the dialect, its meaning kept", item.notes);
  addList(facts, "Beside OpenGL's picture", parityText(item));
}

function badges(item) {
  const texts = [item.kind === "effect" ? "sample effect" : "transition"];
  if (item.author) texts.push(item.author);
  const nodes = texts.map((text) => make("span", "badge", text));
  if (item.error) nodes.push(make("span", "badge bad", "not drawn"));
  return nodes.flatMap((node) => [node, " "]);
}

function fillPlayer(item) {
  const stage = $("stage");
  stage.className = item.error ? "frames broken" : "frames";
  stage.replaceChildren();
  stage.removeAttribute("style");
  $("controls").hidden = Boolean(item.error) || item.frames < 2;
  if (item.error) {
    stage.append(make("span", "", "No picture"));
    return;
  }
  loadFrames(stage, item);
  $("scrub").max = String(item.frames - 1);
  player = new Player(stage, item, (frame) => {
    $("scrub").value = String(frame);
    $("frame").textContent = `frame ${frame + 1} of ${item.frames}`;
  });
  player.show(0);
  play(!matchMedia("(prefers-reduced-motion: reduce)").matches);
}

function play(on) {
  if (!player) return;
  if (on) player.start(Number($("scrub").value));
  else player.stop();
  $("play").classList.toggle("on", player.playing);
}

function open(index) {
  if (index < 0 || index >= shown.length) return;
  if (player) player.stop();
  player = null;
  current = index;
  const item = shown[index];
  $("detail-name").textContent = item.name;
  $("detail-badges").replaceChildren(...badges(item));
  fillFacts(item);
  if (!$("detail").open) $("detail").showModal();
  fillPlayer(item);
  tabs($("glsl-tabs"), $("glsl"), item.glsl, "");
  const hlsl = item.hlsl.length > 0 ? item.hlsl : [{ name: "HLSL", text: "// none: see the error" }];
  tabs($("hlsl-tabs"), $("hlsl"), hlsl, "cbuffer ");
  $("previous").disabled = index === 0;
  $("next").disabled = index === shown.length - 1;
  history.replaceState(null, "", `#${encodeURIComponent(item.key)}`);
  (item.error ? $("close") : $("play")).focus({ preventScroll: true });
}

$("detail").addEventListener("close", () => {
  if (player) player.stop();
  player = null;
  history.replaceState(null, "", location.pathname);
  const card = cards.get(shown[current]);
  if (card) card.focus();
});
$("detail").addEventListener("click", (event) => {
  if (event.target === $("detail")) $("detail").close();
});
$("close").addEventListener("click", () => $("detail").close());
$("previous").addEventListener("click", () => open(current - 1));
$("next").addEventListener("click", () => open(current + 1));
$("play").addEventListener("click", () => play(!player.playing));
$("scrub").addEventListener("input", () => {
  play(false);
  player.show(Number($("scrub").value));
});

// ---- keyboard and theme

function setTheme(theme) {
  document.documentElement.dataset.theme = theme;
  try {
    localStorage.setItem("orvane-theme", theme);
  } catch { /* a browser may refuse to keep anything for a file */ }
}

function toggleTheme() {
  setTheme(document.documentElement.dataset.theme === "dark" ? "light" : "dark");
}

function firstTheme() {
  try {
    const kept = localStorage.getItem("orvane-theme");
    if (kept) return kept;
  } catch { /* as above */ }
  return matchMedia("(prefers-color-scheme: dark)").matches ? "dark" : "light";
}

/** Moves the focus among the cards, by lines for up and down. */
function moveFocus(key) {
  const all = shown.map((item) => cards.get(item));
  const at = all.indexOf(document.activeElement);
  if (at < 0) {
    if (all.length > 0) all[0].focus();
    return;
  }
  const box = all[at].getBoundingClientRect();
  const center = box.left + box.width / 2;
  const down = key === "ArrowDown";
  let target = key === "ArrowLeft" ? all[at - 1] : all[at + 1];
  if (down || key === "ArrowUp") {
    const rows = all.filter((card) => {
      const top = card.getBoundingClientRect().top;
      return down ? top > box.top + 5 : top < box.top - 5;
    });
    const near = down ? rows[0] : rows[rows.length - 1];
    const row = rows.filter((card) => near &&
      Math.abs(card.getBoundingClientRect().top - near.getBoundingClientRect().top) < 5);
    const off = (card) => {
      const other = card.getBoundingClientRect();
      return Math.abs(other.left + other.width / 2 - center);
    };
    target = row.sort((a, b) => off(a) - off(b))[0];
  }
  if (target) target.focus();
}

function keyInDetail(event) {
  const onSlider = event.target === $("scrub");
  const inCode = event.target.tagName === "PRE";
  if (event.key === "ArrowLeft" && !onSlider && !inCode) open(current - 1);
  else if (event.key === "ArrowRight" && !onSlider && !inCode) open(current + 1);
  else if (event.key === " " && event.target.tagName !== "BUTTON") play(player && !player.playing);
  else return;
  event.preventDefault();
}

function keyOnPage(event) {
  const typing = event.target === $("search");
  if (event.key === "/" && !typing) $("search").focus();
  else if (event.key === "Escape" && typing) {
    $("search").value = "";
    refresh();
    $("search").blur();
  } else if (typing && event.key === "ArrowDown") moveFocus(event.key);
  else if (typing && event.key === "Enter") open(0);
  else if (!typing && event.key.startsWith("Arrow")) moveFocus(event.key);
  else return;
  event.preventDefault();
}

document.addEventListener("keydown", (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey) return;
  if (event.key === "t" && event.target !== $("search")) toggleTheme();
  else if ($("detail").open) keyInDetail(event);
  else keyOnPage(event);
});
$("theme").addEventListener("click", toggleTheme);
$("search").addEventListener("input", refresh);

// ---- start

function prepare(item) {
  const texts = [item.name, item.author, item.description, item.error,
    ...item.params.map((param) => param.name), ...item.glsl.map((source) => source.text)];
  item.haystack = texts.join("\n").toLowerCase();
  cards.set(item, makeCard(item));
}

function openFromAddress() {
  const key = decodeURIComponent(location.hash.slice(1));
  const index = shown.findIndex((item) => item.key === key);
  if (index >= 0) open(index);
}

setTheme(firstTheme());
GALLERY.items.forEach(prepare);
$("filters").append(...FILTERS.map((entry) => {
  const button = make("button", "", entry.name);
  button.type = "button";
  button.append(make("small"));
  button.addEventListener("click", () => {
    filter = entry;
    refresh();
  });
  return button;
}));
$("summary").textContent = GALLERY.summary;
$("origin").textContent = GALLERY.origin;
refresh();
openFromAddress();
window.addEventListener("hashchange", () => { if (!$("detail").open) openFromAddress(); });
