// Comes first: says how far the page is, and makes the one object that the other scripts share.
import { define } from './lib/globals.js';

if (!window.TARNI) {
  Object.defineProperty(window, 'TARNI', { value: {}, enumerable: false, configurable: true });
}

define({
  // "DONE" once every script has come in whole: one that is missing is fetched again.
  IsInjectionDone() {
    const parts = window.TARNI;
    const isWhole = parts.range && parts.keys && parts.xpath && parts.recorder && parts.player;
    return isWhole ? 'DONE' : '';
  },
  IsJqueryLoaded() {
    return typeof window.jQuery === 'function' ? 'True' : 'False';
  },
});
