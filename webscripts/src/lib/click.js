// A click with all events that a finger or a mouse makes, at the element's middle.
import { closestAcross, rectangleOf, viewOf } from './dom.js';
import { highlight } from './highlight.js';

const focusable =
  'a[href], button, input, select, textarea, summary, iframe, [tabindex], [contenteditable]';

function bringIntoView(element) {
  const view = viewOf(element);
  const { left, top, right, bottom } = element.getBoundingClientRect();
  const isInView = left >= 0 && top >= 0 && right <= view.innerWidth && bottom <= view.innerHeight;
  if (!isInView) element.scrollIntoView({ block: 'center', inline: 'center', behavior: 'instant' });
}

// The middle of the element's first line, which for a link over two lines lies in it.
function middleOf(element) {
  const box = element.getClientRects()[0] || element.getBoundingClientRect();
  return { x: box.left + box.width / 2, y: box.top + box.height / 2 };
}

// The innermost element there, when it is a part of the one that is clicked.
function touchedAt(element, point) {
  const hit = element.getRootNode().elementFromPoint(point.x, point.y);
  return hit && element.contains(hit) ? hit : element;
}

class Pointer {
  constructor(target, point) {
    this.target = target;
    this.view = viewOf(target);
    const outer = rectangleOf(target);
    const inner = target.getBoundingClientRect();
    this.place = {
      clientX: point.x,
      clientY: point.y,
      screenX: this.view.screenX + point.x + outer.left - inner.left,
      screenY: this.view.screenY + point.y + outer.top - inner.top,
    };
  }

  send(type, details) {
    const isPointer = type.slice(0, 7) === 'pointer';
    const isEnter = type.slice(-5) === 'enter';
    const Kind = isPointer ? this.view.PointerEvent : this.view.MouseEvent;
    const kind = isPointer ? { pointerId: 1, pointerType: 'mouse', isPrimary: true } : {};
    const flags = { bubbles: !isEnter, cancelable: !isEnter, composed: !isEnter, view: this.view };
    return this.target.dispatchEvent(new Kind(type, { ...flags, ...this.place, ...kind, ...details }));
  }
}

function moveOver(pointer) {
  const types = [
    ...['pointerover', 'pointerenter', 'mouseover', 'mouseenter'],
    ...['pointermove', 'mousemove'],
  ];
  for (let i = 0; i < types.length; i += 1) pointer.send(types[i], {});
}

function focusFrom(target) {
  const owner = closestAcross(target, focusable);
  if (owner) {
    owner.focus({ preventScroll: true });
  } else {
    const active = target.ownerDocument.activeElement;
    if (active && active !== target.ownerDocument.body) active.blur();
  }
}

function choose(option) {
  const list = option.closest('select');
  if (!list || option.disabled || list.disabled) return;
  list.focus({ preventScroll: true });
  const { Event, HTMLOptionElement } = viewOf(option);
  const { set } = Object.getOwnPropertyDescriptor(HTMLOptionElement.prototype, 'selected');
  set.call(option, list.multiple ? !option.selected : true);
  list.dispatchEvent(new Event('input', { bubbles: true, composed: true }));
  list.dispatchEvent(new Event('change', { bubbles: true }));
}

export function click(element) {
  if (element.localName === 'option' && element.closest('select')) return choose(element);
  bringIntoView(element);
  highlight(element);
  const point = middleOf(element);
  const target = touchedAt(element, point);
  const pointer = new Pointer(target, point);
  const pressed = { button: 0, buttons: 1, detail: 1 };
  const released = { button: 0, buttons: 0, detail: 1 };
  moveOver(pointer);
  const isTaken = !pointer.send('pointerdown', pressed);
  // A page that prevents the pointer event gets no mouse events after it.
  if (!isTaken && pointer.send('mousedown', pressed)) focusFrom(target);
  pointer.send('pointerup', released);
  if (!isTaken) pointer.send('mouseup', released);
  if (target.isConnected) pointer.send('click', released);
}
