// Elements by tag, and by text, part of a text or XPath. What is not shown is left out, but for an
// XPath, which names what it names.
import { isRendered, normalized, parentAcross, scopesFrom, tagOf, textOf } from './dom.js';

// Elements whose text is not content.
const captioned = 'input, textarea, select, img';

function append(list, items) {
  for (let i = 0; i < items.length; i += 1) list[list.length] = items[i];
}

// The innermost elements below `outer` whose text fits; `mayHold` says of a text whether one of a
// part of it can.
function innermost(outer, fits, mayHold, found) {
  const stack = [outer];
  while (stack.length > 0) {
    const at = stack[stack.length - 1];
    stack.length -= 1;
    const children = at.children;
    let isHeldBelow = false;
    for (let i = children.length - 1; i >= 0; i -= 1) {
      if (!mayHold(children[i].textContent)) continue;
      isHeldBelow = true;
      stack[stack.length] = children[i];
    }
    if (!isHeldBelow && at !== outer && fits(textOf(at))) found[found.length] = at;
  }
}

function inScope(scope, tag, fits, mayHold) {
  const found = [];
  if (!fits) {
    append(found, scope.querySelectorAll(tag || '*'));
    return found;
  }
  const candidates = scope.querySelectorAll(tag || captioned);
  for (let i = 0; i < candidates.length; i += 1) {
    if (fits(textOf(candidates[i]))) found[found.length] = candidates[i];
  }
  if (!tag) innermost(scope, fits, mayHold, found);
  return found;
}

function onlyRendered(elements) {
  const shown = [];
  for (let i = 0; i < elements.length; i += 1) {
    if (isRendered(elements[i])) shown[shown.length] = elements[i];
  }
  return shown;
}

function isBelow(outer, element) {
  if (outer === document) return true;
  let at = parentAcross(element);
  while (at && at !== outer) at = parentAcross(at);
  return Boolean(at);
}

// A path may lead out of where it begins.
function byXPath(outer, tag, path) {
  const named = window.TARNI.xpath.findAll(path, outer);
  const found = [];
  for (let i = 0; i < named.length; i += 1) {
    const isOfTag = !tag || tagOf(named[i]) === tag.toUpperCase();
    if (isOfTag && isBelow(outer, named[i])) found[found.length] = named[i];
  }
  return found;
}

// `outer` is the page's document or an element. An unknown accessor or tag finds nothing.
export function search(outer, tag, accessor, value) {
  if (tag && !/^[a-z][\w:.-]*$/i.test(tag)) return [];
  if (accessor === 'xpath') return byXPath(outer, tag, value);
  const wanted = normalized(value);
  const tests = {
    '': [null, null],
    text: [(text) => text === wanted, (text) => normalized(text).indexOf(wanted) >= 0],
    partialtext: [
      (text) => text.toLowerCase().indexOf(wanted.toLowerCase()) >= 0,
      (text) => normalized(text).toLowerCase().indexOf(wanted.toLowerCase()) >= 0,
    ],
  };
  if (!Object.prototype.hasOwnProperty.call(tests, accessor)) return [];
  const fits = tests[accessor][0];
  const mayHold = tests[accessor][1];
  const selector = tag.replace(/[:.]/g, '\\$&');
  const scopes = scopesFrom(outer);
  const found = [];
  for (let i = 0; i < scopes.length; i += 1) {
    append(found, inScope(scopes[i], selector, fits, mayHold));
  }
  return onlyRendered(found);
}
