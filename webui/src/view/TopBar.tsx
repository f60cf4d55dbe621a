// Which program it is, how it does, and what the page is to do with the mouse.
import { Costs } from './Costs';
import { RecordButton } from './RecordButton';
import { store, useStore } from './store';

const words = {
  none: 'no program',
  starting: 'starting',
  running: 'running',
  busy: 'busy',
  ended: 'ended',
};

export function TopBar() {
  const { program, act, isLost, isRunning } = useStore();
  const state = isLost ? 'lost' : (program?.state ?? 'none');
  return (
    <header class="top">
      <h1>
        <img src="icon.svg" alt="" width="18" height="18" />
        <span class="unseen">Tarni inspector: </span>
        {program?.name || 'Tarni inspector'}
      </h1>
      <span class={`dot dot-${state}`} role="status" title={program?.why}>
        {isLost ? 'tarni has ended' : words[program?.state ?? 'none']}
      </span>
      {program && isRunning && (
        <span class="faint program-facts">
          {program.toolkit} · process {program.pid}
        </span>
      )}
      <span class="grow" />
      <Costs />
      <RecordButton />
      <button
        role="switch"
        class="switch"
        aria-checked={act}
        disabled={!isRunning}
        title="Send clicks, keys, wheel and drags in the picture into the program (A)"
        onClick={() => store.set({ act: !act })}
      >
        Act
      </button>
    </header>
  );
}
