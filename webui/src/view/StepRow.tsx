// One step: what is done with what, its text or secret, what came of playing it, and what can be
// done with it.
import { useState } from 'preact/hooks';
import { inWords } from '../model/playing';
import { actInWords, elementInWords, memberOfText, textOf, type Step } from '../model/steps';
import { Healing } from './Healing';
import { store, useStore } from './store';

// Where the element of a step stands now, if it is there.
function choose(step: Step): void {
  store.choose(store.tree.get(step.element?.element ?? null));
}

export function StepRow({ step, at }: { step: Step; at: number }) {
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
        <button
          class="step-name"
          title="Show it in the tree; with the arrows to the next, Alt and the arrows move it, Delete deletes it"
          onClick={() => choose(step)}
          onKeyDown={(event) => onKey(event, at)}
        >
          <b>{actInWords(step)}</b> {element}
        </button>
        {step.secret !== undefined && <Secret name={step.secret} />}
        {text !== null && <StepText step={step} text={text} at={at} />}
        {said && <p class="step-said">{said}</p>}
        {played && <Healing played={played} at={at} />}
      </div>
      <StepActions step={step} at={at} />
    </li>
  );
}

// From step to step, and what is done with one.
function onKey(event: KeyboardEvent, at: number): void {
  const by = ({ ArrowUp: -1, ArrowDown: 1 } as const)[event.key];
  const { steps } = store;
  if (by && event.altKey) store.set({ steps: steps.move(at, by) });
  else if (event.key === 'Delete') store.set({ steps: steps.remove(at) });
  else if (!by) return;
  event.preventDefault();
  const list = (event.currentTarget as Element).closest('ol')!;
  setTimeout(() => {
    const names = list.querySelectorAll<HTMLElement>('.step-name');
    names[Math.max(0, Math.min(names.length - 1, at + (by ?? 0)))]?.focus();
  });
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

// Its value is for playing, here and now: no file and no address has it.
function Secret({ name }: { name: string }) {
  return (
    <label class="step-secret">
      <span class="state state-covered">secret {name}</span>
      <input
        type="password"
        autocomplete="off"
        placeholder="its value, to play it"
        title="Stays in this page and goes nowhere but into the program"
        aria-label={`Value of the secret ${name}`}
        value={store.secrets[name] ?? ''}
        onInput={(event) => {
          store.secrets[name] = event.currentTarget.value;
        }}
      />
    </label>
  );
}
