// The right column shows the chosen element or the steps.
import { store, useStore } from './store';

export function Sides() {
  const { panel, steps, program } = useStore();
  const isSteps = panel === 'steps';
  const count = steps.list.length;
  return (
    <div class="sides" role="group" aria-label="Right column">
      <button
        class="chip"
        aria-pressed={!isSteps}
        onClick={() => store.set({ panel: 'details' })}
      >
        Properties
      </button>
      <button class="chip" aria-pressed={isSteps} onClick={() => store.set({ panel: 'steps' })}>
        {program?.isRecording && <span class="recording" title="Recording" />}
        Steps{count > 0 && ` (${count})`}
      </button>
    </div>
  );
}
