// The commands of WebDriver in a page: `tarniDriver(name, arguments, frame)` answers as JSON text
// {"value"}, {"error", "message"} or {"pending"}, whose answer `tarniDriverAnswer(pending)` has later.
import { isFrame, isRendered, rectangleOf, typeOf } from './lib/dom.js';
import { define } from './lib/globals.js';
import { pressAt, startOf } from './lib/press.js';
import { Failure, fromJson, referred, toJson } from './lib/values.js';

// The document in which commands work; that of a frame whose element is referred to.
function documentOf(frame) {
  if (!frame) return document;
  const element = fromJson(frame);
  if (!element.contentDocument) throw new Failure('no such frame', 'the frame is of another origin, or gone');
  return element.contentDocument;
}

function byXPath(path, root) {
  const owner = root.ownerDocument || root;
  const result = owner.evaluate(path, root, null, 7, null);
  const found = [];
  for (let i = 0; i < result.snapshotLength; i += 1) {
    if (result.snapshotItem(i).nodeType !== 1) throw new Error('the XPath gives no elements');
    found[i] = result.snapshotItem(i);
  }
  return found;
}

function byLinkText(root, fits) {
  return [...root.querySelectorAll('a')].filter((link) => fits(link.innerText.trim()));
}

const strategies = {
  'css selector': (root, value) => root.querySelectorAll(value),
  xpath: (root, value) => byXPath(value, root),
  'tag name': (root, value) => root.querySelectorAll(value === '*' ? value : CSS.escape(value)),
  id: (root, value) => root.querySelectorAll(`[id="${CSS.escape(value)}"]`),
  name: (root, value) => root.querySelectorAll(`[name="${CSS.escape(value)}"]`),
  'class name': (root, value) => root.querySelectorAll(`.${CSS.escape(value)}`),
  'accessibility id': (root, value) => root.querySelectorAll(`[aria-label="${CSS.escape(value)}"]`),
  'link text': (root, value) => byLinkText(root, (text) => text === value.trim()),
  'partial link text': (root, value) => byLinkText(root, (text) => text.includes(value)),
};

function find({ using, value, within }, root) {
  const search = strategies[using];
  if (!search) throw new Failure('invalid selector', `nothing is found in a page by "${using}"`);
  try {
    return search(within ? referred(within) : root, value);
  } catch (error) {
    if (error instanceof Failure) throw error;
    throw new Failure('invalid selector', String(error));
  }
}

const truths = ['allowfullscreen', 'async', 'autofocus', 'autoplay', 'checked', 'controls', 'default', 'defer', 'disabled',
  'formnovalidate', 'hidden', 'ismap', 'itemscope', 'loop', 'multiple', 'muted', 'nomodule', 'novalidate', 'open',
  'readonly', 'required', 'reversed', 'selected'];

function attribute({ element, name }) {
  const node = referred(element);
  const value = node.getAttribute(name);
  return value !== null && truths.includes(name.toLowerCase()) ? 'true' : value;
}

function isDisplayed({ element }) {
  const node = referred(element);
  if (!isRendered(node)) return false;
  const style = getComputedStyle(node);
  return style.visibility === 'visible' && style.opacity !== '0';
}

function isEnabled({ element }) {
  return !referred(element).matches(':disabled');
}

function isSelected({ element }) {
  const node = referred(element);
  return Boolean(/^(checkbox|radio)$/.test(typeOf(node)) ? node.checked : node.selected);
}

// In the page's own viewport, whatever frame it stands in.
function viewportRect({ element }) {
  const { left, top, width, height } = rectangleOf(referred(element));
  return { x: left, y: top, width, height };
}

function rect({ element }) {
  const node = referred(element);
  const { left, top, width, height } = node.getBoundingClientRect();
  const view = node.ownerDocument.defaultView;
  return { x: left + view.pageXOffset, y: top + view.pageYOffset, width, height };
}

// An entry is chosen without its list being opened, which is not part of the page.
function choose(option) {
  const list = option.closest('select');
  if (!list || option.disabled) throw new Failure('element not interactable', 'the entry cannot be chosen');
  option.selected = list.multiple ? !option.selected : true;
  list.dispatchEvent(new Event('input', { bubbles: true }));
  list.dispatchEvent(new Event('change', { bubbles: true }));
}

// Where a click meets the element, in the viewport; null when nothing has to be clicked any more.
function clickable({ element }) {
  const node = referred(element);
  if (node.localName === 'option') return choose(node);
  if (!isDisplayed({ element })) throw new Failure('element not interactable', 'the element is not displayed');
  const { x, y, taker, isOwn } = pressAt(node);
  if (!taker) throw new Failure('element not interactable', 'nothing of the element is in sight');
  if (!isOwn) throw new Failure('element click intercepted', `${startOf(taker)} takes the press instead`);
  return { x, y };
}

function isEditable(node) {
  return node.isContentEditable || ((node.localName === 'input' || node.localName === 'textarea') && !node.readOnly && !node.disabled);
}

function clear({ element }) {
  const node = referred(element);
  if (!isEditable(node)) throw new Failure('invalid element state', 'the element cannot be edited');
  node.focus();
  if (node.isContentEditable) node.innerHTML = '';
  else node.value = '';
  node.dispatchEvent(new Event('input', { bubbles: true }));
  node.dispatchEvent(new Event('change', { bubbles: true }));
}

