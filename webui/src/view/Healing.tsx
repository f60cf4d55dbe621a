// What can be done about a step that no longer finds its element, or not in the way it used to.
import { portraitOf } from '../model/portrait';
import type { Step } from '../model/steps';
import type { Candidate, Played } from '../net/server';
import { store, useStore } from './store';

export function Healing({ played, at }: { played: Played; at: number }) {
  const { node } = useStore();
  const { proposal, better } = played;
  if (proposal) return <Better step={proposal} as={better ?? ''} at={at} />;
  if (!played.hasFailed || !store.steps.list[at]?.element) return null;
  const candidates = played.candidates ?? [];
  const isAmong = candidates.some((one) => one.element === node?.id);
  return (
    <ul class="healing">
      {candidates.map((one) => (
        <Instead key={one.element} candidate={one} at={at} />
      ))}
      {node && !isAmong && (
        <li>
          <button onClick={() => take(node.id, at)}>Take the chosen element</button>
          <span>
            {node.is.class} {node.is.text}
          </span>
        </li>
      )}
    </ul>
  );
}

function Better({ step, as, at }: { step: Step; as: string; at: number }) {
  const take = () => store.set({ steps: store.steps.replace(at, step) });
  return (
    <p class="healing">
      <button onClick={take}>Take what is better</button>
      <code>{as}</code>
    </p>
  );
}

function Instead({ candidate, at }: { candidate: Candidate; at: number }) {
  const { element, class: kind, text, whyNot } = candidate;
  return (
    <li>
      <button onClick={() => take(element, at)}>Take it</button>
      <button class="quiet" onClick={() => store.choose(store.tree.get(element))}>
        {kind} {text}
      </button>
      <span class="faint">{whyNot}</span>
    </li>
  );
}

async function take(element: number, at: number): Promise<void> {
  try {
    const portrait = await portraitOf(element);
    store.set({ steps: store.steps.setElement(at, portrait) });
  } catch (error) {
    store.set({ problem: (error as Error).message });
  }
}
