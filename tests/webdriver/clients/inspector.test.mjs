// Appium Inspector's page in a real browser: the tree and the picture of a program, an element chosen
// in the tree and tapped. PICTURE names a file for what the page shows in the end.
import assert from 'node:assert/strict';
import { once } from 'node:events';
import { readFile } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join } from 'node:path';
import { test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { chromium } from 'playwright-core';
import { capabilities, startServer } from './Server.mjs';

const folder = fileURLToPath(new URL('node_modules/appium-inspector-plugin/dist-browser/', import.meta.url));
const types = { '.html': 'text/html', '.js': 'text/javascript', '.css': 'text/css', '.json': 'application/json' };

async function serveInspector(test) {
  const server = createServer(async (request, response) => {
    const name = new URL(request.url, 'http://any').pathname.replace(/^\/inspector\//, '') || 'index.html';
    try {
      const body = await readFile(join(folder, name));
      response.writeHead(200, { 'content-type': types[extname(name)] ?? 'application/octet-stream' }).end(body);
    } catch {
      response.writeHead(404).end();
    }
  });
  server.listen(0, '127.0.0.1');
  await once(server, 'listening');
  test.after(() => server.close());
  return `http://127.0.0.1:${server.address().port}`;
}

function addressOf(origin, { hostname, port }) {
  const caps = Object.entries(capabilities).map(([name, value]) => ({ type: 'text', enabled: true, name, value }));
  const state = { serverType: 'remote', server: { remote: { hostname, port, path: '/' } }, caps };
  return `${origin}/inspector/?autoStart=1&state=${encodeURIComponent(JSON.stringify(state))}`;
}

test('the inspector shows a program, chooses an element and taps it', { timeout: 200_000 }, async (test) => {
  const origin = await serveInspector(test);
  const server = await startServer(test, '--allow-cors', origin);
  const browser = await chromium.launch({ executablePath: '/usr/bin/chromium-headless-shell', args: ['--no-sandbox'] });
  test.after(() => browser.close());
  const page = await browser.newPage({ viewport: { width: 1500, height: 900 } });
  page.setDefaultTimeout(60_000);
  await page.goto(addressOf(origin, server));

  const picture = page.locator('img#screenshot');
  await picture.waitFor();
  assert.ok(await picture.evaluate((image) => image.naturalWidth > 400), 'the picture is one of a window');

  // The search opens the tree where it finds something.
  const tree = page.locator('#sourceContainer');
  const search = tree.getByPlaceholder('Search Source');
  await search.fill('Create new database');
  await tree.locator('.ant-tree-treenode', { hasText: 'Create new database' }).last().click();
  const chosen = page.locator('#btnTapElement');
  await chosen.waitFor();
  const locators = await page.locator('.ant-table').first().innerText();
  assert.match(locators, /xpath/);
  if (process.env.PICTURE) await page.screenshot({ path: process.env.PICTURE.replace('.png', '-chosen.png') });

  await chosen.click();
  await search.fill('databaseName');
  await tree.locator('.ant-tree-treenode', { hasText: 'databaseName' }).first().waitFor();
  if (process.env.PICTURE) await page.screenshot({ path: process.env.PICTURE });
});
