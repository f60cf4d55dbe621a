// All that is known of the chosen element, and how to find it again.
import { nameOf, type Node } from '../model/tree';
import { Locators } from './Locators';
import { Sides } from './Sides';
import { States, statesOf } from './states';
import { usePanel } from './Tabs';
import { useStore } from './store';

export function Details() {
  const { node, tree } = useStore();
  return (
    <section class="panel details" {...usePanel('details', 'Properties')}>
      <div class="panel-bar">
        <Sides />
        <span class="grow" />
        {node && <States node={node} />}
        {node && <h2 class="panel-title">{node.is.class}</h2>}
      </div>
      <div class="scrolls">
        {node ? (
          <>
            <Explained node={node} />
            <Locators />
            <Properties node={node} position={tree.positionOf(node)} />
          </>
        ) : (
          <p class="empty">
            Click something in the picture or in the tree: here stands what it is, and how a test
            finds it again.
          </p>
        )}
      </div>
    </section>
  );
}

// Of what keeps a person from the element.
function Explained({ node }: { node: Node }) {
  const { tree } = useStore();
  const cover = tree.coverOf(node);
  const isTold = statesOf(node).some(({ word }) => word === 'hidden' || word === 'blocked');
  if (!cover && !isTold) return null;
  return (
    <p class="note">
      {cover && `Covered: ${cover.is.class} ${nameOf(cover)} lies over it.`}
      {isTold && statesOf(node).find(({ word }) => word === 'hidden' || word === 'blocked')?.why}
    </p>
  );
}

const leftOut = ['parent', 'index', 'rect', 'element', 'class'];

function Properties({ node, position }: { node: Node; position: string }) {
  const { x, y, width, height } = node.is.rect;
  const round = (number: number) => Math.round(number * 10) / 10;
  const rows: [string, string][] = [
    ['class', node.is.class],
    ['element', String(node.id)],
    ['place', `${round(x)}, ${round(y)} in its window`],
    ['size', `${round(width)} × ${round(height)} points`],
  ];
  for (const [name, value] of Object.entries(node.is)) {
    if (leftOut.includes(name) || value === null || typeof value === 'object') continue;
    rows.push([name, typeof value === 'boolean' ? (value ? 'yes' : 'no') : String(value)]);
  }
  if (position) rows.push(['position', position]);
  return (
    <section aria-labelledby="properties">
      <h3 id="properties">Properties</h3>
      <dl class="properties">
        {rows.map(([name, value]) => (
          <div key={name}>
            <dt>{name}</dt>
            <dd>{value || <i>empty</i>}</dd>
          </div>
        ))}
      </dl>
    </section>
  );
}
