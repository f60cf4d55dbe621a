// What the session channel asks of a page. Elements have numbers that they keep as long as the page
// is shown. Answers are JSON text; "" when something went wrong.
import { click } from './lib/click.js';
import {
  editableAt,
  isRendered,
  isRichText,
  parentAcross,
  rectangleOf,
  scopesFrom,
  tagOf,
  textOf,
  typeOf,
  valueOf,
} from './lib/dom.js';
import { define } from './lib/globals.js';
import { elementOf, numberOf, page } from './lib/numbers.js';
import { search } from './lib/search.js';

// Only of what holds no other elements, or is a thing of its own: a page would be told many times.
const telling = 'a, button, label, li, option, td, th, h1, h2, h3, h4, h5, h6, p, summary';

function shownText(element) {
  const editable = editableAt(element) === element;
  if (editable) return valueOf(element);
  if (element.localName === 'select') {
    return element.selectedOptions[0] ? element.selectedOptions[0].text : '';
  }
  return !element.firstElementChild || element.matches(telling) ? textOf(element) : '';
}

function labelOf(element) {
  return element.getAttribute('aria-label') || element.title;
}

function describe(element) {
  const { left, top, width, height } = rectangleOf(element);
  const parent = parentAcross(element);
  const told = {
    node: numberOf(element),
    parent: parent ? numberOf(parent) : 0,
    class: tagOf(element),
    text: shownText(element),
    x: left,
    y: top,
    width,
    height,
    visible: isRendered(element),
    enabled: !element.disabled,
    focused: element.ownerDocument.activeElement === element,
    editable: editableAt(element) === element,
  };
  if (element.id) told.identifier = element.id;
  const label = labelOf(element);
  if (label) told.label = label;
  if (element.placeholder) told.placeholder = element.placeholder;
  if (/^(checkbox|radio)$/.test(typeOf(element))) told.checked = element.checked;
  if (typeOf(element) === 'password') told.secure = true;
  return told;
}

function answer(list) {
  const nodes = [];
  for (let i = 0; i < list.length; i += 1) nodes[nodes.length] = describe(list[i]);
  return JSON.stringify({ page, nodes });
}

// Frames and shadow trees among them, parents first.
function all() {
  const found = [];
  const stack = document.documentElement ? [document.documentElement] : [];
  while (stack.length > 0) {
    const element = stack[stack.length - 1];
    stack.length -= 1;
    if (element !== document.documentElement && !isRendered(element)) continue;
    found[found.length] = element;
    const inner = element.shadowRoot || (element.contentDocument && element.contentDocument.documentElement);
    const children = inner ? (element.shadowRoot ? inner.children : [inner]) : element.children;
    for (let i = children.length - 1; i >= 0; i -= 1) stack[stack.length] = children[i];
  }
  return found;
}

function bySelector(css) {
  const found = [];
  const scopes = scopesFrom(document);
  for (let i = 0; i < scopes.length; i += 1) {
    const matching = scopes[i].querySelectorAll(css);
    for (let j = 0; j < matching.length; j += 1) found[found.length] = matching[j];
  }
  return found;
}

function byPath(path) {
  const result = document.evaluate(path, document, null, 7, null);
  const found = [];
  for (let i = 0; i < result.snapshotLength; i += 1) found[i] = result.snapshotItem(i);
  return found;
}

const parts = {
  class: (element, value) => tagOf(element).toLowerCase() === value,
  identifier: (element, value) => element.id === value,
  label: (element, value) => labelOf(element) === value,
  placeholder: (element, value) => element.placeholder === value,
  text: (element, value) => shownText(element) === value,
  textContains: (element, value) => shownText(element).toLowerCase().includes(value),
  visible: (element, value) => isRendered(element) === value,
};

function fits(element, wanted) {
  const names = Object.keys(wanted);
  for (let i = 0; i < names.length; i += 1) {
    if (!parts[names[i]](element, wanted[names[i]])) return false;
  }
  return true;
}

function isInside(element, outer) {
  let at = parentAcross(element);
  while (at && at !== outer) at = parentAcross(at);
  return Boolean(at);
}

// `root` is the number of the element to search in, 0 for the page; `most` is 0 for all.
function select(wanted, root, most) {
  const outer = root && elementOf(root);
  const everything = root && !outer ? [] : all();
  const found = [];
  for (let i = 0; i < everything.length && (!most || found.length < most); i += 1) {
    const isThere = !outer || isInside(everything[i], outer);
    if (isThere && fits(everything[i], wanted)) found[found.length] = everything[i];
  }
  return found;
}

function setText(element, text) {
  element.focus();
  if (isRichText(element)) {
    element.innerText = text;
  } else {
    const { set } = Object.getOwnPropertyDescriptor(Object.getPrototypeOf(element), 'value');
    set.call(element, text);
  }
  element.dispatchEvent(new Event('input', { bubbles: true, composed: true }));
  element.dispatchEvent(new Event('change', { bubbles: true }));
}

function guarded(work) {
  return (...values) => {
    try {
      return work(...values);
    } catch (error) {
      return JSON.stringify({ page, error: String(error) });
    }
  };
}

// The work begins once the call is answered: it may open an alert.
function soon(number, work) {
  const element = elementOf(number);
  if (!element) return JSON.stringify({ page, gone: true });
  setTimeout(() => work(element), 0);
  return JSON.stringify({ page });
}

define({
  tarniSessionTree: guarded(() => answer(all())),
  tarniSessionFind: guarded((way, value) => {
    if (way === 'css') return answer(bySelector(value));
    if (way === 'xpath') return answer(byPath(value));
    return answer(search(document, '', way === 'text' ? 'text' : 'partialtext', value));
  }),
  tarniSessionSelect: guarded((wanted, root, most) => answer(select(wanted, root, most))),
  tarniSessionDescribe: guarded((number) => {
    const element = elementOf(number);
    return element ? answer([element]) : JSON.stringify({ page, gone: true });
  }),
  tarniSessionClick: guarded((number) => soon(number, click)),
  tarniSessionScroll: guarded((number) =>
    soon(number, (element) => element.scrollIntoView({ block: 'center', behavior: 'instant' })),
  ),
  tarniSessionSetText: guarded((number, text) => {
    const element = elementOf(number);
    if (element && editableAt(element) !== element) return JSON.stringify({ page, error: 'it takes no text' });
    return soon(number, (field) => setText(field, text));
  }),
});
