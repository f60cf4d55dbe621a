// The numbers that elements keep as long as the page is shown, so that they can be told of outside.

// Which of the pages that a web view shows one after the other.
export const page = Math.random().toString(36).slice(2);
const numbers = new WeakMap();
const elements = new Map();
let last = 0;

export function numberOf(element) {
  if (!numbers.has(element)) {
    last += 1;
    numbers.set(element, last);
    elements.set(last, new WeakRef(element));
  }
  return numbers.get(element);
}

// Null for one that has left the page.
export function elementOf(number) {
  const kept = elements.get(number);
  const element = kept && kept.deref();
  return element && element.isConnected ? element : null;
}
