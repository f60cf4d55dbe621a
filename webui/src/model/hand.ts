// The hand that acts in the program: what a person does in the picture, sent on in its order and as
// a person's doing, so that it is recorded.
import { CallError, call } from '../net/server';

export interface Place {
  window: number;
  x: number;
  y: number;
}

interface Act {
  method: string;
  params: { steps?: (object | string)[]; [name: string]: unknown };
  isMove?: boolean;
}

const buttons = ['left', 'middle', 'right', 'back', 'forward'];
const mostSteps = 200; // of one request

export class Hand {
  private waiting: Act[] = [];
  private isBusy = false;
  private isDown = false;
  private wheel = { right: 0, down: 0 };

  constructor(private readonly onProblem: (sentence: string) => void) {}

  // While a button is down all of the way counts, otherwise the place that was reached last.
  move(to: Place): void {
    const last = this.waiting[this.waiting.length - 1];
    const step = { move: to };
    const steps = last?.isMove ? last.params.steps! : [];
    if (last?.isMove && !this.isDown) steps[0] = step;
    else if (last?.isMove && steps.length < mostSteps) steps.push(step);
    else this.send({ method: 'input.pointer', params: { steps: [step] }, isMove: true });
  }

  press(at: Place, button: number): void {
    this.isDown = true;
    const steps = [{ move: at }, { down: nameOf(button) }];
    this.send({ method: 'input.pointer', params: { steps } });
  }

  // Null for where it was last.
  release(at: Place | null, button: number): void {
    if (!this.isDown) return;
    this.isDown = false;
    const steps = [...(at ? [{ move: at }] : []), { up: nameOf(button) }];
    this.send({ method: 'input.pointer', params: { steps } });
  }

  turn(at: Place, right: number, down: number): void {
    this.wheel.right += right;
    this.wheel.down += down;
    const notches = { right: Math.trunc(this.wheel.right), down: Math.trunc(this.wheel.down) };
    if (notches.right === 0 && notches.down === 0) return;
    this.wheel.right -= notches.right;
    this.wheel.down -= notches.down;
    this.send({ method: 'input.wheel', params: { at, ...notches } });
  }

  key(chord: string): void {
    this.send({ method: 'input.keys', params: { steps: [chord] } });
  }

  // What is composed of several keys, or comes from no key at all.
  text(text: string): void {
    this.send({ method: 'input.text', params: { text } });
  }

  private send(act: Act): void {
    this.waiting.push(act);
    void this.work();
  }

  private async work(): Promise<void> {
    if (this.isBusy) return;
    this.isBusy = true;
    for (let act = this.waiting.shift(); act; act = this.waiting.shift()) {
      try {
        await call(act.method, { ...act.params, person: true, timeout: 5000 });
      } catch (error) {
        this.waiting = [];
        // That the program is gone stands in the page anyway.
        const isNews = error instanceof CallError && error.kind !== 'no program';
        if (isNews) this.onProblem(error.message);
      }
    }
    this.isBusy = false;
  }
}

function nameOf(button: number): string {
  return buttons[button] ?? 'left';
}

const noKeys = ['Shift', 'Control', 'Alt', 'Meta', 'AltGraph', 'Dead', 'Process', 'Unidentified'];

// As input.keys calls it; null for a modifier alone, and for what is composed of several keys.
export function chordOf(event: KeyboardEvent): string | null {
  if (noKeys.includes(event.key)) return null;
  const isCharacter = [...event.key].length === 1;
  const down = [
    event.ctrlKey && 'Control',
    event.altKey && 'Alt',
    event.metaKey && 'Meta',
    event.shiftKey && !isCharacter && 'Shift',
  ].filter(Boolean);
  return [...down, event.key].join('+');
}
