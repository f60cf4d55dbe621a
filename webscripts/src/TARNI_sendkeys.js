// Typing: the text of an editable element is replaced key by key, as by a person at the keyboard.
import { editableAt, isRichText, valueOf, viewOf } from './lib/dom.js';

// Longer texts come in as one piece, like pasted ones.
const mostKeys = 200;

function press(element, type, key) {
  const { KeyboardEvent } = viewOf(element);
  const isEnter = key === 'Enter';
  const code = isEnter ? 13 : key.toUpperCase().charCodeAt(0);
  const options = { key, code: isEnter ? 'Enter' : '', keyCode: code, which: code };
  const flags = { bubbles: true, cancelable: true, composed: true };
  const charCode = type === 'keypress' ? { charCode: isEnter ? 13 : key.codePointAt(0) } : {};
  return element.dispatchEvent(new KeyboardEvent(type, { ...options, ...flags, ...charCode }));
}

function typeKey(element, key, insert) {
  if (press(element, 'keydown', key) && press(element, 'keypress', key)) insert();
  press(element, 'keyup', key);
}

// What Enter does in a field: it commits the value and submits the form.
function submitFrom(element) {
  const form = element.form;
  if (!form) return;
  const button = form.querySelector(
    'button:not([type]), button[type=submit], input[type=submit], input[type=image]',
  );
  if (button) {
    button.click();
  } else if (form.requestSubmit) {
    form.requestSubmit();
  }
}

function typeEnter(element) {
  const { range } = window.TARNI;
  typeKey(element, 'Enter', () => {
    if (element.localName !== 'input') return range.breakLine(element);
    range.changed(element);
    submitFrom(element);
  });
}

function typeText(element, text) {
  const { range } = window.TARNI;
  if (range.isPicked(element)) return range.assign(element, text);
  range.clear(element);
  if (text.length > mostKeys && text.indexOf('\n') < 0) return range.insert(element, text);
  for (const key of text) {
    if (key === '\n') {
      typeEnter(element);
    } else {
      typeKey(element, key, () => range.insert(element, key));
    }
  }
}

function chooseOption(list, text) {
  for (let i = 0; i < list.options.length; i += 1) {
    const option = list.options[i];
    if (option.text === text || option.value === text) return option;
  }
  return null;
}

window.TARNI.keys = {
  chooseOption,
  // Replaces what the element holds. Nothing happens to what cannot be edited.
  type(target, text) {
    const element = editableAt(target);
    if (!element || element.disabled || element.readOnly) return;
    element.focus();
    const before = valueOf(element);
    typeText(element, text);
    if (!isRichText(element) && valueOf(element) !== before) window.TARNI.range.changed(element);
  },
};
