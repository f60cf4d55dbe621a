// The tree: as many rows as can be seen, however many there are.
import { useEffect, useLayoutEffect, useMemo, useRef, useState } from 'preact/hooks';
import { isXPath } from '../model/search';
import { nameOf, type Node } from '../model/tree';
import { States } from './states';
import { store, useStore } from './store';
import { usePanel } from './Tabs';

const rowHeight = 22;
const leastWidth = 280; // of what stands in a row, before it has to be scrolled to
const beyond = 6; // rows above and below those that can be seen

interface Row {
  node: Node;
  level: number;
}

// In the order of the tree, without those below a folded one.
function rowsOf(roots: Node[]): Row[] {
  const rows: Row[] = [];
  const stack = roots.map((node) => ({ node, level: 1 })).reverse();
  for (let row = stack.pop(); row; row = stack.pop()) {
    rows.push(row);
    if (store.isFolded(row.node)) continue;
    const { children } = row.node;
    for (let i = children.length - 1; i >= 0; --i) {
      stack.push({ node: children[i]!, level: row.level + 1 });
    }
  }
  return rows;
}

export function TreeView() {
  const { tree } = useStore();
  return (
    <section class="panel tree" {...usePanel('tree', 'Tree')}>
      <Search />
      <Rows />
      <p class="foot" role="status">
        {tree.size === 1 ? '1 element' : `${tree.size.toLocaleString()} elements`}
      </p>
    </section>
  );
}

function Search() {
  const { query, found } = useStore();
  const unseen = found.nodes.filter((node) => !node.is.visible).length;
  const count = `${found.nodes.length} found${unseen ? `, ${unseen} hidden` : ''}`;
  const isInVain = query && !found.nodes.length;
  const said = !query.trim() ? '' : found.problem || count;
  return (
    <div class="panel-bar search">
      <input
        id="search"
        type="search"
        value={query}
        placeholder="Search: text, class:, id:, //XPath"
        aria-label="Search the tree by text, class, identifier or XPath"
        aria-describedby="search-said"
        spellcheck={false}
        autocomplete="off"
        onInput={(event) => store.set({ query: event.currentTarget.value, marked: [] })}
        onKeyDown={(event) => {
          if (event.key === 'Enter') store.step(event.shiftKey ? -1 : 1);
          if (event.key === 'Escape') store.set({ query: '' });
          if (event.key === 'ArrowDown') document.getElementById('tree')?.focus();
        }}
      />
      <span
        id="search-said"
        role="status"
        class={`said ${isInVain ? 'said-bad' : ''} ${found.problem && 'said-below'}`}
      >
        {said}
      </span>
      {found.nodes.length > 0 && (
        <>
          <button class="quiet" title="The one before (Shift+Enter)" onClick={() => store.step(-1)}>
            ↑<span class="unseen">Previous match</span>
          </button>
          <button class="quiet" title="The next one (Enter)" onClick={() => store.step(1)}>
            ↓<span class="unseen">Next match</span>
          </button>
        </>
      )}
    </div>
  );
}

function Rows() {
  const { tree, folds, chosen, opened, found, marked, query } = useStore();
  const ref = useRef<HTMLDivElement>(null);
  const rows = useMemo(() => rowsOf(tree.roots), [tree.version, tree.size, folds]);
  const at = rows.findIndex((row) => row.node.id === chosen);
  const marks = useMemo(
    () => new Set((marked.length ? marked : found.nodes).map((node) => node.id)),
    [marked, found],
  );
  const { first, last } = useVisibleRange(ref, rows.length);
  useBringIntoSight(ref, chosen, at);
  const below = opened === null ? -1 : rows.findIndex((row) => row.node.id === opened);
  useBringIntoSight(ref, opened, below);
  const shown = rows.slice(first, last);
  return (
    <div
      ref={ref}
      id="tree"
      class="rows"
      role="tree"
      tabIndex={0}
      aria-label="Elements"
      aria-activedescendant={at >= first && at < last ? `row-${chosen}` : undefined}
      onKeyDown={(event) => onKey(event, rows, at)}
      onMouseLeave={() => store.set({ hovered: null })}
    >
      <div class="rows-all" role="none" style={{ height: rows.length * rowHeight }}>
        {shown.map(({ node, level }, i) => (
          <TreeRow
            key={node.id}
            node={node}
            level={level}
            top={(first + i) * rowHeight}
            isChosen={node.id === chosen}
            isFolded={store.isFolded(node)}
            isMarked={marks.has(node.id)}
            part={isXPath(query) ? '' : query.replace(/^\w+[:=]\s*/, '').trim()}
          />
        ))}
      </div>
    </div>
  );
}

