// The program's elements as a tree, kept by what the tool tells of changes.
import type { Description, Rect, TreeEvent, WindowDescription } from '../net/server';

export interface Node {
  id: number;
  is: Description;
  parent: Node | null;
  children: Node[];
  isLinked: boolean; // it is among its parent's children
}

export class Tree {
  version = 0;
  windows: WindowDescription[] = [];
  roots: Node[] = [];
  private nodes = new Map<number, Node>();
  private covers = new Map<number, Node | null>();
  private painted = new Map<number, Node[]>();

  get size(): number {
    return this.nodes.size;
  }

  get(id: number | null): Node | null {
    return (id !== null && this.nodes.get(id)) || null;
  }

  apply(change: TreeEvent): void {
    if (change.whole) this.forgetAllBut(change.elements);
    for (const id of change.gone ?? []) this.remove(id);
    const parents = new Set<Node | null>();
    for (const one of change.elements) parents.add(this.put(one));
    for (const parent of parents) sortChildren(parent ? parent.children : this.roots);
    this.version = change.version;
    this.windows = change.windows;
    this.covers.clear();
    this.painted.clear();
  }

  // In the order of the tree.
  *walk(from: Node[] = this.roots): Generator<Node> {
    const stack = [...from].reverse();
    for (let node = stack.pop(); node; node = stack.pop()) {
      yield node;
      for (let i = node.children.length - 1; i >= 0; --i) stack.push(node.children[i]!);
    }
  }

  windowOf(node: Node): Node {
    let top = node;
    while (top.parent) top = top.parent;
    return top;
  }

  // What a person sees at that place of a window: what was painted last.
  at(window: number, x: number, y: number): Node | null {
    const all = this.paintedIn(window);
    for (let i = all.length - 1; i >= 0; --i) {
      if (contains(all[i]!.is.rect, x, y)) return all[i]!;
    }
    return null;
  }

  // What lies over all of an element that is shown otherwise; null when nothing does.
  coverOf(node: Node): Node | null {
    if (!node.is.visible || !node.parent) return null;
    let cover = this.covers.get(node.id);
    if (cover === undefined) {
      cover = this.findCover(node);
      this.covers.set(node.id, cover);
    }
    return cover;
  }

  // As `--xpath` takes it, from its window down.
  positionOf(node: Node): string {
    const steps: string[] = [];
    for (let at: Node = node; at.parent; at = at.parent) {
      const alike = at.parent.children.filter((one) => one.is.class === at.is.class);
      steps.unshift(`\\${at.is.class}[${alike.indexOf(at)}]`);
    }
    return steps.join('');
  }

  private paintedIn(window: number): Node[] {
    let all = this.painted.get(window);
    if (!all) {
      const top = this.get(window);
      all = top ? [...this.walk([top])].filter((node) => node.is.visible) : [];
      this.painted.set(window, all);
    }
    return all;
  }

  // One element over all of it: a background below many others is no more covered than a wall.
  private findCover(node: Node): Node | null {
    const { x, y, width, height } = node.is.rect;
    const window = this.windowOf(node).id;
    let cover: Node | null = null;
    for (const [right, down] of [
      [0.5, 0.5],
      [0.2, 0.3],
      [0.8, 0.3],
      [0.2, 0.7],
      [0.8, 0.7],
    ] as const) {
      const top = this.at(window, x + width * right, y + height * down);
      if (!top || isWithin(top, node) || isWithin(node, top)) return null;
      if (cover && cover !== top) return null;
      cover = top;
    }
    return cover;
  }

  private forgetAllBut(elements: Description[]): void {
    const kept = new Set(elements.map((one) => one.element));
    for (const id of this.nodes.keys()) if (!kept.has(id)) this.nodes.delete(id);
    for (const node of this.nodes.values()) {
      node.isLinked = false;
      node.children = [];
    }
    this.roots = [];
  }

  private put(one: Description): Node | null {
    const parent = this.get(one.parent ?? null);
    const known = this.nodes.get(one.element);
    const node = known ?? { id: one.element, is: one, parent, children: [], isLinked: false };
    node.is = one;
    this.nodes.set(node.id, node);
    if (node.isLinked && node.parent !== parent) this.unlink(node);
    node.parent = parent;
    if (!node.isLinked) (parent ? parent.children : this.roots).push(node);
    node.isLinked = true;
    return parent;
  }

  private unlink(node: Node): void {
    const siblings = node.parent ? node.parent.children : this.roots;
    const place = siblings.indexOf(node);
    if (place >= 0) siblings.splice(place, 1);
    node.isLinked = false;
  }

  private remove(id: number): void {
    const node = this.nodes.get(id);
    if (!node) return;
    this.unlink(node);
    this.nodes.delete(id);
  }
}

// Elements of pages have no place of their own: they come in their order.
function sortChildren(children: Node[]): void {
  children.sort((one, other) => (one.is.index ?? 0) - (other.is.index ?? 0));
}

function contains(rect: Rect, x: number, y: number): boolean {
  return x >= rect.x && y >= rect.y && x < rect.x + rect.width && y < rect.y + rect.height;
}

export function isWithin(node: Node, ancestor: Node): boolean {
  for (let at: Node | null = node; at; at = at.parent) if (at === ancestor) return true;
  return false;
}

// What stands behind the class in a row: what a person would call the element.
export function nameOf(node: Node): string {
  const { title, text, label, placeholder } = node.is;
  return title || text || label || placeholder || '';
}
