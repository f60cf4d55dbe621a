// A program in the inspector, and the inspector in a real browser.
//   TARNI: the tool
import { spawn } from 'node:child_process';
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { createInterface } from 'node:readline';

const require = createRequire(new URL('../../webui/package.json', import.meta.url));
const { chromium } = require('playwright-core');
const axe = require.resolve('axe-core/axe.min.js');

let browser;

export class Inspected {
  static async start(...command) {
    const made = new Inspected();
    made.folder = mkdtempSync(join(tmpdir(), 'inspected-'));
    made.tool = spawn(
      process.env.TARNI,
      ['inspect', '--no-browser', '--display', '--', ...command],
      {
        env: { ...process.env, XDG_RUNTIME_DIR: made.folder, HOME: made.folder, LANGUAGE: 'en' },
        stdio: ['ignore', 'pipe', 'inherit'],
      },
    );
    const lines = createInterface(made.tool.stdout);
    made.address = await new Promise((resolve) => lines.once('line', resolve));
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
    this.problems = [];
    this.page.on('pageerror', (error) => this.problems.push(String(error)));
    this.page.on('console', (line) => line.type() === 'error' && this.problems.push(line.text()));
    this.page.setDefaultTimeout(20000);
    await this.page.goto(this.address + hash);
    try {
      await this.page.getByText('running', { exact: true }).waitFor();
      await this.page.locator('.window img').first().waitFor();
    } catch (error) {
      throw new Error(`${error.message}\nThe page says:\n${await this.page.innerText('body')}`);
    }
    return this.page;
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

export async function closeBrowser() {
  await browser?.close();
}
