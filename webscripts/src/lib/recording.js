// Turns what a person does in the page into steps.
import { actionOfClick, meantBy, stepFor } from './describe.js';
import { editableAt, isElement, isForeignFrame, scopesFrom, valueOf } from './dom.js';
import { holdLink } from './hold.js';
import { arrive, put } from './outbox.js';
import { toJson } from './text.js';

// False while what the page sees are the agent's own acts, which look like a person's.
let arePersons = true;
// Steps of that time: the first of a person's may come before it is told that they are.
let held = [];
const longestHeld = 1000;
// An act takes so long to get here.
const longestWay = 100;

function hold(text) {
  const now = performance.now();
  const kept = [];
  for (let i = 0; i < held.length; i += 1) if (now - held[i].at < longestHeld) kept[kept.length] = held[i];
  kept[kept.length] = { text, at: now };
  held = kept;
}

function record(action, element, data, isOwn = !arePersons) {
  const text = toJson([stepFor(action, element, data)]).slice(1, -1);
  if (isOwn) {
    hold(text);
  } else {
    put(text);
  }
}

function targetOf(event) {
  const target = event.composedPath()[0];
  return isElement(target) ? target : null;
}

// --- typed text: one step for all that was typed, once the person goes on to something else

// The element; `before`, what it held when other acts came in between; whether they were `isOwn`,
// and when.
let edited = null;

export function flush() {
  const was = edited;
  edited = null;
  if (!was) return;
  const text = was.before === null ? valueOf(was.element) : was.before;
  record('TypeTextOnEditBox', was.element, text, was.isOwn);
}

export function ownActsFollow() {
  arePersons = false;
  if (edited && !edited.isOwn && edited.before === null) edited.before = valueOf(edited.element);
}

// So many milliseconds after the last own act.
export function personActs(sinceOwn) {
  const begin = performance.now() - sinceOwn + longestWay;
  arePersons = true;
  for (let i = 0; i < held.length; i += 1) if (held[i].at > begin) put(held[i].text);
  held = [];
  if (edited && edited.at > begin) {
    edited.isOwn = false;
    edited.before = null;
  } else if (edited && edited.isOwn) {
    edited = null;
  }
}

function isInside(element, outer) {
  return element === outer || outer.contains(element);
}

// --- lists: an option chosen is an option clicked

const chosenBefore = new WeakMap();

function chosenIn(list) {
  const chosen = new Set();
  for (let i = 0; i < list.options.length; i += 1) {
    if (list.options[i].selected) chosen.add(list.options[i]);
  }
  return chosen;
}

function recordChoice(list) {
  const before = (list.multiple && chosenBefore.get(list)) || new Set();
  const now = chosenIn(list);
  for (let i = 0; i < list.options.length; i += 1) {
    const option = list.options[i];
    if (before.has(option) !== now.has(option)) record('Click', option, '');
  }
  chosenBefore.set(list, now);
}

// --- what the browser does by itself after a click or a key

// A click on a label is followed by one on its control.
function isMerelyLabel(element) {
  const label = element.closest('label');
  if (!label || !label.control || isInside(element, label.control)) return false;
  return meantBy(element) === element || isInside(label, meantBy(element));
}

// A click on a list is told by the choice, if there is one.
function isOfList(element) {
  return Boolean(element.closest('select'));
}

let enterAt = -Infinity;

// Enter in a field presses the form's button, which the typed Enter stands for.
function isFromEnter(event) {
  return event.detail === 0 && event.timeStamp - enterAt < 500;
}

function isWholePage(target) {
  return target === document.documentElement;
}

export const recording = {
  click(event) {
    const target = targetOf(event);
    if (!event.isTrusted || !target) return;
    if (edited && !isInside(target, edited.element)) flush();
    if (isMerelyLabel(target) || isOfList(target) || isFromEnter(event)) return;
    const element = editableAt(target) || meantBy(target);
    record(actionOfClick(element), element, '');
    if (arePersons) holdLink(event, element);
  },
  focusin(event) {
    const target = targetOf(event);
    if (target && target.localName === 'select') chosenBefore.set(target, chosenIn(target));
  },
  input(event) {
    const target = targetOf(event);
    if (!event.isTrusted || !target) return;
    if (target.localName === 'select') {
      recordChoice(target);
      return;
    }
    const element = editableAt(target);
    if (!element) return;
    if (!edited || edited.element !== element) {
      flush();
      edited = { element, before: null, isOwn: !arePersons, at: 0 };
    }
    if (arePersons) {
      edited.isOwn = false;
      edited.before = null;
    } else {
      edited.at = performance.now();
    }
  },
  keydown(event) {
    const target = targetOf(event);
    if (!event.isTrusted || event.isComposing || event.key !== 'Enter' || !target) return;
    const element = editableAt(target);
    if (!element || element.localName !== 'input') return;
    edited = null;
    enterAt = event.timeStamp;
    record('TypeTextOnEditBox', element, `${valueOf(element)}\n`);
  },
  focusout() {
    flush();
  },
  mouseenter(event) {
    if (isWholePage(event.target)) arrive();
  },
  focus(event) {
    if (event.target === window) arrive();
  },
  // Whoever leaves the page with the mouse goes on to a native control.
  mouseleave(event) {
    if (isWholePage(event.target)) flush();
  },
  pagehide() {
    flush();
  },
  // The focus went into a page that nothing is known of: that much can be said.
  blur(event) {
    if (event.target !== window) return;
    flush();
    setTimeout(() => {
      const scopes = scopesFrom(document);
      for (let i = 0; i < scopes.length; i += 1) {
        const active = scopes[i].activeElement;
        if (active && isForeignFrame(active)) record('Click', active, '');
      }
    }, 0);
  },
};
