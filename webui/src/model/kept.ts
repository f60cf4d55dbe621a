// The steps, kept while the page is loaded again: until its tab is closed, and for this address.
import type { Step } from './steps';

const key = () => `steps ${location.pathname}`;
let kept: readonly Step[] | null = null;

export function readSteps(): Step[] {
  try {
    const steps = JSON.parse(sessionStorage.getItem(key()) ?? '[]');
    return Array.isArray(steps) ? steps : [];
  } catch {
    return [];
  }
}

export function writeSteps(steps: readonly Step[]): void {
  if (steps === kept) return;
  kept = steps;
  try {
    sessionStorage.setItem(key(), JSON.stringify(steps));
  } catch {
    // There is no room for that many: they last as long as the page.
  }
}
