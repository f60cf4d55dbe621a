// XPaths that name one element of a page, and finding by them.
//
// A path names the element by what survives small changes of the page: an identifier, a name, its
// text; by its place only below something so named. An element of a frame or of an open shadow tree
// is named from the frame or host on: `//iframe[@id='pay'] >> //button[@name='go']`.
import { holderOf, isElement, normalized, scopeIn } from './lib/dom.js';

const crossing = ' >> ';
const tellingAttributes = [
  'data-testid',
  'data-test',
  'data-cy',
  'name',
  'aria-label',
  'placeholder',
  'title',
  'alt',
  'href',
  'for',
];
const namedByText = /^(a|button|label|option|summary|legend|th|li|h[1-6])$/;
const oneOfAKind = /-|^(main|nav|header|footer|aside|form|table|dialog|iframe|frame|svg|h1)$/;
const longestText = 60;

function literal(text) {
  if (text.indexOf("'") < 0) return `'${text}'`;
  if (text.indexOf('"') < 0) return `"${text}"`;
  return `concat('${text.replace(/'/g, `', "'", '`)}')`;
}

// Namespaces other than that of HTML need their elements named by a condition.
function stepTo(element) {
  const isPlain =
    element.namespaceURI === 'http://www.w3.org/1999/xhtml' &&
    element.ownerDocument.contentType === 'text/html' &&
    /^[a-z][a-z0-9-]*$/.test(element.localName);
  return isPlain ? element.localName : `*[local-name()=${literal(element.localName)}]`;
}

function isMade(value) {
  // Made anew on each load, as many frameworks do: ":r1:", "ember342", "radix-7", hashes.
  return /\d{3,}|^:|:$|[-_]\d+$|[0-9a-f]{8,}|^ember|^mui-/i.test(value);
}

// --- evaluating

function evaluate(path, context) {
  const owner = context.ownerDocument || context;
  const result = owner.evaluate(path, context, null, 7 /* ORDERED_NODE_SNAPSHOT_TYPE */, null);
  const found = [];
  for (let i = 0; i < result.snapshotLength; i += 1) {
    const node = result.snapshotItem(i);
    if (isElement(node)) found[found.length] = node;
  }
  return found;
}

