// The inspector as a person uses it: a real program, the real tool, a real browser.
//   TARNI: the tool; QUICK: a program of Qt Quick
import assert from 'node:assert/strict';
import { request } from 'node:http';
import { after, test } from 'node:test';
import { fileURLToPath } from 'node:url';
import { closeBrowser, Inspected } from './inspected.mjs';

after(closeBrowser);

async function inspecting(t, ...command) {
  const inspected = await Inspected.start(...command);
  t.after(() => inspected.stop());
  return inspected;
}

test('a person looks, searches and chooses, and a reload keeps it', async (t) => {
  const inspected = await inspecting(t, 'keepassxc');
  const page = await inspected.open();

  await inspected.row('Create new database').click();
  await page.mouse.click(...(await inspected.middleOf()));
  assert.match(await inspected.chosen().innerText(), /Create new database/, 'by the picture');
  const best = page.locator('.locator').first();
  await best.getByText('1 match', { exact: true }).waitFor();

  await inspected.search('id:menubar');
  await page.getByText('1 found').waitFor();
  await inspected.search('//*[@text="Create new database"]');
  await page.locator('.row-found').first().waitFor();
  assert.ok((await page.locator('.mark-found').count()) > 0, 'found ones are marked');
  await inspected.search('//*[');
  await page.getByText('That is no XPath').waitFor();

  await inspected.search('database');
  await page.getByRole('searchbox').press('Enter');
  const chosen = await inspected.chosen().innerText();
  assert.match(chosen, /database/i);
  await page.reload();
  await page.locator('.window img').first().waitFor();
  assert.equal(await inspected.chosen().innerText(), chosen);
  assert.equal(await page.getByRole('searchbox').inputValue(), 'database');

  await page.locator('#tree').press('ArrowLeft');
  assert.notEqual(await inspected.chosen().innerText(), chosen);
  await page.keyboard.press('/');
  assert.ok(await page.getByRole('searchbox').evaluate((box) => box === document.activeElement));

  await page.getByLabel('Try a locator').fill('kind=UIButton');
  await page.locator('#trial-said').getByText('matches').waitFor();
  assert.deepEqual(await inspected.accessibilityProblems(), []);
  assert.deepEqual(inspected.problems, []);
});

test('a person acts in the picture, and the tree follows', async (t) => {
  const inspected = await inspecting(t, 'keepassxc');
  const page = await inspected.open();
  await inspected.row('Create new database').click();
  const place = await inspected.middleOf();
  await page.getByRole('switch', { name: 'Act' }).click();
  await page.mouse.click(...place);
  await page.getByRole('group', { name: 'Windows' }).getByRole('button').nth(1).waitFor();
  // The field that has the focus takes what is typed.
  await page.getByRole('application').focus();
  await page.keyboard.press('End');
  await page.keyboard.type(' of Ada');
  await inspected.search('Passwords of Ada');
  await page.getByText('1 found').waitFor();
  await page.getByRole('application').press('Escape');
  await page.getByText('0 found').waitFor();
  await page.getByRole('application').press('Shift+Escape');
  assert.equal(await page.getByRole('switch').getAttribute('aria-checked'), 'false');
  assert.deepEqual(inspected.problems, []);
});

