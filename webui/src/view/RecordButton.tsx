// Begins and ends recording; the steps come up with it.
import { record } from '../net/server';
import { store, useStore } from './store';

export function toggleRecording(): void {
  const { program } = store;
  if (!program || !store.isRunning) return;
  store.set({ panel: 'steps' });
  record(!program.isRecording).catch((error: Error) => store.set({ problem: error.message }));
}

export function RecordButton() {
  const { program, isRunning } = useStore();
  const isRecording = !!program?.isRecording;
  return (
    <button
      class={isRecording ? 'record record-on' : 'record'}
      aria-pressed={isRecording}
      disabled={!isRunning}
      title="Record what is done in the program (R)"
      onClick={toggleRecording}
    >
      {isRecording ? 'Stop' : 'Record'}
      {isRecording && <span class="unseen"> recording</span>}
    </button>
  );
}
