// The steps that a person makes by acting in the picture, which the program's own recorder leaves
// out, with elements as its steps have them.
import { call, type Description, type WindowDescription } from '../net/server';
import type { Locator } from './locators';
import type { Portrait, Step } from './steps';

export async function portraitOf(element: number): Promise<Portrait> {
  const { description } = await call<{ description: Description }>('element.describe', { element });
  const { locators } = await call<{ locators: Locator[] }>('element.locators', { element });
  return { ...description, locators };
}

// What takes the keys now, which the page's own tree may not know yet.
export async function focusedElement(): Promise<Description | null> {
  const { elements } = await call<{ elements: Description[] }>('tree.get');
  const { windows } = await call<{ windows: WindowDescription[] }>('window.list');
  const inKey = new Set(windows.filter((one) => one.key).map((one) => one.element));
  let focused: Description | null = null;
  for (const one of elements) {
    if (!one.parent || !inKey.has(one.parent)) continue;
    inKey.add(one.element);
    if (one.focused) focused = one;
  }
  return focused;
}

export async function pressStep(
  element: Description,
  at: { x: number; y: number },
  button: string,
): Promise<Step> {
  const place = { x: Math.round(at.x - element.rect.x), y: Math.round(at.y - element.rect.y) };
  const portrait = await portraitOf(element.element);
  return { act: 'click', time: Date.now(), element: portrait, button, count: 1, at: place };
}

// The step that the key makes of the last one; null when it is one of its own.
export function grownBy(last: Step | undefined, element: number, chord: string): Step | null {
  const isText = last?.act === 'type' && last.element?.element === element;
  if (!isText || !isCharacter(chord)) return null;
  return last.secret === undefined ? { ...last, text: `${last.text ?? ''}${chord}` } : last;
}

export async function keyStep(element: Description, chord: string): Promise<Step> {
  const portrait = await portraitOf(element.element);
  const step = { time: Date.now(), element: portrait };
  if (!isCharacter(chord)) return { act: 'key', ...step, key: chord, count: 1 };
  if (element.secure) {
    return { act: 'type', ...step, secret: element.identifier ?? element.label ?? 'secret' };
  }
  return { act: 'type', ...step, text: chord };
}

export function isCharacter(chord: string): boolean {
  return [...chord].length === 1;
}
