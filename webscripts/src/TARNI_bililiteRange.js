// Ranges of text in whatever can be edited: fields, text areas and content-editable elements.
import { isRichText, valueOf, viewOf } from './lib/dom.js';

// Chosen with a picker or a slider: the value is set whole.
const pickedTypes = /^(date|time|month|week|datetime-local|color|range)$/;

export function isPicked(element) {
  return element.localName === 'input' && pickedTypes.test(element.type);
}

function notify(element, type, properties) {
  const { InputEvent, Event } = viewOf(element);
  const isInput = type === 'beforeinput' || type === 'input';
  const options = { bubbles: true, composed: isInput, ...properties };
  return element.dispatchEvent(isInput ? new InputEvent(type, options) : new Event(type, options));
}

function selectAll(element) {
  if (!isRichText(element)) return element.select();
  const selection = viewOf(element).getSelection();
  const range = element.ownerDocument.createRange();
  range.selectNodeContents(element);
  selection.removeAllRanges();
  selection.addRange(range);
}

// As a person edits: the browser itself changes the text and tells the page with events of its own,
// keeping to "maxlength". Frameworks that do the editing themselves prevent "beforeinput".
function edit(element, command, inputType, data) {
  const isOurs = notify(element, 'beforeinput', { inputType, data, cancelable: true });
  if (!isOurs) return;
  const before = valueOf(element);
  const isDone = element.ownerDocument.execCommand(command, false, data);
  if (isDone || isRichText(element) || valueOf(element) !== before) return;
  assign(element, command === 'delete' ? '' : before + data);
}

// Sets the value past whatever a framework has put over the property, so that it sees a difference.
function assign(element, value) {
  const view = viewOf(element);
  const prototype =
    element.localName === 'textarea' ? view.HTMLTextAreaElement : view.HTMLInputElement;
  Object.getOwnPropertyDescriptor(prototype.prototype, 'value').set.call(element, value);
  notify(element, 'input', { inputType: 'insertReplacementText', data: value });
}

window.TARNI.range = {
  isPicked,
  assign,
  selectAll,
  clear(element) {
    if (valueOf(element) === '') return;
    selectAll(element);
    edit(element, 'delete', 'deleteContentBackward', null);
  },
  insert(element, text) {
    edit(element, 'insertText', 'insertText', text);
  },
  breakLine(element) {
    if (isRichText(element)) {
      edit(element, 'insertParagraph', 'insertParagraph', null);
    } else {
      edit(element, 'insertText', 'insertLineBreak', '\n');
    }
  },
  changed(element) {
    notify(element, 'change', {});
  },
};
