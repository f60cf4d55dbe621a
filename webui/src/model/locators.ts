// The ways to find an element again, and what is to be said of each.

// Parameters of element.find.
export type Find = Record<string, string | boolean>;

export interface Locator {
  find: Find;
  matches: number;
  ms: number;
}

export const languages = ['tarni', 'Python', 'JavaScript', 'Java'] as const;
export type Language = (typeof languages)[number];

// As the tool writes it.
export interface WrittenLocator extends Locator {
  written: string; // as --select takes it
  code: Record<Language, string>;
}

const lasting = ['identifier', 'label', 'placeholder'];

// Why it may not find the element tomorrow; empty for the best ones.
export function weaknessOf({ find, matches }: Locator): string {
  if (matches > 1) return `fits ${matches} elements`;
  if (matches === 0) return 'fits nothing any more';
  if ('xpath' in find) return 'hangs on a position: breaks when anything is put before it';
  if ('identifier' in find) return '';
  if ('focused' in find) return 'fits only while it has the focus';
  if ('windowTitle' in find) return 'needs the window’s title, which may name a document';
  if ('text' in find || 'label' in find) return 'changes with the language';
  if (lasting.some((name) => name in find)) return 'changes with the language';
  if ('group' in find) return 'fits as long as there is one of this class in its group';
  return 'fits as long as there is one of this class';
}
