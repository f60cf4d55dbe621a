// What the program costs, as a small curve: the load of the processor, and where the main thread
// was busy without a break for longer than a person waits.
import type { CostsEvent } from '../net/server';
import { useStore } from './store';

const width = 120;
const height = 22;
const span = 60; // seconds
const longStretch = 100; // milliseconds

interface Point {
  at: number;
  load: number; // of one core
  stall: number; // milliseconds; 0 for none
}

function pointsOf(costs: CostsEvent[]): Point[] {
  const points: Point[] = [];
  for (let i = 1; i < costs.length; ++i) {
    const [before, now] = [costs[i - 1]!, costs[i]!];
    const passed = (now.at - before.at) * 1000;
    const longest = now.longestMs ?? 0;
    const isLonger = longest > (before.longestMs ?? 0);
    points.push({
      at: now.at,
      load: Math.max(0, now.cpuMs - before.cpuMs) / passed,
      stall: isLonger && longest >= longStretch ? longest : 0,
    });
  }
  return points;
}

export function Costs() {
  const { costs, isRunning } = useStore();
  const last = costs[costs.length - 1];
  if (!last || !isRunning) return null;
  const points = pointsOf(costs).filter((one) => one.at > last.at - span);
  const load = points[points.length - 1]?.load ?? 0;
  const x = (at: number) => width - ((last.at - at) / span) * width;
  const y = (part: number) => height - 1 - Math.min(1, part) * (height - 2);
  const line = points.map((one) => `${x(one.at).toFixed(1)},${y(one.load).toFixed(1)}`).join(' ');
  const memory = last.memoryBytes ? `${Math.round(last.memoryBytes / 1048576)} MB` : '';
  const longest = last.longestMs
    ? `Longest stretch without a break: ${Math.round(last.longestMs)} ms, began with ${
        last.beganWith || 'what it does not tell'
      }`
    : '';
  const words = `Processor ${Math.round(load * 100)} %, memory ${memory}. ${longest}`;
  return (
    <div class="costs" title={words}>
      <svg width={width} height={height} role="img" aria-label={words}>
        <polyline points={line} fill="none" class="curve" />
        {points
          .filter((one) => one.stall)
          .map((one) => (
            <circle key={one.at} cx={x(one.at)} cy={4} r={3} class="stall">
              <title>{Math.round(one.stall)} ms without a break</title>
            </circle>
          ))}
      </svg>
      <span class="costs-number">{Math.round(load * 100)} %</span>
      <span class="costs-number">{memory}</span>
      {last.longestMs !== null && last.longestMs >= longStretch && (
        <span class="costs-stall">{Math.round(last.longestMs)} ms stall</span>
      )}
    </div>
  );
}
