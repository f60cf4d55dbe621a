// What is done with all steps: recording, playing, undoing, files.
import { useRef } from 'preact/hooks';
import { asFile, fromFile } from '../model/steps';
import { record } from '../net/server';
import { store, useStore } from './store';

export function toggleRecording(): void {
  const { program } = store;
  if (!program || !store.isRunning) return;
  record(!program.isRecording).catch((error: Error) => store.set({ problem: error.message }));
}

export function StepBar() {
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
