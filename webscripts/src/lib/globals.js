// Makes functions callable by name from outside, unseen by a page that lists its globals.
export function define(functions) {
  for (const name in functions) {
    const value = functions[name];
    Object.defineProperty(window, name, { value, configurable: true, writable: true });
  }
}
