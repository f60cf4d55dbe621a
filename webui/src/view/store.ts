// Everything that the page knows and shows, in one place. Views ask it and are drawn anew when it
// changes.
import { useEffect, useReducer } from 'preact/hooks';
import { readAddress, writeAddress } from '../model/address';
import { readSteps, writeSteps } from '../model/kept';
import { Hand } from '../model/hand';
import { search, type Found } from '../model/search';
import { nothingPlayed, Playing, type Progress } from '../model/playing';
import { Steps, type Step } from '../model/steps';
import { isWithin, Tree, type Node } from '../model/tree';
import {
  listen,
  type CostsEvent,
  type PictureEvent,
  type ProgramEvent,
  type ServerEvent,
} from '../net/server';

const mostCosts = 120;

export class Store {
  readonly tree = new Tree();
  readonly pictures = new Map<number, PictureEvent>();
  costs: CostsEvent[] = [];
  program: ProgramEvent | null = null;
  isLost = false; // the tool cannot be reached
  problem = ''; // what has just gone wrong, for a person

  chosen: number | null;
  hovered: number | null = null;
  front: number | null; // the window that a person put in front
  opened: number | null = null; // the window that opened last, and is no popup
  query: string;
  found: Found = { nodes: [], problem: '' };
  marked: Node[] = []; // what a locator that is tried fits
  private readonly foldedByHand: Map<number, boolean>;
  act: boolean;
  panel: string;
  steps = Steps.of(readSteps());
  readonly secrets: Record<string, string> = {}; // that steps name alone; kept nowhere
  progress: Progress = nothingPlayed;
  private playing: Playing | null = null;
  readonly hand = new Hand((sentence) => this.set({ problem: sentence }));

  private readonly views = new Set<() => void>();
  private isDrawDue = false;
  private searched = { version: -1, query: '' };

  constructor() {
    const kept = readAddress();
    this.chosen = kept.element;
    this.front = kept.window;
    this.query = kept.query;
    this.foldedByHand = new Map(kept.folded.map((id) => [Math.abs(id), id > 0]));
    this.act = kept.act;
    this.panel = kept.panel;
  }

  start(): void {
    listen(
      (event) => this.take(event),
      (isLost) => this.set({ isLost }),
    );
  }

  // All that is set in one turn is drawn once.
  set(change: Partial<Store>): void {
    Object.assign(this, change);
    this.search();
    if (this.isDrawDue) return;
    this.isDrawDue = true;
    queueMicrotask(() => {
      this.isDrawDue = false;
      this.keep();
      for (const draw of this.views) draw();
    });
  }

  onChange(draw: () => void): () => void {
    this.views.add(draw);
    return () => this.views.delete(draw);
  }

  get isRunning(): boolean {
    return this.program?.state === 'running' || this.program?.state === 'busy';
  }

  get node(): Node | null {
    return this.tree.get(this.chosen);
  }

  // Null for nothing. Its window comes to the front.
  choose(node: Node | null): void {
    for (let at = node?.parent; at; at = at.parent) {
      if (this.isFolded(at)) this.foldedByHand.set(at.id, false);
    }
    this.set({
      chosen: node?.id ?? null,
      front: node ? this.tree.windowOf(node).id : this.front,
      marked: [],
      problem: '',
    });
  }

  // What is hidden is folded until somebody wants to see it.
  isFolded(node: Node): boolean {
    const isHiddenFirst = !node.is.visible && (!node.parent || node.parent.is.visible);
    return this.foldedByHand.get(node.id) ?? isHiddenFirst;
  }

  // Another text whenever something else is folded.
  get folds(): string {
    return [...this.foldedByHand].join();
  }

  fold(node: Node, isFolded: boolean): void {
    this.foldedByHand.set(node.id, isFolded);
    // What cannot be seen any more is not what the arrows go on from.
    const hides = isFolded && this.node && this.node !== node && isWithin(this.node, node);
    this.set(hides ? { chosen: node.id } : {});
  }

  // The next or the previous of what the search found.
  step(by: number): void {
    const { nodes } = this.found;
    if (nodes.length === 0) return;
    const at = nodes.findIndex((node) => node.id === this.chosen);
    const next = at < 0 ? (by > 0 ? 0 : nodes.length - 1) : (at + by + nodes.length) % nodes.length;
    this.choose(nodes[next]!);
  }

  play(steps: readonly Step[]): void {
    this.playing?.stop();
    this.playing = new Playing(this.secrets, (progress) => this.set({ progress }));
    void this.playing.run(steps, this.progress);
  }

  stopPlaying(): void {
    this.playing?.stop();
  }

  private take(event: ServerEvent): void {
    switch (event.type) {
      case 'program':
        if (event.pid !== this.program?.pid) this.forget();
        if (event.isRecording && this.program?.isRecording === false) {
          this.steps = this.steps.settled();
        }
        document.title = event.name ? `${event.name} – Tarni inspector` : 'Tarni inspector';
        return this.set({ program: event });
      case 'tree': {
        // What a person put in front gives way to a window that opens.
        const opened = event.windows.filter((one) => !this.tree.get(one.element));
        if (opened.length > 0 && this.tree.size > 0) {
          this.front = null;
          this.opened = opened.filter((one) => !one.popup).pop()?.element ?? this.opened;
        }
        this.tree.apply(event);
        this.marked = this.marked.filter((node) => this.tree.get(node.id));
        return this.set({});
      }
      case 'picture':
        this.pictures.set(event.window, event);
        return this.set({});
      case 'step':
        return this.set({ steps: this.steps.told(event.step as Step) });
      case 'costs':
        return this.set({ costs: [...this.costs, event].slice(-mostCosts) });
    }
  }

  // Another program begins, whose elements are others.
  private forget(): void {
    if (this.program?.pid === undefined) return;
    this.problem = '';
    this.costs = [];
    this.pictures.clear();
    this.foldedByHand.clear();
    this.chosen = this.hovered = this.front = this.opened = null;
  }

  private search(): void {
    const { version } = this.tree;
    if (this.searched.version === version && this.searched.query === this.query) return;
    this.searched = { version, query: this.query };
    this.found = search(this.tree, this.query);
  }

  private keep(): void {
    writeSteps(this.steps.list);
    writeAddress({
      element: this.chosen,
      window: this.front,
      query: this.query,
      folded: [...this.foldedByHand].map(([id, isFolded]) => (isFolded ? id : -id)),
      act: this.act,
      panel: this.panel,
    });
  }
}

export const store = new Store();

// Has the view drawn anew whenever something has changed.
export function useStore(): Store {
  const [, draw] = useReducer((count: number) => count + 1, 0);
  useEffect(() => store.onChange(() => draw(0)), []);
  return store;
}
