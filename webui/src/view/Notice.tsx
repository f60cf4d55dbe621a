// A clear word when there is no program to look at, and what to do about it.
import { useEffect, useState } from 'preact/hooks';
import { inspect, programs, startAgain, type RunningProgram } from '../net/server';
import { store, useStore } from './store';

export function Notice() {
  const { program, isLost } = useStore();
  if (isLost) {
    return (
      <div class="notice" role="alert">
        <b>tarni inspect has ended.</b> Start it again in the terminal; it says a new address.
      </div>
    );
  }
  switch (program?.state) {
    case 'starting':
      return (
        <div class="notice" role="status">
          <b>{program.name} is starting…</b>
        </div>
      );
    case 'busy':
      return (
        <div class="notice" role="status">
          <b>{program.name} is busy.</b> What stands here is what it showed last.
          {program.why && <span class="faint"> {program.why}</span>}
        </div>
      );
    case 'ended':
      return <Ended />;
    default:
      return null;
  }
}

function Ended() {
  const { program } = useStore();
  const start = () => startAgain().catch((error: Error) => store.set({ problem: error.message }));
  return (
    <div class="notice notice-ended" role="alert">
      <b>{program!.name} has ended.</b> What stands here is what it showed last.
      {program!.canStart && (
        <button class="main" onClick={start}>
          Start it again
        </button>
      )}
      <button onClick={() => store.set({ program: { ...program!, state: 'none' } })}>
        Choose another
      </button>
      {program!.why.includes('\n') && (
        <details open={store.tree.size === 0}>
          <summary>What it said</summary>
          <pre>{program!.why}</pre>
        </details>
      )}
    </div>
  );
}

// Asked again while nothing is chosen: a program may have been started since.
export function Chooser() {
  const [running, setRunning] = useState<RunningProgram[] | null>(null);
  useEffect(() => {
    const ask = () =>
      programs()
        .then((answer) => setRunning(answer.programs))
        .catch(() => {});
    void ask();
    const timer = setInterval(ask, 2000);
    return () => clearInterval(timer);
  }, []);
  return (
    <main class="chooser">
      <h2>Which program?</h2>
      {running?.length === 0 && (
        <p>
          None runs with the agent. Start one in a terminal, and it shows up here:
          <code>tarni run -- keepassxc</code>
        </p>
      )}
      <ul>
        {running?.map((one) => (
          <li key={one.pid}>
            <button onClick={() => inspect(one.pid)}>
              <b>{one.name}</b>
              <span class="faint">
                {one.command} · process {one.pid}
              </span>
            </button>
          </li>
        ))}
      </ul>
    </main>
  );
}
