// The report of a played session in a real browser: three hundred steps, some of which failed.
//   TARNI, PROGRAM: the tool, and a program with the agent in it
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { mkdtemp, readFile, rm, writeFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before, test } from 'node:test';

const require = createRequire(new URL('../../webscripts/package.json', import.meta.url));
const { chromium } = require('playwright-core');

const element = (kind, find) => ({ class: kind, locators: [{ find, matches: 1 }] });

// What a person could have done with the login screen, sixty times over.
function session() {
  const field = element('UITextField', { identifier: 'username' });
  const steps = [];
  for (let turn = 0; turn < 60; ++turn) {
    steps.push(
      { act: 'click', element: field, at: { x: 20, y: 20 } },
      { act: 'type', element: field, text: 'Ada ' },
      { act: 'click', element: element('UIButton', { identifier: 'login' }) },
      { act: 'switch', element: element('UISwitch', { identifier: 'remember' }), checked: turn % 2 === 0 },
      { act: 'check', element: element('UILabel', { identifier: 'welcome' }), textContains: 'Ada' },
    );
  }
  const evil = '<script>alert(1)</script>';
  steps[298] = { act: 'check', element: element('UILabel', { identifier: 'welcome' }), textIs: evil };
  steps[299] = { act: 'click', element: element('UIButton', { identifier: evil }) };
  const header = { tarniSession: 2, program: [process.env.PROGRAM], steps: 0 };
  return JSON.stringify(header).replace('0}', `[\n${steps.map((one) => JSON.stringify(one)).join(',\n')}\n]}\n`);
}

let folder;
let browser;
before(async () => {
  folder = await mkdtemp(join(tmpdir(), 'tarni-report-'));
  const file = join(folder, 'session.json');
  await writeFile(file, session(), { mode: 0o600 });
  const options = ['play', file, '--keep-going', '--timeout', '1', '--report', join(folder, 'out'), '--pictures'];
  await new Promise((resolve) => execFile(process.env.TARNI, options, { maxBuffer: 1e8 }, resolve));
  browser = await chromium.launch({ executablePath: '/usr/bin/chromium-headless-shell', args: ['--no-sandbox'] });
});
after(async () => {
  await browser?.close();
  await rm(folder, { recursive: true });
});

for (const [colorScheme, width] of [['light', 1400], ['dark', 420]]) {
  test(`the report tells three hundred steps, ${colorScheme}, ${width} wide`, async () => {
    const page = await browser.newPage({ colorScheme, viewport: { width, height: 900 } });
    const complaints = [];
    page.on('pageerror', (error) => complaints.push(error.message));
    page.on('console', (message) => complaints.push(message.text()));
    await page.goto(`file://${join(folder, 'out', 'index.html')}`);
    assert.equal(await page.locator('#steps li').count(), 300);
    // It begins with what failed.
    const detail = page.locator('#detail');
    assert.match(await detail.textContent(), /the check does not hold: it shows "Hello, Ada/);
    await page.locator('#steps').focus();
    await page.keyboard.press('ArrowDown');
    assert.match(await detail.textContent(), /300 {2}click[^]*fits nothing/);
    await page.keyboard.press('Home');
    const picture = detail.locator('figure').first().locator('img');
    await picture.evaluate((image) => image.decode());
    assert.equal(await detail.locator('.shot svg rect').count(), 1);
    const overflow = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
    assert.ok(overflow <= 0, `wider than its window by ${overflow}`);
    await page.addScriptTag({ content: await readFile(require.resolve('axe-core/axe.min.js'), 'utf8') });
    const { violations } = await page.evaluate(() => globalThis.axe.run());
    assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes[0].html}`), []);
    assert.deepEqual(complaints, []);
    await page.close();
  });
}
