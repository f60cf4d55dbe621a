// In spy mode the element under the pointer is framed; a click describes it and does nothing else.
import { meantBy, spiedHierarchy } from './describe.js';
import { isElement } from './dom.js';
import { highlight, showFrame } from './highlight.js';
import { put } from './outbox.js';
import { toJson } from './text.js';

let pointedAt = null;
let hideFrame = () => {};

function point(element) {
  if (element === pointedAt) return;
  hideFrame();
  hideFrame = element ? showFrame(element, 2) : () => {};
  pointedAt = element;
}

function swallow(event) {
  event.preventDefault();
  event.stopImmediatePropagation();
}

export const spying = {
  pointermove(event) {
    const target = event.composedPath()[0];
    point(isElement(target) ? meantBy(target) : null);
  },
  click(event) {
    swallow(event);
    const target = event.composedPath()[0];
    if (!event.isTrusted || !isElement(target)) return;
    const element = meantBy(target);
    highlight(element);
    // One answer of its own, as for native views.
    put(toJson(spiedHierarchy(element)).slice(1, -1), true);
  },
};
const swallowed = ['pointerdown', 'mousedown', 'pointerup', 'mouseup', 'touchstart', 'touchend'];
for (let i = 0; i < swallowed.length; i += 1) spying[swallowed[i]] = swallow;

export function stopSpying() {
  point(null);
}
