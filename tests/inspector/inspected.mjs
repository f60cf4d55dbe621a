// A program in the inspector, and the inspector in a real browser.
//   TARNI: the tool; KEPT: a folder for what a case that fails leaves behind
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { test } from 'node:test';
import { createInterface } from 'node:readline';

const require = createRequire(new URL('../../webui/package.json', import.meta.url));
const { chromium } = require('playwright-core');
const axe = require.resolve('axe-core/axe.min.js');

let browser;

export async function closeBrowser() {
  await browser?.close();
}

// A case on a program of its own. One that fails keeps the page as it was.
export function inspecting(name, command, body) {
  test(name, async (t) => {
    const inspected = await Inspected.start(...command);
    t.after(() => inspected.stop());
    try {
      await body(inspected, t);
      assert.deepEqual(inspected.problems, []);
    } catch (error) {
      error.message += await inspected.keep(name);
      throw error;
    }
  });
}

export class Inspected {
  static async start(...command) {
    const made = new Inspected();
    made.problems = [];
    made.folder = mkdtempSync(join(tmpdir(), 'inspected-'));
    made.environment = { ...process.env, XDG_RUNTIME_DIR: made.folder, HOME: made.folder, TMPDIR: made.folder, LANGUAGE: 'en' };
    // Root gets no sandbox for pages.
    made.environment.QTWEBENGINE_DISABLE_SANDBOX = '1';
    const words = ['inspect', '--no-browser', '--display', '--', ...command];
    const options = { env: made.environment, stdio: ['ignore', 'pipe', 'inherit'] };
    made.tool = spawn(process.env.TARNI, words, options);
    const lines = createInterface(made.tool.stdout);
    made.address = await new Promise((resolve, reject) => {
      lines.once('line', resolve);
      made.tool.once('exit', (code) => reject(new Error(`tarni inspect ended with ${code}`)));
    });
    browser ??= await chromium.launch({
      executablePath: '/usr/bin/chromium-headless-shell',
      args: ['--no-sandbox'],
    });
    return made;
  }

  async open(hash = '', options = {}) {
    const context = await browser.newContext({
      viewport: { width: 1400, height: 800 },
      ...options,
    });
    this.page = await context.newPage();
    this.page.on('pageerror', (error) => this.problems.push(String(error)));
    this.page.on('console', (line) => line.type() === 'error' && this.problems.push(line.text()));
    this.page.setDefaultTimeout(Number(process.env.PATIENCE ?? 30000));
    await this.page.goto(this.address + hash);
    await this.isThere();
    return this.page;
  }

  // The program is shown, and has come to rest if it ever does: nothing moves away from under the
  // hand.
  async isThere() {
    await this.page.getByText('running', { exact: true }).waitFor();
    await this.page.locator('.window img').first().waitFor();
    await this.call('wait.rest', { quiet: 300, timeout: 3000 });
  }

  call(method, params = {}) {
    return this.page.evaluate(
      async ([method, params]) => {
        const headers = { 'Content-Type': 'application/json' };
        const body = JSON.stringify({ method, params });
        return (await fetch('call', { method: 'POST', headers, body })).json();
      },
      [method, params],
    );
  }

  async keep(name) {
    if (!this.page) return '';
    const path = join(process.env.KEPT ?? tmpdir(), name.replace(/\W+/g, '-'));
    mkdirSync(path, { recursive: true });
    await this.page.screenshot({ path: join(path, 'page.png') }).catch(() => {});
    const text = await this.page.innerText('body').catch(String);
    writeFileSync(join(path, 'page.txt'), [text, ...this.problems].join('\n'));
    return `\nThe page is kept in ${path}. It says:\n${text.slice(0, 2000)}`;
  }

  row(text) {
    return this.page.getByRole('treeitem').filter({ hasText: text }).first();
  }

  chosen() {
    return this.page.locator('[role=treeitem][aria-selected=true]');
  }

  // The middle of an element in the picture.
  async middleOf(mark = '.mark-chosen') {
    const box = await this.page.locator(mark).first().boundingBox();
    return [box.x + box.width / 2, box.y + box.height / 2];
  }

  async search(text) {
    await this.page.getByRole('searchbox').fill(text);
  }

  // By its selector, once it is there; answers the place of its middle in the picture.
  async choose(query) {
    await this.search(query);
    await this.page.getByText(/^[1-9]\d* found/).waitFor();
    await this.page.getByRole('searchbox').press('Enter');
    return this.middleOf();
  }

  async act(isOn) {
    const acts = this.page.getByRole('switch', { name: 'Act' });
    if ((await acts.getAttribute('aria-checked')) !== String(isOn)) await acts.click();
  }

  async pid() {
    const facts = await this.page.locator('.program-facts').innerText();
    return Number(facts.match(/\d+$/)[0]);
  }

  steps() {
    return this.page.locator('.step');
  }

  // Of a session file that was saved before.
  async openSteps(steps) {
    await this.page.getByRole('tab', { name: 'Steps' }).click();
    const lines = steps.map((step) => JSON.stringify(step)).join(',\n');
    await this.openFile(`{"tarniSession":2,"steps":[\n${lines}\n]}\n`);
    await this.steps().nth(steps.length - 1).waitFor();
  }

  async openFile(text) {
    const file = { name: 'old.json', mimeType: '', buffer: Buffer.from(text) };
    await this.page.locator('input[type=file]').setInputFiles(file);
  }

  async record(isOn) {
    const name = isOn ? 'Record' : 'Stop recording';
    await this.page.getByRole('tab', { name: 'Steps' }).click();
    await this.page.getByRole('button', { name, exact: true }).click();
    await this.page.getByRole('button', { name: isOn ? 'Stop recording' : 'Record', exact: true }).waitFor();
  }

  async accessibilityProblems() {
    const source = readFileSync(axe, 'utf8');
    // Past the page's own policy, which lets no script in.
    const client = await this.page.context().newCDPSession(this.page);
    await client.send('Runtime.evaluate', { expression: source });
    const { violations } = await this.page.evaluate(() => window.axe.run());
    return violations.map(({ id, nodes }) => `${id}: ${nodes.map((one) => one.html).join(' ')}`);
  }

  async stop() {
    await this.page?.context().close();
    const ended = new Promise((resolve) => this.tool.once('exit', resolve));
    this.tool.kill('SIGTERM');
    await ended;
    rmSync(this.folder, { recursive: true, force: true });
  }
}
