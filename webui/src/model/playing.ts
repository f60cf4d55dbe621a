// Plays steps one after the other, until one fails or somebody has seen enough.
import { play, type Played } from '../net/server';
import type { Step } from './steps';

export interface Progress {
  playing: Step | null; // that is played now
  results: ReadonlyMap<Step, Played>;
}

export const nothingPlayed: Progress = { playing: null, results: new Map() };

export class Playing {
  private isToStop = false;

  constructor(
    private readonly secrets: Record<string, string>,
    private readonly tell: (progress: Progress) => void,
  ) {}

  stop(): void {
    this.isToStop = true;
  }

  async run(steps: readonly Step[], before: Progress): Promise<void> {
    const results = new Map(before.results);
    for (const step of steps) results.delete(step);
    for (const step of steps) {
      if (this.isToStop) break;
      this.tell({ playing: step, results: new Map(results) });
      const played = await this.playOne(step);
      results.set(step, played);
      if (played.hasFailed) break;
    }
    this.tell({ playing: null, results });
  }

  private async playOne(step: Step): Promise<Played> {
    try {
      return await play(step, this.secrets);
    } catch (error) {
      return { hasFailed: true, message: (error as Error).message };
    }
  }
}

// What is to be said of it besides that it passed.
export function inWords(played: Played): string {
  if (played.message || !played.locator) return played.message;
  return `Found by its locator ${played.locator + 1}, as those before fit it no more`;
}
