// The ways to find an element again: what is to be said of each, and each as somebody writes it.
import { tagOf } from './search';

// Parameters of element.find.
export type Find = Record<string, string | boolean>;

export interface Locator {
  find: Find;
  matches: number;
  ms: number;
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

// "kind=UITableView && text=Row 3", as --select takes it.
export function written(find: Find): string {
  return Object.entries(find)
    .map(([name, value]) => `${name}=${value}`)
    .join(' && ');
}

const languages = ['tarni', 'Python', 'JavaScript', 'Java'] as const;
export type Language = (typeof languages)[number];
export { languages };

export function asCode(find: Find, language: Language, program: string): string {
  if (language === 'tarni') {
    return `tarni --in ${forShell(program)} click --select ${forShell(written(find))}`;
  }
  const [way, value] = wayOf(find);
  switch (language) {
    case 'Python':
      return `driver.find_element(By.${way.toUpperCase()}, ${quoted(value)})`;
    case 'Java':
      return `driver.findElement(By.${way}(${quoted(value)}));`;
    case 'JavaScript':
      return `await driver.$(${quoted(way === 'id' ? `~${value}` : value)});`;
  }
}

// As clients of Selenium, Appium and WebdriverIO all ask.
function wayOf({ windowTitle, group, xpath, class: name, ...rest }: Find): ['id' | 'xpath', string] {
  if (typeof rest.identifier === 'string' && !windowTitle && !group) return ['id', rest.identifier];
  const window = windowTitle ? `//*[@title=${forXPath(String(windowTitle))}]` : '';
  if (xpath) return ['xpath', (window || '/*/*') + positionAsXPath(String(xpath))];
  const tests = Object.entries(rest).map(([member, is]) => `@${member}=${forXPath(String(is))}`);
  const outer = group ? forXPath(String(group)) : '';
  if (outer) tests.push(`ancestor::*[@id=${outer} or @label=${outer}]`);
  const tag = typeof name === 'string' ? tagOf(name) : '*';
  return ['xpath', `${window}//${tag}${tests.length ? `[${tests.join(' and ')}]` : ''}`];
}

// From its window down. Its places count from 0 among those of the same class; XPath's from 1.
function positionAsXPath(position: string): string {
  return position
    .split('\\')
    .filter(Boolean)
    .map((step) => {
      const [, name, index] = /^(.*)\[(\d+)\]$/.exec(step) ?? [];
      return name ? `/${tagOf(name)}[${Number(index) + 1}]` : `/${tagOf(step)}`;
    })
    .join('');
}

function quoted(text: string): string {
  return JSON.stringify(text);
}

function forShell(text: string): string {
  return /^[\w./-]+$/.test(text) ? text : `'${text.replaceAll("'", "'\\''")}'`;
}

// XPath 1.0 knows no escapes.
function forXPath(text: string): string {
  if (!text.includes("'")) return `'${text}'`;
  if (!text.includes('"')) return `"${text}"`;
  return `concat(${text
    .split("'")
    .map((part) => `'${part}'`)
    .join(', "\'", ')})`;
}
