// The program's windows as they stand on the screen, each as its latest picture, with marks on
// them.
import { useEffect, useLayoutEffect, useRef, useState } from 'preact/hooks';
import type { Place } from '../model/hand';
import { chordOf } from '../model/hand';
import { nameOf, type Node } from '../model/tree';
import type { Rect, WindowDescription } from '../net/server';
import { store, useStore } from './store';
import { usePanel } from './Tabs';

const mostMarks = 500;
const pixelsPerNotch = 100;
const betweenMoves = 50; // milliseconds

// Back to front: the key window before the last, popups over all.
function inOrder(windows: WindowDescription[], front: number | null): WindowDescription[] {
  const rank = (one: WindowDescription) =>
    one.popup ? 3 : one.element === front ? 2 : one.key || one.modal ? 1 : 0;
  return [...windows].sort((one, other) => rank(one) - rank(other));
}

function around(windows: WindowDescription[]): Rect {
  const left = Math.min(...windows.map((one) => one.screenRect.x));
  const top = Math.min(...windows.map((one) => one.screenRect.y));
  const right = Math.max(...windows.map((one) => one.screenRect.x + one.screenRect.width));
  const bottom = Math.max(...windows.map((one) => one.screenRect.y + one.screenRect.height));
  return { x: left, y: top, width: right - left, height: bottom - top };
}

// The width that there is for the picture.
function useWidth() {
  const ref = useRef<HTMLDivElement>(null);
  const [size, setSize] = useState({ width: 0, height: 0 });
  useLayoutEffect(() => {
    const observer = new ResizeObserver(([entry]) => {
      const { width, height } = entry!.contentRect;
      setSize({ width, height });
    });
    observer.observe(ref.current!);
    return () => observer.disconnect();
  }, []);
  return { ref, size };
}

export function Picture() {
  const { tree, front, program, isRunning } = useStore();
  const act = store.act && isRunning;
  const { ref, size } = useWidth();
  const [zoom, setZoom] = useState<'fit' | number>('fit');
  const windows = inOrder(tree.windows, front);
  const whole = windows.length ? around(windows) : { x: 0, y: 0, width: 1, height: 1 };
  const fit = Math.min(1, size.width / whole.width, size.height / whole.height) || 1;
  const scale = zoom === 'fit' ? fit : zoom;
  return (
    <section class="panel picture" {...usePanel('picture', 'Picture')}>
      <div class="panel-bar">
        <Windows windows={tree.windows} />
        <span class="grow" />
        <button
          class="quiet"
          title={zoom === 'fit' ? 'Fitted into the column: show its own size' : 'Fit it into the column'}
          onClick={() => setZoom(zoom === 'fit' ? 1 : 'fit')}
        >
          {zoom === 'fit' ? `${Math.round(fit * 100)} %` : 'Fit'}
        </button>
      </div>
      <div class={`stage ${zoom === 'fit' ? '' : 'stage-scrolls'}`} ref={ref}>
        {windows.length > 0 && (
          <Screen windows={windows} whole={whole} scale={scale} acts={act && !!program?.hasInput} />
        )}
        {windows.length === 0 && isRunning && <p class="empty">It shows no window yet</p>}
      </div>
      {act && (
        <p class="hint">
          {program?.hasInput
            ? 'Clicks, keys, wheel and drags go into the program. Shift+Escape leaves it.'
            : 'This program’s platform has no mouse and no keyboard to act with.'}
        </p>
      )}
    </section>
  );
}

function Windows({ windows }: { windows: WindowDescription[] }) {
  const { front } = useStore();
  if (windows.length < 2) {
    return <span class="panel-title">{windows[0]?.title || 'Picture'}</span>;
  }
  const shown = front ?? windows.find((one) => one.key)?.element;
  return (
    <div class="chips" role="group" aria-label="Windows">
      {windows.map((one) => (
        <button
          key={one.element}
          class="chip"
          aria-pressed={one.element === shown}
          title={`${one.title || one.class}${one.takesInput ? '' : ' (a modal window is in front)'}`}
          onClick={() => store.set({ front: one.element })}
        >
          {one.title || one.class}
        </button>
      ))}
    </div>
  );
}

