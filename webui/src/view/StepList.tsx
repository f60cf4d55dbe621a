// The steps of a session: recorded in the program or in the picture, edited, kept as a file.
import { useRef, useState } from 'preact/hooks';
import { inWords } from '../model/playing';
import { portraitOf } from '../model/portrait';
import {
  actInWords,
  asFile,
  elementInWords,
  fromFile,
  memberOfText,
  textOf,
  type Step,
} from '../model/steps';
import { record } from '../net/server';
import { Sides } from './Sides';
import { store, useStore } from './store';

export function toggleRecording(): void {
  const { program } = store;
  if (!program || !store.isRunning) return;
  record(!program.isRecording).catch((error: Error) => store.set({ problem: error.message }));
}

export function StepsPanel() {
  return (
    <section class="panel" aria-label="Steps" onKeyDown={onUndoKey}>
      <div class="panel-bar">
        <Sides />
      </div>
      <Bar />
      <List />
    </section>
  );
}

function List() {
  const { steps, node } = useStore();
  return (
    <div class="scrolls steps">
      {steps.list.length === 0 ? (
        <p class="empty">
          Record (R), and use the program, in its own window or in the picture with Act on: each
          thing that you do becomes a step here.
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

function Bar() {
  const { steps, program, isRunning, progress } = useStore();
  const file = useRef<HTMLInputElement>(null);
  const isRecording = !!program?.isRecording;
  return (
    <div class="step-bar" role="toolbar" aria-label="Session">
      <button
        class={isRecording ? 'record record-on' : 'record'}
        aria-pressed={isRecording}
        disabled={!isRunning}
        title="Record what is done in the program (R)"
        onClick={toggleRecording}
      >
        {isRecording ? 'Stop recording' : 'Record'}
      </button>
      {progress.playing ? (
        <button onClick={() => store.stopPlaying()}>Stop</button>
      ) : (
        <button
          disabled={!isRunning || isRecording || steps.list.length === 0}
          title="Play all steps on the program as it stands"
          onClick={() => store.play(steps.list)}
        >
          Play
        </button>
      )}
      <span class="grow" />
      <button
        class="quiet"
        disabled={!steps.canUndo}
        title="Undo (Ctrl+Z)"
        onClick={() => store.set({ steps: steps.undone() })}
      >
        ↶<span class="unseen">Undo</span>
      </button>
      <button
        class="quiet"
        disabled={!steps.canRedo}
        title="Redo (Ctrl+Shift+Z)"
        onClick={() => store.set({ steps: steps.redone() })}
      >
        ↷<span class="unseen">Redo</span>
      </button>
      <button class="quiet" onClick={() => file.current!.click()}>
        Open
      </button>
      <button class="quiet" disabled={steps.list.length === 0} onClick={save}>
        Save
      </button>
      <input
        ref={file}
        type="file"
        hidden
        aria-label="A session file"
        accept=".json,application/json"
        onChange={(event) => void open(event.currentTarget)}
      />
    </div>
  );
}

function save(): void {
  const { program, steps } = store;
  const words = program?.words ?? [];
  const text = asFile(steps.list, words, program?.toolkit ?? '');
  const link = document.createElement('a');
  link.href = URL.createObjectURL(new Blob([text], { type: 'application/json' }));
  link.download = `${program?.name || 'session'}.json`;
  link.click();
  URL.revokeObjectURL(link.href);
}

async function open(input: HTMLInputElement): Promise<void> {
  const [chosen] = input.files ?? [];
  if (!chosen) return;
  try {
    store.set({ steps: store.steps.opened(fromFile(await chosen.text())), problem: '' });
  } catch (error) {
    store.set({ problem: (error as Error).message });
  }
  input.value = '';
}

// Where the element of a step stands now, if it is there.
function choose(step: Step): void {
  store.choose(store.tree.get(step.element?.element ?? null));
}

function StepRow({ step, at }: { step: Step; at: number }) {
  const { progress } = useStore();
  const text = textOf(step);
  const element = elementInWords(step);
  const played = progress.results.get(step);
  const isPlaying = progress.playing === step;
  const result = isPlaying ? 'playing' : !played ? '' : played.hasFailed ? 'failed' : 'passed';
  const said = played && inWords(played);
  return (
    <li class={`step ${result && `step-${result}`}`} aria-current={isPlaying ? 'step' : undefined}>
      <span class="step-number">
        {at + 1}
        {result && <span class="unseen"> {result}</span>}
      </span>
      <div class="step-what">
        <button class="step-name" title="Show it in the tree" onClick={() => choose(step)}>
          <b>{actInWords(step)}</b> {element}
        </button>
        {step.secret !== undefined && <span class="state state-covered">secret {step.secret}</span>}
        {text !== null && <StepText step={step} text={text} at={at} />}
        {said && <p class="step-said">{said}</p>}
      </div>
      <StepActions step={step} at={at} />
    </li>
  );
}

function StepActions({ step, at }: { step: Step; at: number }) {
  const { steps, program, isRunning } = useStore();
  const mayPlay = isRunning && !program?.isRecording;
  return (
    <div class="step-actions">
      <button
        class="quiet"
        disabled={!mayPlay}
        title="Play this step"
        onClick={() => store.play([step])}
      >
        ▸<span class="unseen">Play step {at + 1}</span>
      </button>
      <button
        class="quiet"
        disabled={!mayPlay}
        title="Play from here on"
        onClick={() => store.play(steps.list.slice(at))}
      >
        ▸▸<span class="unseen">Play from step {at + 1}</span>
      </button>
      {step.act === 'type' && (
        <button
          class="quiet"
          aria-pressed={step.secret !== undefined}
          title="A secret is not kept: the session has its name alone"
          onClick={() => store.set({ steps: steps.setSecret(at, step.secret === undefined) })}
        >
          Secret
        </button>
      )}
      <button class="quiet" title="Up" onClick={() => store.set({ steps: steps.move(at, -1) })}>
        ↑<span class="unseen">Move step {at + 1} up</span>
      </button>
      <button class="quiet" title="Down" onClick={() => store.set({ steps: steps.move(at, 1) })}>
        ↓<span class="unseen">Move step {at + 1} down</span>
      </button>
      <button class="quiet" title="Delete" onClick={() => store.set({ steps: steps.remove(at) })}>
        ✕<span class="unseen">Delete step {at + 1}</span>
      </button>
    </div>
  );
}

// One change of a text is one thing to undo.
function StepText({ step, text, at }: { step: Step; text: string; at: number }) {
  const [edited, setEdited] = useState<string | null>(null);
  const finish = () => {
    if (edited !== null && edited !== text) store.set({ steps: store.steps.setText(at, edited) });
    setEdited(null);
  };
  return (
    <input
      class="step-text"
      aria-label={`${memberOfText(step)} of step ${at + 1}`}
      value={edited ?? text}
      spellcheck={false}
      onInput={(event) => setEdited(event.currentTarget.value)}
      onBlur={finish}
      onKeyDown={(event) => event.key === 'Enter' && finish()}
    />
  );
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
  const { text } = node!.is;
  return (
    <div class="checks">
      <span>
        Check of <b>{node!.is.class}</b>:
      </span>
      <button onClick={() => add({ is: 'visible' })}>is visible</button>
      {text !== undefined && !node!.is.secure && (
        <button onClick={() => add({ textIs: text })}>has its text</button>
      )}
      <button onClick={() => add({ is: node!.is.enabled === false ? 'disabled' : 'enabled' })}>
        is {node!.is.enabled === false ? 'disabled' : 'enabled'}
      </button>
    </div>
  );
}
