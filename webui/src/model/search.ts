// The search in the tree: by a part of what an element is known by, by one member of it, or by
// XPath.
import type { Node, Tree } from './tree';

export interface Found {
  nodes: Node[];
  problem: string; // why the search means nothing; empty otherwise
}

type Member = 'text' | 'class' | 'identifier' | 'label' | 'placeholder' | 'title' | 'value';
const members: Member[] = ['text', 'class', 'identifier', 'label', 'placeholder', 'title', 'value'];
const shortNames: Record<string, Member> = { id: 'identifier' };

// What a person can see comes first.
export function search(tree: Tree, query: string): Found {
  const { nodes, problem } = searchAll(tree, query);
  const isSeen = (node: Node) => node.is.visible;
  return { nodes: [...nodes.filter(isSeen), ...nodes.filter((node) => !isSeen(node))], problem };
}

function searchAll(tree: Tree, query: string): Found {
  const text = query.trim();
  if (!text) return { nodes: [], problem: '' };
  if (isXPath(text)) return byXPath(tree, text);
  const [, name, part] = /^(\w+)[:=]\s*(.+)$/.exec(text) ?? [];
  const member = members.find((one) => one === name) ?? (name && shortNames[name]);
  return byPart(tree, member ? part! : text, member ? [member] : members);
}

export function isXPath(text: string): boolean {
  return /^(\.?\/|\(\/|\w+::)/.test(text);
}

function byPart(tree: Tree, part: string, among: Member[]): Found {
  const wanted = part.toLocaleLowerCase();
  const fits = (node: Node) =>
    among.some((member) => {
      const value = node.is[member];
      return value !== undefined && String(value).toLocaleLowerCase().includes(wanted);
    });
  return { nodes: [...tree.walk()].filter(fits), problem: '' };
}

function byXPath(tree: Tree, expression: string): Found {
  const { document: xml, nodes } = asXml(tree);
  try {
    const snapshot = XPathResult.ORDERED_NODE_SNAPSHOT_TYPE;
    const result = xml.evaluate(expression, xml, null, snapshot, null);
    const found: Node[] = [];
    for (let i = 0; i < result.snapshotLength; ++i) {
      const node = nodes.get(result.snapshotItem(i)!);
      if (node) found.push(node);
    }
    return { nodes: found, problem: '' };
  } catch {
    return { nodes: [], problem: 'That is no XPath 1.0 expression for elements' };
  }
}

interface Xml {
  document: XMLDocument;
  nodes: Map<globalThis.Node, Node>;
}

const made = new WeakMap<Tree, { version: number; xml: Xml }>();

// The same for all searches of one version of the tree.
function asXml(tree: Tree): Xml {
  const known = made.get(tree);
  if (known && known.version === tree.version) return known.xml;
  const xml = makeXml(tree);
  made.set(tree, { version: tree.version, xml });
  return xml;
}

function makeXml(tree: Tree): Xml {
  const xml = document.implementation.createDocument(null, 'UIApplication');
  const elements = new Map<Node, Element>();
  const nodes = new Map<globalThis.Node, Node>();
  for (const node of tree.walk()) {
    const element = xml.createElement(tagOf(node.is.class));
    for (const [name, value] of Object.entries(attributesOf(node))) {
      if (value === undefined || value === null || typeof value === 'object') continue;
      element.setAttribute(name, String(value));
    }
    for (const side of ['x', 'y', 'width', 'height'] as const) {
      element.setAttribute(side, String(Math.round(node.is.rect[side])));
    }
    (node.parent ? elements.get(node.parent)! : xml.documentElement).appendChild(element);
    elements.set(node, element);
    nodes.set(element, node);
  }
  return { document: xml, nodes };
}

// Its members, and what clients of WebDriver find in the source of the same program.
function attributesOf({ is, parent }: Node): Record<string, unknown> {
  return {
    ...is,
    type: is.class,
    id: is.identifier,
    name: is.identifier || is.label,
    value: is.value ?? is.checked ?? (is.editable ? is.text : undefined),
    index: parent ? is.index : undefined,
  };
}

// Names of classes may have what names of XML may not: "ns::Class".
export function tagOf(name: string): string {
  const tag = name.replace(/[^\w-]/g, '.');
  return /^[A-Za-z_]/.test(tag) ? tag : `_${tag}`;
}
