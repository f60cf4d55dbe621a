// A green frame over an element, as the agent draws one round native views. It takes no events and
// lies in the top document, also for an element of a frame.
import { rectangleOf } from './dom.js';

function makeFrame(rectangle, width) {
  const frame = document.createElement('div');
  frame.setAttribute('data-tarni', 'highlight');
  frame.setAttribute('aria-hidden', 'true');
  const style = frame.style;
  const set = (name, value) => style.setProperty(name, value, 'important');
  set('all', 'initial');
  set('position', 'fixed');
  set('box-sizing', 'border-box');
  set('left', `${rectangle.left}px`);
  set('top', `${rectangle.top}px`);
  set('width', `${rectangle.width}px`);
  set('height', `${rectangle.height}px`);
  set('border', `${width}px solid rgb(0, 255, 0)`);
  set('pointer-events', 'none');
  set('z-index', '2147483647');
  document.documentElement.appendChild(frame);
  return frame;
}

// Answers what takes the frame away again.
export function showFrame(element, width) {
  const frame = makeFrame(rectangleOf(element), width);
  return () => frame.remove();
}

export function highlight(element) {
  setTimeout(showFrame(element, 4), 1000);
}
