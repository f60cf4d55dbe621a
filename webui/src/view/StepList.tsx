// The steps of a session: recorded in the program or in the picture, edited, kept as a file.
import { portraitOf } from '../model/portrait';
import { nameOf } from '../model/tree';
import { useNarrow } from './narrow';
import { Sides } from './Sides';
import { StepBar } from './StepBar';
import { StepRow } from './StepRow';
import { store, useStore } from './store';
import { usePanel } from './Tabs';

const mostOfName = 40;

export function StepsPanel() {
  return (
    <section class="panel" {...usePanel('steps', 'Steps')} onKeyDown={onUndoKey}>
      {!useNarrow() && (
        <div class="panel-bar">
          <Sides />
        </div>
      )}
      <StepBar />
      <List />
    </section>
  );
}

function List() {
  const { steps, node, program } = useStore();
  return (
    <div class="scrolls steps">
      {steps.list.length === 0 ? (
        <p class="empty">
          {program?.isRecording ? 'Use the program' : 'Record (R), and use the program'}, in its own
          window or in the picture with Act on: each thing that you do becomes a step here.
        </p>
      ) : (
        <ol class="step-list">
          {steps.list.map((step, at) => (
            <StepRow key={at} step={step} at={at} />
          ))}
        </ol>
      )}
      {node && <Checks />}
    </div>
  );
}

function onUndoKey(event: KeyboardEvent): void {
  if (!(event.ctrlKey || event.metaKey) || (event.target as Element).matches('input')) return;
  const key = event.key.toLowerCase();
  const isRedo = key === 'y' || (key === 'z' && event.shiftKey);
  if (key !== 'z' && key !== 'y') return;
  event.preventDefault();
  store.set({ steps: isRedo ? store.steps.redone() : store.steps.undone() });
}

// Of the chosen element, at the end of the steps.
function Checks() {
  const { node } = useStore();
  const add = async (what: object) => {
    try {
      const element = await portraitOf(node!.id);
      const { steps } = store;
      store.set({ steps: steps.insert(steps.list.length, { act: 'check', element, ...what }) });
    } catch (error) {
      store.set({ problem: (error as Error).message });
    }
  };
  const { text, checked } = node!.is;
  return (
    <div class="checks">
      <span>
        Check of <b>{node!.is.class}</b> {nameOf(node!).slice(0, mostOfName)}:
      </span>
      <button onClick={() => add({ is: 'visible' })}>is visible</button>
      {text !== undefined && !node!.is.secure && (
        <button onClick={() => add({ textIs: text })}>has its text</button>
      )}
      {checked !== undefined && (
        <button onClick={() => add({ is: checked ? 'checked' : 'unchecked' })}>
          is {checked ? 'checked' : 'not checked'}
        </button>
      )}
      <button onClick={() => add({ is: node!.is.enabled === false ? 'disabled' : 'enabled' })}>
        is {node!.is.enabled === false ? 'disabled' : 'enabled'}
      </button>
    </div>
  );
}