// Of so many rows those that can be seen, and some beyond; `last` is the one behind them.
function useVisibleRange(ref: { current: HTMLDivElement | null }, count: number) {
  const [place, setPlace] = useState({ top: 0, height: 400 });
  useLayoutEffect(() => {
    const box = ref.current!;
    const see = () => setPlace({ top: box.scrollTop, height: box.clientHeight });
    const observer = new ResizeObserver(see);
    observer.observe(box);
    box.addEventListener('scroll', see, { passive: true });
    return () => {
      observer.disconnect();
      box.removeEventListener('scroll', see);
    };
  }, []);
  return {
    first: Math.max(0, Math.floor(place.top / rowHeight) - beyond),
    last: Math.min(count, Math.ceil((place.top + place.height) / rowHeight) + beyond),
  };
}

// When it is another one, and not when the tree merely changes.
function useBringIntoSight(
  ref: { current: HTMLDivElement | null },
  id: number | null,
  at: number,
): void {
  const seen = useRef<number | null>(null);
  useEffect(() => {
    if (at < 0 || seen.current === id) return;
    seen.current = id;
    const box = ref.current!;
    const top = at * rowHeight;
    const isInSight = top >= box.scrollTop && top + rowHeight <= box.scrollTop + box.clientHeight;
    if (!isInSight) box.scrollTop = top - box.clientHeight / 3;
  }, [id, at]);
}

interface RowProps {
  node: Node;
  level: number;
  top: number;
  isChosen: boolean;
  isFolded: boolean;
  isMarked: boolean;
  part: string; // of the texts, that was searched for
}

function TreeRow({ node, level, top, isChosen, isFolded, isMarked, part }: RowProps) {
  const hasChildren = node.children.length > 0;
  const siblings = node.parent ? node.parent.children : store.tree.roots;
  const isShown = node.is.visible && !store.tree.coverOf(node);
  const name = nameOf(node);
  const indent = 4 + (level - 1) * 13;
  return (
    <div
      id={`row-${node.id}`}
      role="treeitem"
      class={`row ${isMarked ? 'row-found' : ''} ${isShown ? '' : 'row-unseen'}`}
      style={{ top, paddingLeft: indent, minWidth: indent + leastWidth }}
      aria-level={level}
      aria-selected={isChosen}
      aria-expanded={hasChildren ? !isFolded : undefined}
      aria-setsize={siblings.length}
      aria-posinset={siblings.indexOf(node) + 1}
      onMouseEnter={() => store.set({ hovered: node.id })}
      onClick={() => store.choose(node)}
      onDblClick={() => hasChildren && store.fold(node, !isFolded)}
    >
      <span
        class={`twist ${hasChildren ? (isFolded ? 'twist-closed' : 'twist-open') : ''}`}
        aria-hidden="true"
        onClick={(event) => {
          event.stopPropagation();
          store.fold(node, !isFolded);
        }}
      />
      <span class="row-class">{node.is.class}</span>
      {node.is.identifier && <span class="row-id">#{node.is.identifier}</span>}
      {name && (
        <span class="row-name">
          <Marked text={name.slice(0, 120)} part={isMarked ? part : ''} />
        </span>
      )}
      <States node={node} />
    </div>
  );
}

// Lines and what cannot be seen as a blank.
function Marked({ text, part }: { text: string; part: string }) {
  const line = text.replace(/[\p{Cc}\p{Cf}\u2028\u2029]+/gu, ' ');
  const at = part ? line.toLocaleLowerCase().indexOf(part.toLocaleLowerCase()) : -1;
  if (at < 0) return <>{line}</>;
  return (
    <>
      {line.slice(0, at)}
      <mark>{line.slice(at, at + part.length)}</mark>
      {line.slice(at + part.length)}
    </>
  );
}

// As trees are used everywhere.
function onKey(event: KeyboardEvent, rows: Row[], at: number): void {
  const row = rows[at];
  const go = (to: number) => {
    const next = rows[Math.max(0, Math.min(rows.length - 1, to))];
    if (next) store.choose(next.node);
  };
  const page = Math.floor((event.currentTarget as HTMLElement).clientHeight / rowHeight) - 1;
  const keys: Record<string, () => void> = {
    ArrowDown: () => go(at + 1),
    ArrowUp: () => go(at - 1),
    PageDown: () => go(at + page),
    PageUp: () => go(at - page),
    Home: () => go(0),
    End: () => go(rows.length - 1),
    ArrowRight: () => {
      if (!row || row.node.children.length === 0) return;
      if (store.isFolded(row.node)) store.fold(row.node, false);
      else go(at + 1);
    },
    ArrowLeft: () => {
      if (!row) return;
      const isOpen = row.node.children.length > 0 && !store.isFolded(row.node);
      if (isOpen) store.fold(row.node, true);
      else if (row.node.parent) store.choose(row.node.parent);
    },
    Enter: () => row && store.fold(row.node, !store.isFolded(row.node)),
  };
  const act = keys[event.key];
  if (!act || event.ctrlKey || event.altKey || event.metaKey) return;
  event.preventDefault();
  act();
}
