// An element as steps have it.
import { call, type Description } from '../net/server';
import type { Locator } from './locators';
import type { Portrait } from './steps';

export async function portraitOf(element: number): Promise<Portrait> {
  const { description } = await call<{ description: Description }>('element.describe', { element });
  const { locators } = await call<{ locators: Locator[] }>('element.locators', { element });
  return { ...description, locators };
}