// With the caret behind its text.
function focus({ element }) {
  const node = referred(element);
  if (typeOf(node) === 'file') throw new Failure('unsupported operation', 'files are chosen in the dialog of the program');
  if (!isDisplayed({ element })) throw new Failure('element not interactable', 'the element is not displayed');
  if (node.ownerDocument.activeElement === node) return;
  node.focus();
  try {
    node.setSelectionRange(node.value.length, node.value.length);
  } catch (error) {
    // A field of numbers or colours has no caret to be moved.
  }
}

function cookies(root) {
  return root.cookie.split('; ').filter(Boolean).map((text) => {
    const sign = text.indexOf('=');
    return { name: text.slice(0, sign), value: text.slice(sign + 1), path: '/', httpOnly: false, secure: false };
  });
}

function addCookie({ cookie }, root) {
  let text = `${cookie.name}=${cookie.value}; path=${cookie.path || '/'}`;
  if (cookie.domain) text += `; domain=${cookie.domain}`;
  if (cookie.expiry) text += `; expires=${new Date(cookie.expiry * 1000).toUTCString()}`;
  if (cookie.secure) text += '; secure';
  root.cookie = text;
}

function frame({ id }, root) {
  if (typeof id !== 'number') {
    const element = fromJson(id);
    if (!element || !isFrame(element)) throw new Failure('no such frame', 'the element is no frame');
    documentOf(id);
    return element;
  }
  const all = root.querySelectorAll('iframe, frame');
  if (!all[id]) throw new Failure('no such frame', `there is no frame ${id}`);
  return all[id];
}

const commands = {
  find,
  attribute,
  property: ({ element, name }) => referred(element)[name],
  css: ({ element, name }) => getComputedStyle(referred(element)).getPropertyValue(name),
  text: ({ element }) => String(referred(element).innerText || '').trim(),
  name: ({ element }) => referred(element).localName,
  role: ({ element }) => referred(element).getAttribute('role') || referred(element).localName,
  label: ({ element }) => referred(element).getAttribute('aria-label') || String(referred(element).innerText || '').trim(),
  shadow: ({ element }) => {
    const { shadowRoot } = referred(element);
    if (shadowRoot) return shadowRoot;
    throw new Failure('no such shadow root', 'the element has no open one');
  },
  rect,
  viewportRect,
  isDisplayed,
  isEnabled,
  isSelected,
  clickable,
  clear,
  focus,
  active: (_, root) => root.activeElement || root.body,
  source: (_, root) => root.documentElement.outerHTML,
  title: () => document.title,
  url: () => location.href,
  // What tells this document from the one that comes; null when none comes.
  navigate: ({ url }) => {
    const address = addressOf(url);
    setTimeout(() => location.assign(address), 0);
    const [page, place] = address.split('#');
    const stays = place !== undefined && page === location.href.split('#')[0];
    return stays ? null : performance.timeOrigin;
  },
  history: ({ by }) => {
    setTimeout(() => (by ? history.go(by) : location.reload()), 0);
    return by ? null : performance.timeOrigin;
  },
  // Behind what was done with mouse and keyboard before; a page in the background draws nothing.
  settle: () =>
    new Promise((done) => {
      requestAnimationFrame(() => setTimeout(done, 0));
      setTimeout(done, 100);
    }),
  cookies: (_, root) => cookies(root),
  addCookie,
  frame,
};

function addressOf(url) {
  try {
    return new URL(url).href;
  } catch {
    throw new Failure('invalid argument', `${url} is no address`);
  }
}

const pending = new Map();
let lastPending = 0;

function failed(error) {
  const name = error instanceof Failure ? error.error : 'javascript error';
  return JSON.stringify({ error: name, message: String((error && error.message) || error) });
}

function answer(value) {
  try {
    return JSON.stringify({ value: toJson(value) });
  } catch (error) {
    return failed(error);
  }
}

function later(promise) {
  lastPending += 1;
  const number = lastPending;
  pending.set(number, '');
  promise.then(
    (value) => pending.set(number, answer(value)),
    (error) => pending.set(number, failed(error)),
  );
  return JSON.stringify({ pending: number });
}

function guarded(work) {
  try {
    const value = work();
    return value && typeof value.then === 'function' ? later(Promise.resolve(value)) : answer(value);
  } catch (error) {
    return failed(error);
  }
}

define({
  tarniDriver: (name, given, inFrame) => guarded(() => commands[name](given, documentOf(inFrame))),
  // `script` is a function of the page; a text is made one of the frame's. With `isAsync` its last
  // argument is what it calls with its answer.
  tarniDriverScript: (script, given, inFrame, isAsync) =>
    guarded(() => {
      const view = documentOf(inFrame).defaultView;
      const work = typeof script === 'string' ? new view.Function(script) : script;
      const values = fromJson(given);
      if (!isAsync) return work.apply(view, values);
      return new Promise((done) => {
        work.apply(view, [...values, done]);
      });
    }),
  // "" until it is there.
  tarniDriverAnswer: (number) => {
    const text = pending.get(number);
    if (text) pending.delete(number);
    return text;
  },
});
