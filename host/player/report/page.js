"use strict";
const play = JSON.parse(document.getElementById("play").textContent);
const steps = play.steps;
const byId = (id) => document.getElementById(id);
const kStyles = { passed: "passed", failed: "failed", "connection lost": "failed",
  "not played": "idle" };
const styleOf = (step) => kStyles[step.result];

// Every text comes from outside, so none of it is ever read as markup.
function make(name, attributes = {}, ...children) {
  const isDrawing = ["svg", "rect", "polyline", "circle"].includes(name);
  const node = isDrawing ? document.createElementNS("http://www.w3.org/2000/svg", name)
    : document.createElement(name);
  for (const [key, value] of Object.entries(attributes)) node.setAttribute(key, value);
  node.append(...children.filter((child) => child !== null));
  return node;
}

const seconds = (value) => `${value.toFixed(value < 10 ? 2 : 1)} s`;
const megabytes = (bytes) => `${(bytes / 1048576).toFixed(1)} MB`;

function fact(name, value) {
  return make("div", {}, make("dt", {}, name), make("dd", {}, value));
}

function card(title, ...children) {
  return make("section", { class: "card" }, make("h3", {}, title), ...children);
}

// As the time of the play is told; what is no time stays as it is.
function localTime(utc) {
  const time = new Date(utc);
  return isNaN(time) ? utc : time.toLocaleString("sv-SE");
}

function fillHeader() {
  document.title = `${play.passed ? "Passed" : "Failed"}: ${play.file}`;
  const style = play.passed ? "passed" : "failed";
  const count = steps.filter((step) => step.result === "passed").length;
  byId("title").append(make("h1", {}, play.file),
    make("span", { class: `badge ${style}` }, play.passed ? "Passed" : "Failed"));
  const facts = { Steps: `${count} of ${steps.length} passed`, Took: seconds(play.seconds),
    Program: play.program, Toolkit: play.toolkit, Played: play.played, Recorded: localTime(play.recorded) };
  for (const [name, value] of Object.entries(facts)) {
    if (value) byId("facts").append(fact(name, value));
  }
  for (const text of play.warnings) {
    byId("header").append(make("p", { class: "warning" }, text));
  }
}

// --- the time line: steps on top, what keeps the main thread busy and memory beneath

const kWidth = 1000;
const kHeight = 92;
const end = Math.max(...steps.map((step) => step.began + step.seconds), 0.001);
const across = (time) => (time / end) * kWidth;
const barOf = (step) => ({ x: across(step.began),
  width: Math.max(across(step.seconds), Math.min(kWidth / steps.length / 2, 4)) });

function curve(valueOf, style) {
  const known = steps.filter((step) => step.result !== "not played" && valueOf(step) > 0);
  const most = Math.max(...known.map(valueOf));
  const least = style === "memory" ? Math.min(...known.map(valueOf)) * 0.9 : 0;
  const points = known.map((step) => {
    const part = (valueOf(step) - least) / (most - least || 1);
    return `${across(step.began + step.seconds).toFixed(1)},${(kHeight - 6 - part * 38).toFixed(1)}`;
  });
  return make("polyline", { class: style, points: points.join(" ") });
}

const cpuOf = (step) => (step.costs.cpuMs / 1000) / Math.max(step.seconds, 0.001);

function drawTimes() {
  const svg = byId("times");
  svg.setAttribute("viewBox", `0 0 ${kWidth} ${kHeight}`);
  svg.append(make("rect", { class: "now", id: "now", y: 0, height: kHeight }));
  for (const step of steps) {
    if (step.result === "not played") continue;
    svg.append(make("rect", { class: `bar ${styleOf(step)}`, y: 8, height: 22, ...barOf(step) }));
    if (step.costs.longestMs < 50) continue;
    svg.append(make("rect", { class: "stall", x: across(step.began), y: 34, height: 5,
      width: Math.max(across(step.costs.longestMs / 1000), 2) }));
  }
  svg.append(curve(cpuOf, "cpu"), curve((step) => step.costs.memoryBytes, "memory"));
  svg.addEventListener("click", (event) => {
    const box = svg.getBoundingClientRect();
    const time = ((event.clientX - box.left) / box.width) * end;
    const distance = (step) => Math.abs(step.began + step.seconds / 2 - time);
    const played = steps.filter((step) => step.result !== "not played");
    if (played.length === 0) return;
    const nearest = played.reduce((best, step) => (distance(step) < distance(best) ? step : best));
    choose(steps.indexOf(nearest));
  });
}

// --- the steps

function fillSteps() {
  steps.forEach((step, index) => {
    const took = step.result === "not played" ? "" : seconds(step.seconds);
    const item = make("li", { role: "option", id: `item-${index + 1}`, class: styleOf(step),
      "aria-selected": "false" },
    make("span", { class: "number" }, String(index + 1)),
    make("span", { class: "words" }, step.words), make("span", { class: "took" }, took),
    make("span", { class: "heard" }, step.result));
    item.addEventListener("click", () => choose(index));
    byId("steps").append(item);
  });
}

// The list alone, not the page.
function scrollTo(item, list) {
  const top = item.offsetTop;
  const bottom = top + item.offsetHeight;
  if (top < list.scrollTop) list.scrollTop = top;
  if (bottom > list.scrollTop + list.clientHeight) list.scrollTop = bottom - list.clientHeight;
}

let chosen = -1;