// Of a path as they are built here: its first element, the place of that, and what follows.
const firstStep = /^\/?(\*\[local-name\(\)='[^']*'\]|[^/[]+)(?:\[(\d+)\])?(.*)$/;

// Browsers evaluate no path from a shadow root: each of its children takes its part of it.
function evaluateInShadow(path, root) {
  const found = [];
  const add = (elements) => {
    for (let i = 0; i < elements.length; i += 1) found[found.length] = elements[i];
  };
  const children = root.children;
  if (path.slice(0, 2) === '//') {
    for (let i = 0; i < children.length; i += 1) {
      add(evaluate(`descendant-or-self::${path.slice(2)}`, children[i]));
    }
    return found;
  }
  const parts = firstStep.exec(path);
  if (!parts) return found;
  const first = parts[1];
  const position = parts[2];
  const rest = parts[3];
  let count = 0;
  for (let i = 0; i < children.length; i += 1) {
    if (evaluate(`self::${first}`, children[i]).length === 0) continue;
    count += 1;
    if (!position || Number(position) === count) add(evaluate(`.${rest}`, children[i]));
  }
  return found;
}

function findIn(scope, path) {
  return scope.host ? evaluateInShadow(path, scope) : evaluate(path, scope);
}

// The parts between crossings that stand in no literal.
function partsOf(path) {
  const parts = [''];
  let quote = '';
  for (let i = 0; i < path.length; i += 1) {
    const letter = path[i];
    if (!quote && path.substr(i, crossing.length) === crossing) {
      parts[parts.length] = '';
      i += crossing.length - 1;
      continue;
    }
    if (quote ? letter === quote : letter === "'" || letter === '"') quote = quote ? '' : letter;
    parts[parts.length - 1] += letter;
  }
  return parts;
}

// All elements that the path names; what is not a path names nothing.
function findAll(path, scope) {
  const parts = partsOf(path);
  try {
    let scopes = [scope];
    for (let part = 0; part < parts.length - 1; part += 1) {
      const inner = [];
      for (let i = 0; i < scopes.length; i += 1) {
        const holders = findIn(scopes[i], parts[part]);
        for (let j = 0; j < holders.length; j += 1) {
          const entered = scopeIn(holders[j]);
          if (entered) inner[inner.length] = entered;
        }
      }
      scopes = inner;
    }
    const found = [];
    for (let i = 0; i < scopes.length; i += 1) {
      const elements = findIn(scopes[i], parts[parts.length - 1]);
      for (let j = 0; j < elements.length; j += 1) found[found.length] = elements[j];
    }
    return found;
  } catch (error) {
    return [];
  }
}

// --- building

function namesOnly(path, element, scope) {
  let found = [];
  try {
    found = findIn(scope, path);
  } catch (error) {
    return false;
  }
  return found.length === 1 && found[0] === element;
}

function conditionsOf(element) {
  const conditions = [];
  const id = element.getAttribute('id');
  if (id && !isMade(id)) conditions[conditions.length] = `@id=${literal(id)}`;
  for (let i = 0; i < tellingAttributes.length; i += 1) {
    const name = tellingAttributes[i];
    const value = element.getAttribute(name);
    if (!value || value.length > longestText * 2) continue;
    const condition = `@${name}=${literal(value)}`;
    conditions[conditions.length] = condition;
    const own = element.localName === 'input' ? element.getAttribute('value') : null;
    if (own && /^(radio|checkbox|submit|button)$/.test(element.type)) {
      conditions[conditions.length] = `${condition} and @value=${literal(own)}`;
    }
  }
  const text = normalized(element.textContent);
  if (namedByText.test(element.localName) && text && text.length <= longestText) {
    conditions[conditions.length] = `normalize-space(.)=${literal(text)}`;
  }
  // Better than a place in the page, worse than all else.
  if (id && isMade(id)) conditions[conditions.length] = `@id=${literal(id)}`;
  return conditions;
}

function pathByName(element, scope) {
  const conditions = conditionsOf(element);
  const step = stepTo(element);
  const isPlain = step.slice(-1) !== ']';
  for (let i = 0; i < conditions.length; i += 1) {
    const path = isPlain
      ? `//${step}[${conditions[i]}]`
      : `//${step.slice(0, -1)} and ${conditions[i]}]`;
    if (namesOnly(path, element, scope)) return path;
  }
  const alone = `//${step}`;
  if (oneOfAKind.test(element.localName) && namesOnly(alone, element, scope)) return alone;
  return null;
}

function placeAmongSiblings(element) {
  const step = stepTo(element);
  let before = 0;
  let isOnly = true;
  for (let at = element.previousElementSibling; at; at = at.previousElementSibling) {
    if (stepTo(at) === step) before += 1;
  }
  for (let at = element.nextElementSibling; at && isOnly; at = at.nextElementSibling) {
    if (stepTo(at) === step) isOnly = false;
  }
  return before === 0 && isOnly ? step : `${step}[${before + 1}]`;
}

function pathInScope(element, scope) {
  let below = '';
  for (let at = element; at; at = at.parentElement) {
    const named = pathByName(at, scope);
    if (named) return named + below;
    below = `/${placeAmongSiblings(at)}${below}`;
  }
  return below;
}

window.TARNI.xpath = {
  findAll,
  // The path of an element of the page, from the top document on.
  of(element) {
    let path = pathInScope(element, element.getRootNode());
    for (let at = holderOf(element); at; at = holderOf(at)) {
      path = pathInScope(at, at.getRootNode()) + crossing + path;
    }
    return path;
  },
};
