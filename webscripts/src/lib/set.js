// Stands for `Set` in the scripts and in the libraries that they hold: filled by index, since a page
// may have replaced the iterator of arrays.
const FilledByIndex = /* @__PURE__ */ (() =>
  class extends window.Set {
    constructor(items) {
      super();
      for (let i = 0; items && i < items.length; i += 1) this.add(items[i]);
    }
  })();

export { FilledByIndex as Set };
