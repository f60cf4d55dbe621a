// Three columns that a person can resize; on a narrow window one at a time.
import type { ComponentChildren } from 'preact';
import { useRef, useState } from 'preact/hooks';
import { store, useStore } from './store';

const least = 0.15; // of the width
const step = 0.02;

function savedWidths(): [number, number] {
  const saved = JSON.parse(localStorage.getItem('columns') ?? '[0.45, 0.29]');
  return [Number(saved[0]) || 0.45, Number(saved[1]) || 0.29];
}

interface Column {
  id: string;
  name: string;
  content: ComponentChildren;
}

export function Columns({ columns }: { columns: [Column, Column, Column] }) {
  const { panel } = useStore();
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
      <div class="tabs" role="tablist" aria-label="Panels">
        {columns.map(({ id, name }) => (
          <button
            key={id}
            role="tab"
            aria-selected={panel === id || (id === 'details' && panel === 'steps')}
            onClick={() => store.set({ panel: id })}
          >
            {name}
          </button>
        ))}
      </div>
      <main class="columns" ref={ref} data-panel={panel} style={{ gridTemplateColumns: grid }}>
        <div class="column column-picture">{columns[0].content}</div>
        <Splitter
          name="Width of the picture"
          value={first}
          onMove={(x) => resize(0, x / ref.current!.clientWidth)}
          onStep={(by) => resize(0, first + by * step)}
        />
        <div class="column column-tree">{columns[1].content}</div>
        <Splitter
          name="Width of the tree"
          value={second}
          onMove={(x) => resize(1, x / ref.current!.clientWidth - first)}
          onStep={(by) => resize(1, second + by * step)}
        />
        <div class="column column-details">{columns[2].content}</div>
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
