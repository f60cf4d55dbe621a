// What is done with all steps: playing, undoing, files.
import { useRef } from 'preact/hooks';
import { asFile } from '../model/steps';
import { exportTest, openSession } from '../net/server';
import { store, useStore } from './store';

export function StepBar() {
  return (
    <div class="step-bar" role="toolbar" aria-label="Session">
      <PlayButton />
      <span class="grow" />
      <Undoing />
      <Files />
      <Sum />
    </div>
  );
}

function PlayButton() {
  const { steps, program, isRunning, progress } = useStore();
  if (progress.playing) return <button onClick={() => store.stopPlaying()}>Stop</button>;
  return (
    <button
      disabled={!isRunning || !!program?.isRecording || steps.list.length === 0}
      title="Play all steps on the program as it stands"
      onClick={() => store.play(steps.list)}
    >
      Play
    </button>
  );
}

function Undoing() {
  const { steps } = useStore();
  return (
    <>
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
    </>
  );
}

function Files() {
  const { steps } = useStore();
  const file = useRef<HTMLInputElement>(null);
  const isEmpty = steps.list.length === 0;
  return (
    <>
      <button class="quiet" onClick={() => file.current!.click()}>
        Open
      </button>
      <button
        class="quiet"
        disabled={isEmpty}
        title="As a session file, which tarni play plays"
        onClick={() => download(`${nameOfProgram()}.json`, fileOfSteps())}
      >
        Save
      </button>
      <select
        class="export"
        aria-label="Export"
        title="As a test in code, which drives the program by tarni webdriver"
        disabled={isEmpty}
        value=""
        onChange={(event) => {
          void saveTest(event.currentTarget.value as 'python' | 'javascript');
          event.currentTarget.value = '';
        }}
      >
        <option value="" hidden>
          Export
        </option>
        <option value="python">Python, for pytest</option>
        <option value="javascript">JavaScript, for webdriverio</option>
      </select>
      <input
        ref={file}
        type="file"
        hidden
        aria-label="A session file"
        accept=".json,application/json"
        onChange={(event) => void open(event.currentTarget)}
      />
    </>
  );
}

// Of the steps that stand here, once there is a result.
function Sum() {
  const { steps, progress } = useStore();
  const results = steps.list.map((step) => progress.results.get(step));
  if (progress.playing || !results.some((one) => one)) return null;
  const played = results.filter((one) => one !== undefined);
  const passed = played.filter((one) => !one.hasFailed).length;
  const left = results.length - played.length;
  return (
    <span class="said said-below" role="status">
      {passed} of {played.length} passed{left > 0 && `, ${left} not played`}
    </span>
  );
}

function fileOfSteps(): string {
  const { program, steps } = store;
  const { words = [], toolkit = '', agent = '' } = program ?? {};
  return asFile(steps.list, { program: words, toolkit, agent });
}

function nameOfProgram(): string {
  return store.program?.name || 'session';
}

function download(name: string, text: string): void {
  const link = document.createElement('a');
  link.href = URL.createObjectURL(new Blob([text], { type: 'application/octet-stream' }));
  link.download = name;
  link.click();
  URL.revokeObjectURL(link.href);
}

async function saveTest(language: 'python' | 'javascript'): Promise<void> {
  const name = nameOfProgram();
  try {
    const text = await exportTest(fileOfSteps(), language, name);
    download(language === 'python' ? `test_${name}.py` : `${name}.test.mjs`, text);
  } catch (error) {
    store.set({ problem: (error as Error).message });
  }
}

async function open(input: HTMLInputElement): Promise<void> {
  const [chosen] = input.files ?? [];
  if (!chosen) return;
  try {
    const steps = await openSession(await chosen.text(), chosen.name);
    store.set({ steps: store.steps.opened(steps), problem: '' });
  } catch (error) {
    store.set({ problem: (error as Error).message });
  }
  input.value = '';
}
