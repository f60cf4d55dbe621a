// Three columns that a person can resize; on a narrow window one at a time.
import type { ComponentChildren } from 'preact';
import { useRef, useState } from 'preact/hooks';
import { useNarrow } from './narrow';
import { StepsName } from './Sides';
import { useStore } from './store';
import { Tabs } from './Tabs';

const least = 0.15; // of the width
const step = 0.02;

function savedWidths(): [number, number] {
  const saved = JSON.parse(localStorage.getItem('columns') ?? '[0.42, 0.28]');
  return [Number(saved[0]) || 0.42, Number(saved[1]) || 0.28];
}

const tabs = [
  { panel: 'picture', name: 'Picture' },
  { panel: 'tree', name: 'Tree' },
  { panel: 'details', name: 'Properties' },
  { panel: 'steps', name: <StepsName /> },
];

interface Props {
  picture: ComponentChildren;
  tree: ComponentChildren;
  right: ComponentChildren;
}

export function Columns({ picture, tree, right }: Props) {
  const { panel } = useStore();
  const isNarrow = useNarrow();
  const ref = useRef<HTMLElement>(null);
  const [widths, setWidths] = useState(savedWidths);
  const resize = (which: 0 | 1, to: number) => {
    const next: [number, number] = [...widths];
    const other = widths[1 - which]!;
    next[which] = Math.max(least, Math.min(1 - least - other, to));
    setWidths(next);
    localStorage.setItem('columns', JSON.stringify(next));
  };
  const [first, second] = widths;
  const grid = `${first}fr 5px ${second}fr 5px ${1 - first - second}fr`;
  return (
    <>
      {isNarrow && <Tabs shape="tabs" label="Panels" tabs={tabs} />}
      <main class="columns" ref={ref} data-panel={panel} style={{ gridTemplateColumns: grid }}>
        <div class="column column-picture">{picture}</div>
        <Splitter
          name="Width of the picture"
          value={first}
          onMove={(x) => resize(0, x / ref.current!.clientWidth)}
          onStep={(by) => resize(0, first + by * step)}
        />
        <div class="column column-tree">{tree}</div>
        <Splitter
          name="Width of the tree"
          value={second}
          onMove={(x) => resize(1, x / ref.current!.clientWidth - first)}
          onStep={(by) => resize(1, second + by * step)}
        />
        <div class="column column-details">{right}</div>
      </main>
    </>
  );
}

interface SplitterProps {
  name: string;
  value: number;
  onMove: (x: number) => void;
  onStep: (by: number) => void;
}

function Splitter({ name, value, onMove, onStep }: SplitterProps) {
  return (
    <div
      class="splitter"
      role="separator"
      tabIndex={0}
      aria-label={name}
      aria-orientation="vertical"
      aria-valuenow={Math.round(value * 100)}
      aria-valuemin={least * 100}
      aria-valuemax={100 - 2 * least * 100}
      onPointerDown={(event) => event.currentTarget.setPointerCapture(event.pointerId)}
      onPointerMove={(event) => {
        if (event.currentTarget.hasPointerCapture(event.pointerId)) onMove(event.clientX);
      }}
      onKeyDown={(event) => {
        if (event.key === 'ArrowLeft') onStep(-1);
        if (event.key === 'ArrowRight') onStep(1);
      }}
    />
  );
}
