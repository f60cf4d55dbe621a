// What the page scripts cost in a real browser, each held against a bare evaluation of the same run:
//   bench/run-webscripts
// With TARNI_BENCH_ROWS the rows go to that file, too, for bench/report.
import { writeFileSync } from 'node:fs';
import { Browser } from '../tests/webscripts/browser.mjs';

const rounds = 200;
const fewRounds = 20;

async function median(work, count = rounds) {
  const times = [];
  for (let i = 0; i < count; i += 1) {
    const start = process.hrtime.bigint();
    await work();
    times.push(Number(process.hrtime.bigint() - start) / 1e6);
  }
  return times.sort((a, b) => a - b)[count / 2];
}

// Time on the page's main thread alone, in milliseconds a call.
async function inPage(agent, call) {
  const loop = `for (let i = 0; i < ${rounds}; i += 1) ${call};`;
  return (await agent.call(`(() => { const t = performance.now(); ${loop}
    return performance.now() - t; })()`)) / rounds;
}

const rows = [];
const figures = [];
function report(name, milliseconds, baseline, base, aim) {
  const most = Number(aim.replace(/[^0-9.]/g, ''));
  figures.push({
    name: `web: ${name}, ${baseline}`,
    what: `page scripts: ${name}`,
    measuredNanoseconds: milliseconds * 1e6,
    against: baseline,
    baselineNanoseconds: base * 1e6,
    kind: 'ratio',
    figure: milliseconds / base,
    aim: most,
    isMet: milliseconds / base <= most,
  });
  rows.push({
    what: name,
    ms: milliseconds.toFixed(3),
    'held against': baseline,
    'its ms': base.toFixed(3),
    ratio: (milliseconds / base).toFixed(2),
    aim,
  });
}

const browser = await Browser.start();
const spans = Array.from({ length: 10000 }, (_, i) => `<span>item ${i}</span> `).join('');
const { agent } = await browser.open('many.html', `<div>${spans}</div>`);

const bare = await median(() => agent.call("'' + (1 + 1)"));
const isDone = await median(() => agent.call('IsInjectionDone()'));
const start = await median(() => agent.call('startRecording()'));
report('a poll: both its calls', isDone + start, 'two bare evaluations', 2 * bare, '<= 2');
const polled = await inPage(agent, 'IsInjectionDone(), startRecording()');
report('a poll, on the main thread', polled, 'a millisecond', 1, '< 1');

const query = "[...document.querySelectorAll('span')].map((e, i) => `web-1-${i}`).join()";
const queried = await median(() => agent.call(query), fewRounds);
const found = await median(() => agent.call("findElements('span', '', '')"), fewRounds);
report('10,000 elements by tag', found, 'a bare query for them', queried, '<= 3');
const texts = "document.evaluate(\"//span[normalize-space(.)='item 9999']\", document, null, 7, null).snapshotLength + ''";
const byPath = await median(() => agent.call(texts), fewRounds);
const byText = await median(() => agent.call("findElements('span', 'text', 'item 9999')"), fewRounds);
report('one of 10,000 elements by text', byText, 'a bare XPath for it', byPath, '<= 3');
const locator = agent.page.locator('span', { hasText: 'item 9999' });
const playwright = await median(() => locator.count(), fewRounds);
report('one of 10,000 elements by text', byText, "Playwright's own", playwright, '< 1');

console.table(rows);
if (process.env.TARNI_BENCH_ROWS) {
  writeFileSync(process.env.TARNI_BENCH_ROWS, JSON.stringify(figures));
}
await browser.close();
