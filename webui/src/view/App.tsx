import { useEffect } from 'preact/hooks';
import { Columns } from './Columns';
import { Details } from './Details';
import { Chooser, Notice } from './Notice';
import { Picture } from './Picture';
import { toggleRecording } from './RecordButton';
import { StepsPanel } from './StepList';
import { store, useStore } from './store';
import { TopBar } from './TopBar';
import { TreeView } from './TreeView';

function isTyping(event: KeyboardEvent): boolean {
  return (event.target as HTMLElement).matches('input, select, textarea, [role=application]');
}

function useShortcuts(): void {
  useEffect(() => {
    const onKey = (event: KeyboardEvent) => {
      if (isTyping(event) || event.ctrlKey || event.altKey || event.metaKey) return;
      if (event.key === '/') {
        event.preventDefault();
        store.set({ panel: 'tree' });
        document.querySelector<HTMLInputElement>('#search')?.select();
      }
      const key = event.key.toLowerCase();
      if (key === 'a' && store.isRunning) store.set({ act: !store.act });
      if (key === 'r') toggleRecording();
      if (event.key === 'Escape') store.set({ query: '', marked: [], problem: '' });
    };
    addEventListener('keydown', onKey);
    return () => removeEventListener('keydown', onKey);
  }, []);
}

function Right() {
  const { panel } = useStore();
  return panel === 'steps' ? <StepsPanel /> : <Details />;
}

export function App() {
  const { program, problem } = useStore();
  useShortcuts();
  const hasProgram = program && program.state !== 'none';
  return (
    <>
      <TopBar />
      <Notice />
      {problem && (
        <div class="notice notice-problem" role="alert">
          {problem}
          <button class="quiet" onClick={() => store.set({ problem: '' })}>
            Close
          </button>
        </div>
      )}
      {hasProgram ? (
        <Columns picture={<Picture />} tree={<TreeView />} right={<Right />} />
      ) : (
        program && <Chooser />
      )}
    </>
  );
}
