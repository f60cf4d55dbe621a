// Records what a person does in the page, and in spy mode tells what they point at.
import { eachDocument } from './lib/frames.js';
import { define } from './lib/globals.js';
import { release } from './lib/hold.js';
import { leaveToNextPage, take, takeNow } from './lib/outbox.js';
import { flush, ownActsFollow, personActs, recording } from './lib/recording.js';
import { spying, stopSpying } from './lib/spying.js';

function start() {
  // The agent tells every page that comes while it spies.
  let handlers = recording;

  function handle(event) {
    const handler = handlers[event.type];
    if (!handler) return;
    try {
      handler(event);
    } catch (error) {
      console.error('tarni: a step was not recorded:', error);
    }
  }

  const look = eachDocument((view) => {
    const types = Object.keys({ ...recording, ...spying });
    for (let i = 0; i < types.length; i += 1) {
      view.addEventListener(types[i], handle, { capture: true, passive: false });
    }
  });
  window.addEventListener('pagehide', leaveToNextPage);

  function setMode(isSpying) {
    handlers = isSpying ? spying : recording;
    if (!isSpying) stopSpying();
  }

  function handOver(steps) {
    if (steps) setTimeout(release, 0);
    return steps;
  }

  define({
    startRecording() {
      look();
      return handOver(take());
    },
    // The person has gone on to a native control.
    recordedUntilNow() {
      flush();
      return handOver(takeNow());
    },
    tarniOwnActs: ownActsFollow,
    tarniPersonsActs: personActs,
    switchtospymode() {
      setMode(true);
    },
    switchtorecordermode() {
      setMode(false);
    },
  });
  window.TARNI.recorder = true;
}

if (!window.TARNI.recorder) start();
