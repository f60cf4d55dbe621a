// Where a real press meets an element.
import { rectangleOf } from './dom.js';

// Brought into sight, at its middle or at a place that counts from its upper left corner. `x` and `y`
// are of the page's own viewport; `taker` is null where nothing of it is in sight, otherwise what
// takes the press, and `isOwn` whether that is the element or a part of it.
export function pressAt(element, place) {
  element.scrollIntoView({ block: 'nearest', inline: 'nearest', behavior: 'instant' });
  const box = element.getBoundingClientRect();
  // The middle of a link over two lines may lie beside it.
  const line = element.getClientRects()[0] || box;
  const x = place ? box.left + place.x : line.left + line.width / 2;
  const y = place ? box.top + place.y : line.top + line.height / 2;
  const taker = line.width && line.height ? element.getRootNode().elementFromPoint(x, y) : null;
  const isOwn = Boolean(taker) && (element.contains(taker) || taker.contains(element));
  const outer = rectangleOf(element);
  return { x: outer.left + x - box.left, y: outer.top + y - box.top, taker, isOwn };
}

// A taker in words.
export function startOf(element) {
  return element.outerHTML.slice(0, 200);
}