interface ScreenProps {
  windows: WindowDescription[];
  whole: Rect;
  scale: number;
  acts: boolean;
}

function Screen({ windows, whole, scale, acts }: ScreenProps) {
  const ref = useRef<HTMLDivElement>(null);
  const places = usePlaces(ref, windows, whole, scale);
  const actions = acts ? actingWith(places) : pointingWith(places);
  useWheel(ref, acts, places);
  useEffect(() => {
    if (acts) ref.current!.focus({ preventScroll: true });
  }, [acts]);
  return (
    <div
      ref={ref}
      class={`screen ${acts ? 'screen-acts' : ''}`}
      style={{ width: whole.width * scale, height: whole.height * scale }}
      tabIndex={-1}
      role={acts ? 'application' : 'img'}
      aria-label={acts ? 'The program: keys and clicks go into it' : 'Picture of the program'}
      {...actions}
    >
      {windows.map((one) => (
        <WindowPicture key={one.element} window={one} whole={whole} scale={scale} />
      ))}
      {acts && <Keyboard />}
    </div>
  );
}

// Stands in the field of the keys: a telephone's keyboard deletes nothing where there is nothing.
const something = '\u00a0';

// What a telephone's keyboard does without saying which key it was.
const keysOfEdits: Record<string, string> = {
  deleteContentBackward: 'Backspace',
  deleteContentForward: 'Delete',
  deleteWordBackward: 'Control+Backspace',
  deleteWordForward: 'Control+Delete',
  insertLineBreak: 'Enter',
  insertParagraph: 'Enter',
};

function clear(field: HTMLTextAreaElement): void {
  field.value = something;
  field.setSelectionRange(1, 1);
}

// Takes the keys while a person acts: browsers compose text for fields alone. What came of no key
// that the program gets by itself goes on as text.
function Keyboard() {
  const goOn = (event: Event) => {
    const field = event.currentTarget as HTMLTextAreaElement;
    const text = field.value.replace(something, '');
    if (text) store.hand.text(text);
    clear(field);
  };
  const edit = (event: InputEvent) => {
    const key = event.isComposing ? undefined : keysOfEdits[event.inputType];
    if (!key) return;
    event.preventDefault();
    store.hand.key(key);
  };
  return (
    <textarea
      class="keyboard"
      aria-label="Keys for the program"
      autocomplete="off"
      autocapitalize="off"
      spellcheck={false}
      onFocus={(event) => clear(event.currentTarget)}
      onBeforeInput={edit}
      onInput={(event) => !(event as InputEvent).isComposing && goOn(event)}
      onCompositionEnd={goOn}
    />
  );
}

interface WindowProps {
  window: WindowDescription;
  whole: Rect;
  scale: number;
}

function WindowPicture({ window, whole, scale }: WindowProps) {
  const { pictures } = useStore();
  const picture = pictures.get(window.element);
  const { x, y, width, height } = window.screenRect;
  return (
    <div
      class={`window ${window.takesInput ? '' : 'window-blocked'}`}
      style={{
        left: (x - whole.x) * scale,
        top: (y - whole.y) * scale,
        width: width * scale,
        height: height * scale,
      }}
    >
      {picture && (
        <img alt="" draggable={false} src={`data:image/${picture.format};base64,${picture.data}`} />
      )}
      <Marks window={window.element} scale={scale} />
    </div>
  );
}

function Marks({ window, scale }: { window: number; scale: number }) {
  const { tree, chosen, hovered, found, marked } = useStore();
  const isHere = (node: Node) => tree.windowOf(node).id === window && node.is.visible;
  const many = (marked.length ? marked : found.nodes).slice(0, mostMarks).filter(isHere);
  const one = (id: number | null) => [tree.get(id)].filter((node) => node && isHere(node));
  return (
    <>
      {many.map((node) => (
        <Mark key={node.id} kind="found" node={node} scale={scale} />
      ))}
      {one(chosen).map((node) => (
        <Mark key="chosen" kind="chosen" node={node!} scale={scale} />
      ))}
      {one(hovered).map((node) => (
        <Mark key="hovered" kind="hovered" node={node!} scale={scale} />
      ))}
    </>
  );
}