test('what is done becomes steps, which are edited and played', async (t) => {
  const inspected = await inspecting(t, process.env.QUICK);
  const page = await inspected.open();
  const places = [];
  for (const name of ['User name', 'Log in']) {
    await inspected.search(`//*[@placeholder='${name}' or @text='${name}']`);
    await page.getByRole('searchbox').press('Enter');
    places.push(await inspected.middleOf());
  }
  await page.locator('#tree').press('r');
  await page.getByRole('button', { name: 'Stop recording' }).waitFor();
  await page.getByRole('switch', { name: 'Act' }).click();
  await page.mouse.click(...places[0]);
  await page.keyboard.type('Ada');
  await page.mouse.click(...places[1]);
  const steps = page.locator('.step');
  await steps.nth(2).getByText('click').waitFor();
  await page.getByRole('button', { name: 'Stop recording' }).click();
  await page.getByRole('application').press('Shift+Escape');

  const typed = page.getByLabel('text of step 2');
  await typed.fill(' and Grace');
  await typed.press('Enter');
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.locator('.step-passed').nth(2).waitFor();
  await inspected.search('Hello, Ada and Grace');
  await page.getByText(/^[1-9]\d* found/).waitFor();

  await page.getByRole('button', { name: 'Undo' }).click();
  assert.equal(await typed.inputValue(), 'Ada');
  await inspected.search("//*[@text='Log in']");
  await page.getByRole('searchbox').press('Enter');
  await page.getByRole('button', { name: 'is enabled' }).click();
  assert.match(await steps.nth(3).innerText(), /check/);
  const [saved] = await Promise.all([
    page.waitForEvent('download'),
    page.getByRole('button', { name: 'Save' }).click(),
  ]);
  await page.getByRole('button', { name: 'Delete step 4' }).click();
  assert.equal(await steps.count(), 3);
  await page.locator('input[type=file]').setInputFiles(await saved.path());
  await steps.nth(3).waitFor();
  assert.deepEqual(await inspected.accessibilityProblems(), []);
  assert.deepEqual(inspected.problems, []);
});

test('a program that ends is said to have ended, and starts again', async (t) => {
  const inspected = await inspecting(t, process.env.QUICK);
  const page = await inspected.open();
  const pid = async () => (await page.locator('.program-facts').innerText()).match(/\d+$/)[0];
  const first = await pid();
  process.kill(Number(first));
  await page.getByText('has ended').waitFor();
  await page.getByRole('button', { name: 'Start it again' }).click();
  await page.getByText('running', { exact: true }).waitFor();
  assert.notEqual(await pid(), first);
  await inspected.row('Log in').click();
  await page.locator('.mark-chosen').waitFor();
  assert.deepEqual(inspected.problems, []);
});

test('ten thousand elements are searched, chosen and scrolled', async (t) => {
  const many = fileURLToPath(new URL('many.py', import.meta.url));
  const inspected = await inspecting(t, '/usr/bin/python3', many, '10000');
  const page = await inspected.open();
  await page.getByText(/^10,00\d elements$/).waitFor();
  assert.ok((await page.getByRole('treeitem').count()) < 100, 'rows that can be seen alone');
  await inspected.search('n9999');
  await page.getByRole('searchbox').press('Enter');
  assert.match(await inspected.chosen().innerText(), /n9999/);
  await inspected.search('text:n999');
  await page.getByText('11 found').waitFor();
  await page.locator('#tree').press('End');
  await page.locator('#tree').press('Home');
  assert.match(await inspected.chosen().innerText(), /Many/);
});

function ask(address, path, headers = {}, method = 'GET') {
  const { port } = new URL(address);
  return new Promise((resolve, reject) => {
    const asked = request({ port, host: '127.0.0.1', path, method, headers, agent: false }, (answer) => {
      answer.resume();
      resolve(answer);
    });
    asked.on('error', reject);
    asked.end(method === 'POST' ? '{"method":"app.info"}' : undefined);
  });
}

test('nobody else gets in', async (t) => {
  const inspected = await inspecting(t, process.env.QUICK);
  const { pathname } = new URL(inspected.address);
  const status = async (...how) => (await ask(inspected.address, ...how)).statusCode;
  const json = { 'content-type': 'application/json', 'content-length': 21 };

  const page = await ask(inspected.address, pathname);
  assert.equal(page.statusCode, 200);
  assert.match(page.headers['content-security-policy'], /default-src 'none'/);
  assert.equal(await status('/'), 404, 'no token');
  assert.equal(await status(`/${'0'.repeat(48)}/events`), 404, 'another token');
  assert.equal(await status(pathname, { host: 'elsewhere.example' }), 403);
  assert.equal(await status(`${pathname}programs`, { origin: 'http://elsewhere.example' }), 403);
  const posted = (headers) => status(`${pathname}call`, { ...json, ...headers }, 'POST');
  assert.equal(await posted({ origin: 'http://elsewhere.example' }), 403);
  assert.equal(await posted({ 'content-type': 'text/plain' }), 415);
});
