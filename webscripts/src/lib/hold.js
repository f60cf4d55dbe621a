// A click on a link to another origin takes the page away, and its steps could not be left to the
// next one. Such a click waits until they have been fetched.
import { closestAcross } from './dom.js';

// Nobody fetches: the person is not kept waiting for it.
const longestHold = 2000;

let held = null;
let released = null;

function leavesOrigin(link) {
  if (link.protocol === 'file:' && location.protocol === 'file:') return false;
  if (!/^(https?|file|ftp|data|about|blob):$/.test(link.protocol)) return false;
  return link.origin !== location.origin || link.origin === 'null';
}

function isPlain(event) {
  return event.button === 0 && !(event.ctrlKey || event.shiftKey || event.altKey || event.metaKey);
}

function staysInView(link) {
  return !link.hasAttribute('download') && /^(|_self|_top|_parent)$/.test(link.target);
}

// Called while the page has not yet seen the click; what the page makes of it goes first.
export function holdLink(event, element) {
  const link = closestAcross(element, 'a[href]');
  if (!link || link === released || !isPlain(event)) return;
  if (!staysInView(link) || !leavesOrigin(link)) return;
  const view = link.ownerDocument.defaultView;
  const hold = (late) => {
    view.removeEventListener('click', hold);
    if (late !== event || late.defaultPrevented) return;
    late.preventDefault();
    held = link;
    setTimeout(release, longestHold);
  };
  view.addEventListener('click', hold);
}

// Lets the click that waits, if there is one, go its way.
export function release() {
  const link = held;
  held = null;
  if (!link) return;
  released = link;
  link.click();
  released = null;
}
