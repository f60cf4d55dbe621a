// Finds elements of the page, clicks them, types into them and reads them. Answers are JSON arrays
// as those for native views, "" for nothing. An identifier is good until the next search.
import { click } from './lib/click.js';
import { editableAt, isRichText, normalized, typeOf, valueOf } from './lib/dom.js';
import { search } from './lib/search.js';
import { define } from './lib/globals.js';
import { toJson } from './lib/text.js';

// The elements of the last search; an identifier ends in the place of its element there.
let known = [];
let searches = 0;

// Two pages of one program never give the same identifier.
const page = `web-${Math.random().toString(36).slice(2, 10)}`;
let prefix = '';

function remember(elements) {
  known = elements;
  searches += 1;
  prefix = `${page}-${searches}-`;
  let entries = '';
  for (let i = 0; i < elements.length; i += 1) {
    entries += `${i ? ',' : ''}{"elementID":"${prefix}${i}"}`;
  }
  return entries && `[${entries}]`;
}

// Null for an identifier of another page or search, and for an element that has left the page.
function elementOf(id) {
  const place = id.slice(prefix.length);
  const isOurs = prefix && id.slice(0, prefix.length) === prefix && /^\d+$/.test(place);
  const element = isOurs ? known[Number(place)] : null;
  return element && element.isConnected ? element : null;
}

// As text of native views is read: what a field holds or else asks for, "1" for what is on.
function shownText(element) {
  if (element.localName === 'select') {
    const chosen = element.selectedOptions;
    let text = '';
    for (let i = 0; i < chosen.length; i += 1) text += (i ? '\n' : '') + chosen[i].text;
    return text;
  }
  if (/^(checkbox|radio)$/.test(typeOf(element))) return element.checked ? '1' : '0';
  if (editableAt(element) && !isRichText(element)) {
    return valueOf(element) || element.getAttribute('placeholder') || '';
  }
  if (element.localName === 'input') return element.value;
  if (element.localName === 'img') return element.alt;
  const text = element.innerText;
  return text === undefined ? normalized(element.textContent) : text.trim();
}

// An action may open an alert, which lasts until somebody closes it: it begins once the call has been
// answered. The next call comes after it in any case.
let action = null;

function carryOut() {
  const work = action;
  action = null;
  if (work) work();
}

function soon(work) {
  action = work;
  setTimeout(guarded(carryOut), 0);
}

// What goes wrong in the page is not the caller's to handle.
function guarded(work) {
  return (...values) => {
    try {
      return work.apply(null, values) || '';
    } catch (error) {
      console.error('tarni:', error);
      return '';
    }
  };
}

function call(work) {
  return guarded((...values) => {
    guarded(carryOut)();
    return work.apply(null, values);
  });
}

function type(element, text) {
  if (element.localName !== 'select') return window.TARNI.keys.type(element, text);
  const option = window.TARNI.keys.chooseOption(element, text);
  if (option) click(option);
}

define({
  findElements: call((tag, accessor, value) => remember(search(document, tag, accessor, value))),
  findElementsInsideElement: call((tag, accessor, value, id) => {
    const outer = elementOf(id);
    return outer ? remember(search(outer, tag, accessor, value)) : '';
  }),
  performClick: call((id) => {
    const element = elementOf(id);
    if (element) soon(() => click(element));
  }),
  performTypeText: call((id, text) => {
    const element = elementOf(id);
    if (element) soon(() => type(element, text));
  }),
  tarni_getText: call((id) => {
    const element = elementOf(id);
    return element ? toJson([{ output: shownText(element) }]) : '';
  }),
});
window.TARNI.player = true;
