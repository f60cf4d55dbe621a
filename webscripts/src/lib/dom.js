// What the scripts know of pages: elements, their texts, and the scopes that elements live in. A
// scope is a document or an open shadow tree; a page's scopes are its own document, the documents of
// its frames of the same origin, and all shadow trees in them.
//
// A page may have replaced methods of Array.prototype, JSON and other globals, so lists are filled
// and read by index here and in all other files.

export function isElement(node) {
  return Boolean(node) && node.nodeType === 1;
}

// "INPUT", "A"; upper-case for elements of other namespaces too.
export function tagOf(element) {
  return element.localName.toUpperCase();
}

export function typeOf(element) {
  return element.localName === 'input' ? element.type : '';
}

export function viewOf(element) {
  return element.ownerDocument.defaultView || window;
}

// The scope that begins at an element: its open shadow tree or the document of a frame. Null when
// there is none, and for a frame of another origin.
export function scopeIn(element) {
  if (element.shadowRoot) return element.shadowRoot;
  return isFrame(element) ? element.contentDocument : null;
}

export function isFrame(element) {
  return element.localName === 'iframe' || element.localName === 'frame';
}

export function isForeignFrame(element) {
  return isFrame(element) && element.isConnected && !element.contentDocument;
}

// The element that holds the scope of `node`; null for the page itself.
export function holderOf(node) {
  const root = node.getRootNode();
  if (root.host) return root.host;
  const view = root.defaultView;
  return view && view !== window ? view.frameElement : null;
}

// `scope` and all scopes inside of it.
export function scopesFrom(scope) {
  const scopes = [scope];
  const add = (inner) => {
    if (inner) scopes[scopes.length] = inner;
  };
  for (let at = 0; at < scopes.length; at += 1) {
    const frames = scopes[at].querySelectorAll('iframe, frame');
    for (let i = 0; i < frames.length; i += 1) add(scopeIn(frames[i]));
    const elements = scopes[at].querySelectorAll('*');
    for (let i = 0; i < elements.length; i += 1) add(elements[i].shadowRoot);
  }
  return scopes;
}

// The nearest ancestor or the element itself that fits, over the borders of scopes.
export function closestAcross(element, selector) {
  for (let at = element; at; at = holderOf(at)) {
    const found = at.closest(selector);
    if (found) return found;
  }
  return null;
}

export function parentAcross(element) {
  return element.parentElement || holderOf(element);
}

export function normalized(text) {
  return text.replace(/\s+/g, ' ').trim();
}

const longestText = 1000;

function captionOf(control) {
  const placeholder = control.getAttribute('placeholder');
  if (placeholder) return placeholder;
  const label = control.labels && control.labels[0];
  return label ? label.textContent : '';
}

// The text that an element is known by, as recorded and as searched for: of a field its placeholder
// or its label, not what was typed (that of rich text is typed). "" for none and for whole pages of text.
export function textOf(element) {
  switch (element.localName) {
    case 'input':
      if (/^(button|submit|reset)$/.test(element.type)) return normalized(element.value);
      if (element.type === 'image') return normalized(element.alt);
      return normalized(captionOf(element));
    case 'textarea':
    case 'select':
      return normalized(captionOf(element));
    case 'img':
      return normalized(element.alt);
    default: {
      if (element.hasAttribute('contenteditable')) return '';
      const hasCode = element.firstElementChild && element.querySelector('script, style');
      const text = normalized(hasCode ? element.innerText : element.textContent);
      return text.length > longestText ? '' : text;
    }
  }
}

// Engines of old do not know the quick question.
const canTell = Boolean(Element.prototype.checkVisibility);

// Whether it stands on the page at all; it may be scrolled out of view. Asked of thousands: what
// holds for most of them comes first.
export function isRendered(element) {
  if (canTell ? element.checkVisibility() : element.offsetParent) return true;
  if (element.localName === 'option' || element.localName === 'optgroup') {
    const list = element.closest('select');
    return Boolean(list) && isRendered(list);
  }
  return !canTell && element.getClientRects().length > 0;
}

// In the coordinates of the page's own viewport.
export function rectangleOf(element) {
  const own = element.getBoundingClientRect();
  const rectangle = { left: own.left, top: own.top, width: own.width, height: own.height };
  for (let at = viewOf(element).frameElement; at; at = viewOf(at).frameElement) {
    const frame = at.getBoundingClientRect();
    rectangle.left += frame.left + at.clientLeft;
    rectangle.top += frame.top + at.clientTop;
  }
  return rectangle;
}

// The element whose contents a person edits there, or null.
export function editableAt(element) {
  const local = element.localName;
  if (local === 'textarea') return element;
  if (local === 'input') {
    return /^(button|submit|reset|image|checkbox|radio|file|hidden)$/.test(element.type)
      ? null
      : element;
  }
  if (!element.isContentEditable) return null;
  let host = element;
  while (host.parentElement && host.parentElement.isContentEditable) host = host.parentElement;
  return host;
}

export function isRichText(element) {
  return element.localName !== 'input' && element.localName !== 'textarea';
}

export function valueOf(editable) {
  return isRichText(editable) ? editable.innerText : editable.value;
}
