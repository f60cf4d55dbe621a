// What is said about an element: in a recorded step and to a person who points at it. Shapes and
// keys are those of native views; "mode" tells them apart.
import { computeAccessibleName } from 'dom-accessibility-api';
import {
  closestAcross,
  isForeignFrame,
  isRendered,
  parentAcross,
  rectangleOf,
  scopesFrom,
  tagOf,
  textOf,
} from './dom.js';

// The bridge puts the picture of the touched area in its place.
const imagePlaceholder = 'TARNI_OBJECT_IMAGE';

function labelOf(element) {
  if (isForeignFrame(element)) return 'A page of another origin: what happens in it is not seen';
  try {
    return computeAccessibleName(element);
  } catch (error) {
    return element.getAttribute('aria-label') || element.getAttribute('title') || '';
  }
}

// Among the elements of its tag that a search for the tag finds.
function indexOf(element) {
  const scopes = scopesFrom(document);
  let index = 0;
  for (let i = 0; i < scopes.length; i += 1) {
    const sameTag = scopes[i].querySelectorAll(element.localName);
    for (let j = 0; j < sameTag.length; j += 1) {
      if (sameTag[j] === element) return String(index);
      if (isRendered(sameTag[j])) index += 1;
    }
  }
  return '';
}

function rounded(number) {
  return String(Math.round(number));
}

function addPlace(object, element) {
  const { left, top, width, height } = rectangleOf(element);
  object.X = rounded(left);
  object.Y = rounded(top);
  object.height = rounded(height);
  object.width = rounded(width);
  return object;
}

function parentOf(element, classKey) {
  const parent = parentAcross(element);
  if (!parent) return {};
  const tag = tagOf(parent);
  const id = parent.getAttribute('id') || '';
  return addPlace({ title: tag, [classKey]: tag, id, label: labelOf(parent) }, parent);
}

// --- recorded steps

function isImage(element) {
  return element.localName === 'img' || Boolean(element.ownerSVGElement) || tagOf(element) === 'SVG';
}

function isButton(element) {
  if (element.localName === 'button' || element.getAttribute('role') === 'button') return true;
  return element.localName === 'input' && /^(button|submit|reset|image)$/.test(element.type);
}

export function actionOfClick(element) {
  if (element.localName === 'input' && element.type === 'checkbox') {
    return element.checked ? 'Mobile_SelectSwitch' : 'Mobile_DeSelectSwitch';
  }
  if (isButton(element)) return 'ClickButton';
  return isImage(element) ? 'ClickImage' : 'Click';
}

// What a person means who clicks there: the control round an icon or a text.
export function meantBy(element) {
  const control = 'a[href], button, input, select, textarea, summary, option, [onclick], [role]';
  return closestAcross(element, control) || element;
}

export function stepFor(action, element, data) {
  const text = textOf(element);
  const object = {
    ObjectImage: imagePlaceholder,
    className: tagOf(element),
    id: element.getAttribute('id') || '',
    label: labelOf(element),
    sahiText: text,
    name: text,
    mode: 'web',
    index: indexOf(element),
  };
  if (text) object.logicalname = text;
  object['xpath:position'] = window.TARNI.xpath.of(element);
  addPlace(object, element);
  object.parent = parentOf(element, 'classname');
  return { action, popupName: '', arguments: [object, { type: 'string', data }] };
}

// --- spied elements

function spied(element) {
  const tag = tagOf(element);
  const id = element.getAttribute('id') || '';
  const text = textOf(element);
  const object = {
    tagName: tag,
    class: tag,
    id,
    label: labelOf(element),
    sahiText: text,
    name: text,
    mode: 'web',
    logicalname: text || id || tag,
    'xpath:position': window.TARNI.xpath.of(element),
  };
  addPlace(object, element);
  object.parent = parentOf(element, 'class');
  return object;
}

// The element, then its ancestors outwards without the topmost one.
export function spiedHierarchy(element) {
  const hierarchy = [];
  for (let at = element; at && parentAcross(at); at = parentAcross(at)) {
    hierarchy[hierarchy.length] = spied(at);
  }
  return hierarchy;
}