function Mark({ kind, node, scale }: { kind: string; node: Node; scale: number }) {
  const { x, y, width, height } = node.is.rect;
  const isAtTop = y * scale < 20;
  return (
    <div
      class={`mark mark-${kind}`}
      style={{ left: x * scale, top: y * scale, width: width * scale, height: height * scale }}
    >
      {kind === 'hovered' && (
        <span class={`mark-name ${isAtTop ? 'mark-name-inside' : ''}`}>
          <b>{node.is.class}</b> {nameOf(node).slice(0, 40)}{' '}
          <i>
            {Math.round(width)}×{Math.round(height)}
          </i>
        </span>
      )}
    </div>
  );
}

type Places = (event: MouseEvent) => Place | null;

// Where the pointer is: the window in front there, and the place in it.
function usePlaces(
  ref: { current: HTMLDivElement | null },
  windows: WindowDescription[],
  whole: Rect,
  scale: number,
): Places {
  return (event) => {
    const box = ref.current!.getBoundingClientRect();
    const x = (event.clientX - box.left) / scale + whole.x;
    const y = (event.clientY - box.top) / scale + whole.y;
    for (let i = windows.length - 1; i >= 0; --i) {
      const { element, screenRect: at } = windows[i]!;
      const isInside = x >= at.x && y >= at.y && x < at.x + at.width && y < at.y + at.height;
      if (isInside) return { window: element, x: x - at.x, y: y - at.y };
    }
    return null;
  };
}

function pointingWith(places: Places) {
  const nodeAt = (event: MouseEvent) => {
    const place = places(event);
    return place && store.tree.at(place.window, place.x, place.y);
  };
  return {
    onMouseMove: (event: MouseEvent) => {
      const id = nodeAt(event)?.id ?? null;
      if (id !== store.hovered) store.set({ hovered: id });
    },
    onMouseLeave: () => store.set({ hovered: null }),
    onClick: (event: MouseEvent) => store.choose(nodeAt(event)),
  };
}

let lastMove = 0;

function actingWith(places: Places) {
  const at = (event: MouseEvent, use: (place: Place) => void) => {
    const place = places(event);
    if (place) use(place);
  };
  return {
    onPointerMove: (event: PointerEvent) => {
      if (!event.buttons && event.timeStamp - lastMove < betweenMoves) return;
      lastMove = event.timeStamp;
      at(event, (place) => store.hand.move(place));
    },
    onPointerDown: (event: PointerEvent) => {
      (event.currentTarget as Element).setPointerCapture(event.pointerId);
      at(event, (place) => store.hand.press(place, event.button));
    },
    onPointerUp: (event: PointerEvent) => store.hand.release(places(event), event.button),
    onPointerCancel: (event: PointerEvent) => store.hand.release(null, event.button),
    onContextMenu: (event: Event) => event.preventDefault(),
    onFocus: (event: FocusEvent) => {
      const screen = event.currentTarget as Element;
      screen.querySelector<HTMLElement>('.keyboard')?.focus({ preventScroll: true });
    },
    onKeyDown: (event: KeyboardEvent) => {
      event.stopPropagation();
      if (event.key === 'Escape' && event.shiftKey) return store.set({ act: false });
      const chord = event.isComposing ? null : chordOf(event);
      if (!chord) return;
      event.preventDefault();
      store.hand.key(chord);
    },
  };
}

// By itself, as the browser would scroll the page unless it is told not to before.
function useWheel(ref: { current: HTMLDivElement | null }, acts: boolean, places: Places): void {
  const latest = useRef(places);
  latest.current = places;
  useEffect(() => {
    const screen = ref.current!;
    if (!acts) return undefined;
    const turn = (event: WheelEvent) => {
      event.preventDefault();
      const place = latest.current(event);
      const unit = event.deltaMode === WheelEvent.DOM_DELTA_PIXEL ? pixelsPerNotch : 3;
      if (place) store.hand.turn(place, event.deltaX / unit, event.deltaY / unit);
    };
    screen.addEventListener('wheel', turn, { passive: false });
    return () => screen.removeEventListener('wheel', turn);
  }, [acts]);
}
