// What the session channel asks of a page. Elements have numbers that they keep as long as the page
// is shown. Answers are JSON text; "" when something went wrong.
import { click } from './lib/click.js';
import {
  closestAcross,
  editableAt,
  isFrame,
  isRendered,
  isRichText,
  normalized,
  parentAcross,
  rectangleOf,
  scopeIn,
  scopesFrom,
  tagOf,
  textOf,
  typeOf,
  valueOf,
} from './lib/dom.js';
import { define } from './lib/globals.js';
import { elementOf, numberOf, page } from './lib/numbers.js';
import { pressAt, startOf } from './lib/press.js';
import { search } from './lib/search.js';

// Only of what holds no other elements, or is a thing of its own: a page would be told many times.
const telling = 'a, button, label, li, option, td, th, h1, h2, h3, h4, h5, h6, p, summary';

function shownText(element) {
  if (typeOf(element) === 'password') return '•'.repeat(element.value.length);
  const editable = editableAt(element) === element;
  if (editable) return valueOf(element);
  if (element.localName === 'select') {
    return element.selectedOptions[0] ? element.selectedOptions[0].text : '';
  }
  return !element.firstElementChild || element.matches(telling) ? textOf(element) : '';
}

// As those are told who do not see it.
function labelOf(element) {
  const caption = element.labels && element.labels[0];
  return element.getAttribute('aria-label') || element.title || (caption ? normalized(caption.textContent) : '');
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

// What stands in it: of a frame its page, where there is a shadow tree that.
function childrenOf(element) {
  if (element.shadowRoot) return element.shadowRoot.children;
  const inner = element.contentDocument && element.contentDocument.documentElement;
  return inner ? [inner] : element.children;
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
    const children = childrenOf(element);
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

// In the page's document and those of its frames: there is no XPath in a shadow tree.
function byPath(path) {
  const found = [];
  const scopes = scopesFrom(document);
  for (let i = 0; i < scopes.length; i += 1) {
    if (scopes[i].host) continue;
    const result = scopes[i].evaluate(path, scopes[i], null, 7, null);
    for (let j = 0; j < result.snapshotLength; j += 1) {
      const node = result.snapshotItem(j);
      if (node.nodeType !== 1) throw new Error('the XPath gives what are no elements');
      found[found.length] = node;
    }
  }
  return found;
}

// As native views are told apart: \HTML[0]\BODY[0]\BUTTON[1].
function positionOf(element) {
  let position = '';
  for (let at = element; at; at = parentAcross(at)) {
    let index = 0;
    for (let before = at.previousElementSibling; before; before = before.previousElementSibling) {
      if (tagOf(before) === tagOf(at)) index += 1;
    }
    position = `\\${tagOf(at)}[${index}]${position}`;
  }
  return position;
}

// The other way round: BUTTON[1] among these.
function childAt(children, step) {
  let index = 0;
  for (let i = 0; i < children.length; i += 1) {
    const tag = tagOf(children[i]);
    if (`${tag}[${index}]` === step) return children[i];
    if (step.startsWith(`${tag}[`)) index += 1;
  }
  return null;
}

function atPosition(position) {
  const steps = position.split('\\');
  let element = document.documentElement && childAt([document.documentElement], steps[1]);
  for (let i = 2; element && i < steps.length; i += 1) element = childAt(childrenOf(element), steps[i]);
  const isShown = element && (element === document.documentElement || isRendered(element));
  return isShown ? [element] : [];
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
function select({ xpath, ...wanted }, root, most) {
  const outer = root && elementOf(root);
  const everything = root && !outer ? [] : xpath ? atPosition(xpath) : all();
  const found = [];
  for (let i = 0; i < everything.length && (!most || found.length < most); i += 1) {
    const isThere = !outer || isInside(everything[i], outer);
    if (isThere && fits(everything[i], wanted)) found[found.length] = everything[i];
  }
  return found;
}

// What a person means who presses there: the button, not the letters on it.
const things =
  'a, button, input, label, option, select, summary, textarea, [role=button], [role=link], [role=menuitem], [role=tab]';

function pointedAt(x, y) {
  let element = document.elementFromPoint(x, y);
  let [left, top] = [x, y];
  for (let scope = element && scopeIn(element); scope; scope = scopeIn(element)) {
    if (isFrame(element)) {
      const frame = element.getBoundingClientRect();
      left -= frame.left + element.clientLeft;
      top -= frame.top + element.clientTop;
    }
    const inner = scope.elementFromPoint(left, top);
    if (!inner || inner === element) break;
    element = inner;
  }
  return element && (closestAcross(element, things) || element);
}

function focused() {
  let element = document.activeElement;
  for (let scope = element && scopeIn(element); scope && scope.activeElement; scope = scopeIn(element)) {
    element = scope.activeElement;
  }
  return element;
}

const longestText = 200;

// The ways to find it again, each tried, what fits it alone first.
function locatorsOf(element) {
  const told = describe(element);
  const candidates = [];
  const add = (name, value) => {
    if (!value || value.length > longestText) return;
    candidates[candidates.length] = { [name]: value, class: told.class, visible: told.visible };
  };
  if (told.identifier) candidates[0] = { identifier: told.identifier };
  add('label', told.label);
  // What a person changes does not tell it from others the next time.
  if (!told.editable && element.localName !== 'select') add('text', told.text);
  add('placeholder', told.placeholder);
  add('class', told.class);
  candidates[candidates.length] = { xpath: positionOf(element) };
  const alone = [];
  const others = [];
  for (let i = 0; i < candidates.length; i += 1) {
    const start = performance.now();
    const wanted = { ...candidates[i] };
    if (wanted.class) wanted.class = wanted.class.toLowerCase();
    const matches = select(wanted, 0, 0).length;
    const list = matches === 1 ? alone : others;
    list[list.length] = { find: candidates[i], matches, ms: performance.now() - start };
  }
  return alone.concat(others);
}

function portrait(element) {
  if (!element) return answer([]);
  const isField = editableAt(element) || element.localName === 'select';
  return JSON.stringify({
    page,
    nodes: [describe(element)],
    locators: locatorsOf(element),
    near: isField ? textOf(element) : '',
  });
}

function scrollTo(element) {
  const { left, top, width, height } = rectangleOf(element);
  const isInSight = left >= 0 && top >= 0 && left + width <= innerWidth && top + height <= innerHeight;
  if (!isInSight) element.scrollIntoView({ block: 'center', behavior: 'instant' });
}

// Where the pointer presses it; without a place when it cannot.
function pressed(element, place) {
  const { x, y, taker, isOwn } = pressAt(element, place);
  if (!taker || element.disabled) return JSON.stringify({ page });
  return JSON.stringify(isOwn ? { page, x, y } : { page, taker: startOf(taker) });
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

function now(number, work) {
  const element = elementOf(number);
  if (!element) return JSON.stringify({ page, gone: true });
  work(element);
  return JSON.stringify({ page });
}

// The work begins once the call is answered: it may open an alert.
function soon(number, work) {
  return now(number, (element) => setTimeout(() => work(element), 0));
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
  tarniSessionPress: guarded((number, place) => {
    const element = elementOf(number);
    return element ? pressed(element, place) : JSON.stringify({ page, gone: true });
  }),
  tarniSessionScroll: guarded((number) => now(number, scrollTo)),
  tarniSessionFocus: guarded((number) => now(number, (element) => element.focus())),
  tarniSessionPointed: guarded((x, y) => portrait(pointedAt(x, y))),
  tarniSessionFocused: guarded(() => portrait(focused())),
  tarniSessionPortrait: guarded((number) => portrait(elementOf(number))),
  tarniSessionSetText: guarded((number, text) => {
    const element = elementOf(number);
    if (element && editableAt(element) !== element) return JSON.stringify({ page, error: 'it takes no text' });
    return soon(number, (field) => setText(field, text));
  }),
});
