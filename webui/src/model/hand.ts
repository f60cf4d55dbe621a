// The hand that acts in the program: what a person does in the picture, sent on in its order. Moves
// that nobody has seen yet give way to the next one.
import { CallError, call } from '../net/server';

export interface Place {
  window: number;
  x: number;
  y: number;
}

interface Act {
  method: string;
  params: object;
  isMove: boolean;
  told?: { at?: Place; button?: string; chord?: string };
}

const buttons = ['left', 'middle', 'right', 'back', 'forward'];
const farEnough = 4; // points from which a press that moves is a drag
const longestWay = 200;

// What is to be done before an act goes into the program: its step is made of what stands there
// until then.
export type Before = (act: { at?: Place; button?: string; chord?: string }) => Promise<void>;

export class Hand {
  private waiting: Act[] = [];
  private isBusy = false;
  private way: Place[] = [];
  private wheel = { right: 0, down: 0 };

  constructor(
    private readonly before: Before,
    private readonly onProblem: (sentence: string) => void,
  ) {}

  move(to: Place): void {
    if (this.way.length > 0) {
      if (this.way.length < longestWay) this.way.push(to);
      return;
    }
    this.send('input.pointer', { steps: [{ move: to }] }, true);
  }

  press(at: Place): void {
    this.way = [at];
  }

  // A click, or a drag when it went some way.
  release(at: Place, button: number): void {
    const from = this.way[0] ?? at;
    const isDrag = this.way.some((to) => Math.hypot(to.x - from.x, to.y - from.y) >= farEnough);
    const name = buttons[button] ?? 'left';
    const steps: object[] = [{ move: from }, { down: name }];
    if (isDrag) {
      for (const to of [...this.way.slice(1), at]) steps.push({ move: to }, { pause: 8 });
    }
    steps.push({ up: name });
    this.way = [];
    this.send('input.pointer', { steps }, false, isDrag ? undefined : { at: from, button: name });
  }

  turn(at: Place, right: number, down: number): void {
    this.wheel.right += right;
    this.wheel.down += down;
    const notches = { right: Math.trunc(this.wheel.right), down: Math.trunc(this.wheel.down) };
    if (notches.right === 0 && notches.down === 0) return;
    this.wheel.right -= notches.right;
    this.wheel.down -= notches.down;
    this.send('input.wheel', { at, ...notches });
  }

  key(chord: string): void {
    this.send('input.keys', { steps: [chord] }, false, { chord });
  }

  private send(method: string, params: object, isMove = false, told?: Act['told']): void {
    const last = this.waiting[this.waiting.length - 1];
    if (isMove && last?.isMove) this.waiting.pop();
    this.waiting.push({ method, params, isMove, told });
    void this.work();
  }

  private async work(): Promise<void> {
    if (this.isBusy) return;
    this.isBusy = true;
    for (let act = this.waiting.shift(); act; act = this.waiting.shift()) {
      try {
        if (act.told) await this.before(act.told);
        await call(act.method, { ...act.params, timeout: 5000 });
      } catch (error) {
        this.waiting = [];
        if (error instanceof CallError) this.onProblem(error.message);
      }
    }
    this.isBusy = false;
  }
}

// As input.keys calls it; null for a modifier alone.
export function chordOf(event: KeyboardEvent): string | null {
  if (['Shift', 'Control', 'Alt', 'Meta', 'AltGraph', 'Dead'].includes(event.key)) return null;
  const isCharacter = [...event.key].length === 1;
  const down = [
    event.ctrlKey && 'Control',
    event.altKey && 'Alt',
    event.metaKey && 'Meta',
    event.shiftKey && !isCharacter && 'Shift',
  ].filter(Boolean);
  return [...down, event.key].join('+');
}
