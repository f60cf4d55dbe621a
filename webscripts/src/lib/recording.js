// Turns what a person does in the page into steps.
import { actionOfClick, meantBy, stepFor } from './describe.js';
import { editableAt, isElement, isForeignFrame, scopesFrom, valueOf } from './dom.js';
import { holdLink } from './hold.js';
import { arrive, put } from './outbox.js';
import { toJson } from './text.js';

function record(action, element, data) {
  put(toJson([stepFor(action, element, data)]).slice(1, -1));
}

function targetOf(event) {
  const target = event.composedPath()[0];
  return isElement(target) ? target : null;
}

// --- typed text: one step for all that was typed, once the person goes on to something else

let edited = null;

export function flush() {
  const element = edited;
  edited = null;
  if (element) record('TypeTextOnEditBox', element, valueOf(element));
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
    if (edited && !isInside(target, edited)) flush();
    if (isMerelyLabel(target) || isOfList(target) || isFromEnter(event)) return;
    const element = editableAt(target) || meantBy(target);
    record(actionOfClick(element), element, '');
    holdLink(event, element);
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
    if (edited !== element) flush();
    edited = element;
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