function choose(index) {
  const next = Math.min(Math.max(index, 0), steps.length - 1);
  if (next === chosen || steps.length === 0) return;
  byId(`item-${chosen + 1}`)?.setAttribute("aria-selected", "false");
  chosen = next;
  const item = byId(`item-${chosen + 1}`);
  item.setAttribute("aria-selected", "true");
  scrollTo(item, byId("steps"));
  byId("steps").setAttribute("aria-activedescendant", item.id);
  const { x, width } = barOf(steps[chosen]);
  byId("now").setAttribute("x", x - 2);
  byId("now").setAttribute("width", width + 4);
  showStep(steps[chosen]);
  history.replaceState(null, "", `#step-${chosen + 1}`);
}

const kKeys = { ArrowDown: 1, ArrowRight: 1, j: 1, ArrowUp: -1, ArrowLeft: -1, k: -1,
  PageDown: 10, PageUp: -10, Home: -Infinity, End: Infinity };

document.addEventListener("keydown", (event) => {
  const way = kKeys[event.key];
  const isElsewhere = event.target !== document.body && event.target !== byId("steps");
  if (way === undefined || isElsewhere || event.ctrlKey || event.altKey || event.metaKey) return;
  event.preventDefault();
  choose(chosen + way);
});

// --- one step

// Over the picture: the element, and where the pointer went.
function overlay(step, width, height) {
  const svg = make("svg", { viewBox: `0 0 ${width} ${height}`, "aria-hidden": "true",
    preserveAspectRatio: "none" });
  const rect = step.rect;
  if (!rect) return svg;
  svg.append(make("rect", { ...rect, rx: 3 }));
  if (step.way.length === 0) return svg;
  const points = step.way.map(({ x, y }) => `${x},${y}`);
  svg.append(make("polyline", { points: points.join(" ") }));
  const last = step.way[step.way.length - 1];
  svg.append(make("circle", { cx: last.x, cy: last.y, r: 6 }));
  return svg;
}

function shot(step, caption, picture) {
  if (!picture) return null;
  const image = make("img", { alt: `The window ${caption} step ${chosen + 1}, ${step.words}` });
  const frame = make("div", { class: "shot" }, image);
  image.addEventListener("load", () => {
    if (caption !== "before") return;
    const { naturalWidth, naturalHeight } = image;
    frame.append(overlay(step, naturalWidth / picture.scale, naturalHeight / picture.scale));
  });
  image.src = play.pictures[picture.index];
  return make("figure", {}, make("figcaption", {}, caption === "before" ? "Before" : "After"), frame);
}

function members(object) {
  const list = make("dl", { class: "members" });
  for (const [name, value] of Object.entries(object)) {
    const text = typeof value === "object" ? JSON.stringify(value) : String(value);
    list.append(make("dt", {}, name), make("dd", {}, text));
  }
  return list;
}

function table(heading, rows) {
  const head = make("tr", {}, ...heading.map((text) => make("th", { scope: "col" }, text)));
  return make("table", { class: "ways" }, make("thead", {}, head), make("tbody", {}, ...rows));
}

function waysOf(step) {
  const rows = step.ways.map((way, index) => make("tr", { class: index === step.used ? "used" : "" },
    make("td", {}, way.words), make("td", {}, String(way.matches ?? "")),
    make("td", {}, index === step.used ? "found it" : index < (step.used ?? 0) ? "did not fit" : "")));
  return table(["Way", "Fitted", "Now"], rows);
}

function costsOf(step) {
  const costs = step.costs;
  const shown = { took: seconds(step.seconds), "main thread busy": `${costs.busyMs.toFixed(1)} ms`,
    "longest stretch": `${costs.longestMs.toFixed(1)} ms`, processor: `${costs.cpuMs.toFixed(1)} ms` };
  if (costs.memoryBytes > 0) shown.memory = megabytes(costs.memoryBytes);
  return shown;
}

function log(text) {
  return make("pre", { tabindex: "0", role: "region", "aria-label": "What the program printed" },
    text);
}

function showStep(step) {
  const pictures = [shot(step, "before", step.before), shot(step, "after", step.after)];
  const hasPictures = pictures.some((picture) => picture !== null);
  const there = step.candidates.map((one) => make("tr", {}, make("td", {}, one.words),
    make("td", {}, one.whyNot)));
  byId("detail").replaceChildren(...[
    make("section", { class: `card ${styleOf(step)}` },
      make("div", { class: "title" }, make("h2", {}, `${chosen + 1}  ${step.words}`),
        make("span", { class: "badge" }, step.result)),
      step.message ? make("p", { class: "message" }, step.message) : null),
    there.length > 0 ? card("What was there instead", table(["Element", "Why it is not it"], there))
      : null,
    hasPictures ? make("section", { class: "card pictures", "aria-label": "Pictures" },
      ...pictures) : null,
    make("div", { class: "two" },
      step.ways.length > 0 ? card("Ways to find the element", waysOf(step)) : null,
      Object.keys(step.element).length > 0 ? card("The element", members(step.element)) : null,
      step.result === "not played" ? null : card("Costs", members(costsOf(step))),
      step.output ? card("What the program printed", log(step.output)) : null),
  ].filter((node) => node !== null));
  byId("detail").scrollTop = 0;
}

fillHeader();
drawTimes();
fillSteps();
const asked = /^#step-(\d+)$/.exec(location.hash);
const failed = steps.findIndex((step) => styleOf(step) === "failed");
choose(asked ? Number(asked[1]) - 1 : Math.max(failed, 0));
