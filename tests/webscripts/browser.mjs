// A real browser with pages on two origins, and the calls that the agent makes into them.
//   SCRIPTS, PAGES: folders of the built page scripts and pages
import { readFile, readdir } from 'node:fs/promises';
import { createServer } from 'node:http';
import { createRequire } from 'node:module';
import { join } from 'node:path';

const require = createRequire(new URL('../../webscripts/package.json', import.meta.url));
const { chromium } = require('playwright-core');

const inOrder = [
  ...['preCheck.js', 'jquery.js', 'TARNI_bililiteRange.js', 'TARNI_sendkeys.js'],
  ...['xpathbuilder.js', 'hybridrecorder.js', 'hybridplayer.js'],
];

export async function allScripts() {
  const names = await readdir(process.env.SCRIPTS);
  const scripts = {};
  for (const name of names) scripts[name] = await readFile(join(process.env.SCRIPTS, name), 'utf8');
  return scripts;
}

async function startServer(pages) {
  const server = createServer(async (request, response) => {
    const name = new URL(request.url, 'http://any').pathname.slice(1);
    try {
      const body = pages[name] ?? (await readFile(join(process.env.PAGES, name)));
      const type = name.endsWith('.js') ? 'text/javascript' : 'text/html; charset=utf-8';
      response.writeHead(200, { 'content-type': type, ...pages[`${name} headers`] }).end(body);
    } catch {
      response.writeHead(404).end();
    }
  });
  await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
  return server;
}

// What the agent does with a page.
class Agent {
  constructor(page, scripts) {
    this.page = page;
    this.scripts = scripts;
  }

  // Past Playwright's own helpers, which need a page that has left the language alone.
  async call(expression) {
    this.session ??= await this.page.context().newCDPSession(this.page);
    const options = { expression, returnByValue: true, silent: true };
    const { result, exceptionDetails } = await this.session.send('Runtime.evaluate', options);
    if (exceptionDetails) throw new Error(result.description);
    return result.value;
  }

  // One turn of the agent's poll: injects, or asks for steps.
  async poll() {
    const done = await this.call("typeof IsInjectionDone === 'function' && IsInjectionDone()");
    if (done === 'DONE') return this.call('startRecording()');
    for (const name of inOrder) {
      const isWanted = name !== 'jquery.js' || (await this.call('IsJqueryLoaded()')) === 'False';
      if (isWanted) await this.call(this.scripts[name]).catch(() => {});
    }
    return '';
  }

  async inject() {
    await this.poll();
    await this.poll();
  }

  // All steps until `count` have come, as the agent would have sent them.
  async steps(count) {
    const steps = [];
    const end = Date.now() + 10000;
    while (steps.length < count) {
      if (Date.now() > end) throw new Error(`only ${steps.length} steps: ${JSON.stringify(steps)}`);
      const text = await this.poll().catch(() => '');
      if (text) steps.push(...JSON.parse(text));
      await this.page.waitForTimeout(50);
    }
    return steps;
  }

  async find(tag, accessor = '', value = '', inside = undefined) {
    const values = [tag, accessor, value, ...(inside ? [inside] : [])];
    const name = inside ? 'findElementsInsideElement' : 'findElements';
    const text = await this.call(`${name}(${values.map((v) => JSON.stringify(v)).join(',')})`);
    return text ? JSON.parse(text).map((entry) => entry.elementID) : [];
  }

  click(id) {
    return this.call(`performClick(${JSON.stringify(id)})`);
  }

  type(id, text) {
    return this.call(`performTypeText(${JSON.stringify(id)}, ${JSON.stringify(text)})`);
  }

  async text(id) {
    const text = await this.call(`tarni_getText(${JSON.stringify(id)})`);
    return text ? JSON.parse(text)[0].output : undefined;
  }
}

export class Browser {
  static async start() {
    const made = new Browser();
    made.pages = {};
    made.scripts = await allScripts();
    made.servers = [await startServer(made.pages), await startServer(made.pages)];
    [made.origin, made.otherOrigin] = made.servers.map(
      (server) => `http://127.0.0.1:${server.address().port}`,
    );
    const options = { executablePath: '/usr/bin/chromium-headless-shell', args: ['--no-sandbox'] };
    made.chromium = await chromium.launch(options);
    return made;
  }

  // A page of the samples, or one whose contents are given, with the scripts in it.
  async open(name, contents = undefined) {
    const page = await this.openBare(name, contents);
    const agent = new Agent(page, this.scripts);
    await agent.inject();
    return { page, agent };
  }

  async openBare(name, contents = undefined) {
    if (contents !== undefined) this.pages[name] = contents;
    const page = await this.chromium.newPage();
    page.setDefaultTimeout(10000);
    await page.goto(`${this.origin}/${name}`);
    return page;
  }

  agentFor(page) {
    return new Agent(page, this.scripts);
  }

  async close() {
    await this.chromium.close();
    for (const server of this.servers) server.close();
  }
}

// A step as a line: action, element, data.
export function line(step) {
  const [object, data] = step.arguments;
  return `${step.action} ${object.className} "${object.sahiText}" ${JSON.stringify(data.data)}`;
}
