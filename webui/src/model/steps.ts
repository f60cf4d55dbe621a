// The steps of a session, as docs/sessions.md has them, while they are recorded and edited.
import type { Description } from '../net/server';
import type { Locator } from './locators';

export interface Portrait extends Partial<Description> {
  locators?: Locator[];
}

export interface Step {
  act: string;
  order?: number;
  time?: number;
  element?: Portrait;
  text?: string;
  secret?: string;
  key?: string;
  [member: string]: unknown;
}

const mostUndone = 200;
const texts = ['text', 'value', 'textIs', 'textContains', 'key'] as const;

export class Steps {
  private constructor(
    readonly list: readonly Step[],
    private readonly before: readonly (readonly Step[])[],
    private readonly behind: readonly (readonly Step[])[],
  ) {}

  static of(list: readonly Step[]): Steps {
    return new Steps(list, [], []);
  }

  // As the recorder tells it: one that has grown takes the place of the one before, without a
  // state of its own to go back to.
  told(step: Step): Steps {
    const at = step.order ? this.list.findIndex((one) => one.order === step.order) : -1;
    if (at < 0) return this.changed([...this.list, step]);
    // What was told behind it has become a part of it.
    const isOther = (one: Step) => !one.order || one.order < step.order!;
    const list = [...this.list.slice(0, at), step, ...this.list.slice(at + 1).filter(isOther)];
    return new Steps(list, this.before, this.behind);
  }

  insert(at: number, step: Step): Steps {
    return this.changed([...this.list.slice(0, at), step, ...this.list.slice(at)]);
  }

  remove(at: number): Steps {
    return this.changed(this.list.filter((_, i) => i !== at));
  }

  // By one place up or down; where there is none it stays.
  move(at: number, by: 1 | -1): Steps {
    const to = at + by;
    if (to < 0 || to >= this.list.length) return this;
    const list = [...this.list];
    [list[at], list[to]] = [list[to]!, list[at]!];
    return this.changed(list);
  }

  // The text that is typed, chosen or checked for.
  setText(at: number, text: string): Steps {
    const step = this.list[at]!;
    const name = memberOfText(step);
    if (!name) return this;
    // What the field held then, where the choice stood, is of the text before.
    const { [step.act === 'type' ? 'value' : 'choice']: _before, ...rest } = step;
    return this.replace(at, { ...rest, [name]: text } as Step);
  }

  // What is typed is not kept: its name stands in its place, or an empty text in that of the name.
  setSecret(at: number, isSecret: boolean): Steps {
    const { text, secret: _secret, value: _value, ...rest } = this.list[at]!;
    const name = rest.element?.identifier || rest.element?.label || 'secret';
    const step = isSecret ? { ...rest, secret: name } : { ...rest, text: '' };
    const list = this.with(at, step);
    return this.changed(isSecret && text ? list.map((one) => withoutText(one, text)) : list);
  }

  replace(at: number, step: Step): Steps {
    return this.changed(this.with(at, step));
  }

  // The element that it is about is another one.
  setElement(at: number, element: Portrait): Steps {
    return this.replace(at, { ...this.list[at]!, element });
  }

  // The steps of another recording come, which are numbered anew.
  settled(): Steps {
    const list = this.list.map(({ order: _order, ...step }) => step as Step);
    return new Steps(list, this.before, this.behind);
  }

  opened(list: Step[]): Steps {
    return this.changed(list);
  }

  undone(): Steps {
    const last = this.before[this.before.length - 1];
    return last ? new Steps(last, this.before.slice(0, -1), [...this.behind, this.list]) : this;
  }

  redone(): Steps {
    const next = this.behind[this.behind.length - 1];
    return next ? new Steps(next, [...this.before, this.list], this.behind.slice(0, -1)) : this;
  }

  get canUndo(): boolean {
    return this.before.length > 0;
  }

  get canRedo(): boolean {
    return this.behind.length > 0;
  }

  private with(at: number, step: Step): Step[] {
    return this.list.map((one, i) => (i === at ? step : one));
  }

  private changed(list: readonly Step[]): Steps {
    return new Steps(list, [...this.before, this.list].slice(-mostUndone), []);
  }
}

// A field that has become secret may have shown its text to later steps.
function withoutText(step: Step, text: string): Step {
  if (!step.element) return step;
  const { text: shown, value, locators, ...rest } = step.element;
  const element: Portrait = { ...rest };
  if (shown !== undefined && shown !== text) element.text = shown;
  if (value !== undefined && value !== text) element.value = value;
  if (locators) element.locators = locators.filter((one) => one.find.text !== text);
  return { ...step, element };
}

export function memberOfText(step: Step): (typeof texts)[number] | null {
  if (step.secret !== undefined) return null;
  return texts.find((name) => typeof step[name] === 'string') ?? null;
}

export function textOf(step: Step): string | null {
  const name = memberOfText(step);
  return name ? String(step[name]) : null;
}

const words: Record<string, string> = {
  longPress: 'long press',
  type: 'type',
  hover: 'point at',
  wheel: 'turn the wheel over',
  check: 'check',
};

export function actInWords(step: Step): string {
  if (step.act === 'click' && step.count === 2) return 'double click';
  if (step.act === 'click' && step.button === 'right') return 'right click';
  if (step.act === 'switch') return step.checked ? 'switch on' : 'switch off';
  if (step.act === 'expand') return step.expanded ? 'unfold' : 'fold';
  return words[step.act] ?? step.act;
}

export function elementInWords(step: Step): string {
  const path = step.path as Portrait[] | undefined;
  if (path) return path.map((one) => one?.text || one?.class).join(' › ');
  const { element } = step;
  const name = element?.text || element?.label || element?.placeholder || element?.identifier || '';
  return element ? `${element.class ?? ''} ${name}`.trim() : '';
}

// What a session was recorded with.
export interface RecordedWith {
  program: string[];
  toolkit: string;
  agent: string;
}

// One step a line.
export function asFile(steps: readonly Step[], recordedWith: RecordedWith): string {
  const times = steps.map((step) => step.time || Infinity);
  const began = Math.min(Date.now(), ...times);
  const recorded = new Date(began).toISOString().replace(/\.\d+/, '');
  const header = { tarniSession: 2, ...recordedWith, recorded };
  const first = JSON.stringify(header).slice(0, -1);
  const lines = steps.map((step, at) => JSON.stringify({ ...step, order: at + 1 }));
  return `${first},"steps":[\n${lines.join(',\n')}\n]}\n`;
}
