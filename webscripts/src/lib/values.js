// Values as WebDriver passes them: JSON in which elements and shadow trees are references.
import { elementOf, numberOf, page } from './numbers.js';

const elementKey = 'element-6066-11e4-a52e-4f735466cecf';
const shadowKey = 'shadow-6066-11e4-a52e-4f735466cecf';
const deepest = 60;

// An error of the standard.
export class Failure extends Error {
  constructor(error, message) {
    super(message);
    this.error = error;
  }
}

export function referenceTo(node) {
  const key = node.nodeType === 11 ? shadowKey : elementKey;
  return { [key]: `page-${page}-${numberOf(node)}` };
}

export function referred(id) {
  const parts = String(id).split('-');
  if (parts[0] !== 'page' || parts.length !== 3) throw new Failure('no such element', `${id} is no element of a page`);
  const node = parts[1] === page ? elementOf(Number(parts[2])) : null;
  if (!node) throw new Failure('stale element reference', 'the element is no longer in the page');
  return node;
}

function isNode(value) {
  return Boolean(value) && typeof value === 'object' && (value.nodeType === 1 || (value.nodeType === 11 && value.host));
}

export function fromJson(value) {
  if (!value || typeof value !== 'object') return value;
  const id = value[elementKey] || value[shadowKey];
  if (id) return referred(id);
  const copy = Array.isArray(value) ? [] : {};
  for (const name of Object.keys(value)) copy[name] = fromJson(value[name]);
  return copy;
}

function isList(value) {
  return Array.isArray(value) || /\[object (NodeList|HTMLCollection|FileList|Arguments|HTMLOptionsCollection)\]/.test(String(value));
}

export function toJson(value, depth = 0) {
  if (depth > deepest) throw new Failure('javascript error', 'the value is nested too deep, or in itself');
  if (value === undefined || value === null || typeof value === 'function' || typeof value === 'symbol') return null;
  if (typeof value !== 'object') return typeof value === 'bigint' ? String(value) : value;
  if (isNode(value)) return referenceTo(value);
  if (isList(value)) {
    const list = [];
    for (let i = 0; i < value.length; i += 1) list[i] = toJson(value[i], depth + 1);
    return list;
  }
  if (typeof value.toJSON === 'function') return toJson(value.toJSON(), depth + 1);
  const copy = {};
  for (const name of Object.keys(value)) copy[name] = toJson(value[name], depth + 1);
  return copy;
}
