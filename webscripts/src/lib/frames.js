// Calls `attach` once with every document of the page, those of its same-origin frames included, as
// they come: at once, when a frame has loaded, and whenever `look` is called.
import { isForeignFrame, scopesFrom } from './dom.js';

export function eachDocument(attach) {
  const known = new WeakSet();
  const told = new WeakSet();

  function tell(frame) {
    if (told.has(frame)) return;
    told.add(frame);
    console.warn(
      `tarni: the frame ${frame.src || frame.name} shows a page of another origin: nothing in it ` +
        'is recorded or found',
    );
  }

  function visit(view) {
    if (!known.has(view.document)) {
      known.add(view.document);
      attach(view);
      view.addEventListener('load', look, true);
    }
    for (let i = 0; i < view.length; i += 1) {
      const inner = view[i];
      let isReachable = false;
      try {
        isReachable = Boolean(inner.document);
      } catch (error) {
        // Of another origin.
      }
      if (isReachable) visit(inner);
    }
  }

  function look() {
    visit(window);
    tellOfForeignFrames();
  }

  let framesSeen = 0;
  function tellOfForeignFrames() {
    if (window.length === framesSeen) return;
    framesSeen = window.length;
    const scopes = scopesFrom(document);
    for (let i = 0; i < scopes.length; i += 1) {
      const frames = scopes[i].querySelectorAll('iframe, frame');
      for (let j = 0; j < frames.length; j += 1) if (isForeignFrame(frames[j])) tell(frames[j]);
    }
  }

  look();
  return look;
}
