// What the inspector takes from a change in the program to the page, to choose an element, while
// the program rests and while it paints:
//   bench/run-inspector
import { readFileSync, readdirSync } from 'node:fs';
import { fileURLToPath } from 'node:url';
import { Inspected, closeBrowser } from '../tests/inspector/inspected.mjs';

const program = (name) => fileURLToPath(new URL(`../tests/inspector/${name}`, import.meta.url));
const python = '/usr/bin/python3';
const seconds = 10;

function report(what, measured, aim) {
  console.log(`inspector: ${what}: ${measured} (aim ${aim})`);
}

async function inspect(command, measure) {
  const inspected = await Inspected.start(...command);
  try {
    await measure(inspected, await inspected.open());
  } finally {
    await inspected.stop();
  }
}

function spread(times) {
  const sorted = times.sort((one, other) => one - other);
  const part = (share) => sorted[Math.floor((sorted.length - 1) * share)].toFixed(1);
  return `${part(0.5)} ms, ${part(0.95)} ms of 19 in 20`;
}

// A label that says when it was changed, in the row that shows it.
await inspect([python, program('many.py'), '994', 'ticking'], async (inspected, page) => {
  await inspected.choose('class:UILabel');
  await inspected.search('');
  const delays = await page.evaluate(async () => {
    const chosen = '[role=treeitem][aria-selected=true] .row-name';
    const seen = [];
    await new Promise((resolve) => {
      const observer = new MutationObserver(() => {
        const time = Number(document.querySelector(chosen)?.textContent);
        if (!time || seen[seen.length - 1]?.time === time) return;
        seen.push({ time, delay: performance.timeOrigin + performance.now() - time });
        if (seen.length > 50) resolve(observer.disconnect());
      });
      observer.observe(document.body, { childList: true, characterData: true, subtree: true });
    });
    return seen.slice(1).map((one) => one.delay);
  });
  report('from a change to the tree on the page, 1,000 elements', spread(delays), '< 50 ms');
});

await inspect([python, program('many.py'), '10000'], async (inspected, page) => {
  const times = await page.evaluate(async () => {
    const screen = document.querySelector('.screen');
    const box = screen.getBoundingClientRect();
    const painted = () =>
      new Promise((resolve) => {
        requestAnimationFrame(() => {
          const { port1, port2 } = new MessageChannel();
          port1.onmessage = resolve;
          port2.postMessage(null);
        });
      });
    const times = [];
    for (let i = 1; i <= 50; i += 1) {
      const clientX = box.left + (box.width * ((i * 7) % 50)) / 51;
      const clientY = box.top + (box.height * (i + 2)) / 55;
      const begin = performance.now();
      screen.dispatchEvent(new MouseEvent('click', { clientX, clientY, bubbles: true }));
      await painted();
      times.push(performance.now() - begin);
    }
    return times;
  });
  report('choosing in the picture among 10,000, until it is painted', spread(times), '< 50 ms');

  const pid = await inspected.pid();
  const pids = { 'the program': pid, 'the tool': inspected.tool.pid };
  // Milliseconds, of all its threads.
  const used = (one) =>
    readdirSync(`/proc/${one}/task`)
      .map((thread) => readFileSync(`/proc/${one}/task/${thread}/schedstat`, 'utf8'))
      .reduce((sum, line) => sum + Number(line.split(' ')[0]) / 1e6, 0);
  await inspected.call('wait.rest', { quiet: 1000 });
  const before = Object.values(pids).map(used);
  await new Promise((resolve) => setTimeout(resolve, seconds * 1000));
  Object.entries(pids).forEach(([name, one], i) => {
    const share = (used(one) - before[i]) / (seconds * 10);
    report(`at rest, of a core: ${name}`, `${share.toFixed(1)} %`, '< 2 %');
  });
});

await inspect([python, program('unruly.py')], async (inspected, page) => {
  const count = await page.evaluate(async (time) => {
    let pictures = 0;
    const events = new EventSource('events');
    await new Promise((resolve) => (events.onopen = resolve));
    events.onmessage = ({ data }) => (pictures += JSON.parse(data).type === 'picture');
    await new Promise((resolve) => setTimeout(resolve, time));
    events.close();
    return pictures;
  }, seconds * 1000);
  report('pictures a second of what is painted 60 times', (count / seconds).toFixed(1), '<= 10');
});

await closeBrowser();
