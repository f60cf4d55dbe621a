// The inspector as a person uses it: a real program, the real tool, a real browser.
//   TARNI: the tool; QUICK: a program of Qt Quick
import assert from 'node:assert/strict';
import { request } from 'node:http';
import { after } from 'node:test';
import { fileURLToPath } from 'node:url';
import { closeBrowser, inspecting } from './inspected.mjs';

after(closeBrowser);

const many = fileURLToPath(new URL('many.py', import.meta.url));
const shop =
  "data:text/html,<title>Shop</title><button onclick=\"document.title='Sold'\">Buy</button>";
const unruly = fileURLToPath(new URL('unruly.py', import.meta.url));

inspecting('a person looks, searches and chooses, and a reload keeps it', ['keepassxc'], async (inspected) => {
  const page = await inspected.open();

  await inspected.row('Create new database').click();
  await page.mouse.click(...(await inspected.middleOf()));
  assert.match(await inspected.chosen().innerText(), /Create new database/, 'by the picture');
  const best = page.locator('.locator').first();
  await best.getByText('1 match', { exact: true }).waitFor();

  await inspected.search('id:menubar');
  await page.getByText('1 found').waitFor();
  await inspected.search('/UIApplication//*[@type="UIButton" and @text="Create new database"]');
  await page.locator('.row-found').first().waitFor();
  assert.ok((await page.locator('.mark-found').count()) > 0, 'found ones are marked');
  await inspected.search('//*[');
  await page.getByText('That is no XPath').waitFor();

  await inspected.choose('database');
  const chosen = await inspected.chosen().innerText();
  assert.match(chosen, /database/i);
  await page.reload();
  await inspected.isThere();
  assert.equal(await inspected.chosen().innerText(), chosen);
  assert.equal(await page.getByRole('searchbox').inputValue(), 'database');

  await page.locator('#tree').press('ArrowLeft');
  assert.notEqual(await inspected.chosen().innerText(), chosen);
  await page.keyboard.press('/');
  assert.ok(await page.getByRole('searchbox').evaluate((box) => box === document.activeElement));

  await page.getByLabel('Try a locator').fill('kind=UIButton');
  await page.locator('#trial-said').getByText('matches').waitFor();
  assert.deepEqual(await inspected.accessibilityProblems(), []);
});

inspecting('a person acts in the picture, and the tree follows', ['keepassxc'], async (inspected) => {
  const page = await inspected.open();
  await inspected.row('Create new database').click();
  const place = await inspected.middleOf();
  await page.getByRole('switch', { name: 'Act' }).click();
  await page.mouse.click(...place);
  await page.getByRole('group', { name: 'Windows' }).getByRole('button').nth(1).waitFor();
  // The field that has the focus takes what is typed.
  await page.getByRole('application').focus();
  await page.keyboard.press('End');
  await page.keyboard.type(' of Ad');
  const composer = await page.context().newCDPSession(page);
  await composer.send('Input.imeSetComposition', { text: '´', selectionStart: 1, selectionEnd: 1 });
  await composer.send('Input.insertText', { text: 'é' });
  await page.keyboard.insertText('☃');
  await page.keyboard.type('!x');
  // As a telephone's keyboard deletes.
  await composer.send('Input.dispatchKeyEvent', { type: 'keyDown', key: 'Unidentified', commands: ['deleteBackward'] });
  await inspected.search('Passwords of Adé☃!');
  await page.getByText('1 found').waitFor();
  await page.getByRole('application').press('Escape');
  await page.getByText('0 found').waitFor();
  await page.getByRole('application').press('Shift+Escape');
  assert.equal(await page.getByRole('switch').getAttribute('aria-checked'), 'false');
});

inspecting('a program that ends is said to have ended, and starts again', [process.env.QUICK], async (inspected) => {
  const page = await inspected.open();
  const first = await inspected.pid();
  const [{ element }] = (await inspected.call('window.list')).windows;
  const { locators } = await inspected.call('element.locators', { element });
  await inspected.act(true);
  await inspected.openSteps([{ act: 'close', element: { locators } }]);
  await page.evaluate(() => {
    const dot = document.querySelector('.dot');
    window.states = new Set();
    const see = () => window.states.add(dot.innerText);
    new MutationObserver(see).observe(dot, { subtree: true, childList: true, characterData: true });
  });
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.locator('.step-passed').waitFor();
  await page.getByText('has ended').waitFor();
  assert.deepEqual(await page.evaluate(() => [...window.states]), ['ended']);
  assert.equal(await page.getByRole('alert').count(), 1);
  assert.equal(await page.locator('.hint').count(), 0);
  await page.getByRole('button', { name: 'Start it again' }).click();
  await page.getByText('running', { exact: true }).waitFor();
  assert.notEqual(await inspected.pid(), first);
  await inspected.row('Log in').click();
  await page.locator('.mark-chosen').waitFor();
});

inspecting('ten thousand elements are searched, chosen and scrolled', ['/usr/bin/python3', many, '10000'], async (inspected) => {
  const page = await inspected.open();
  await page.getByText(/^10,00\d elements$/).waitFor();
  assert.ok((await page.getByRole('treeitem').count()) < 100, 'rows that can be seen alone');
  await inspected.choose('n9999');
  assert.match(await inspected.chosen().innerText(), /n9999/);
  await inspected.search('text:n999');
  await page.getByText('11 found').waitFor();
  await page.locator('#tree').press('End');
  await page.locator('#tree').press('Home');
  assert.match(await inspected.chosen().innerText(), /Many/);
});

const elementOf = (page) => page.evaluate(() => new URLSearchParams(location.hash.slice(1)).get('element'));

inspecting('a program that never rests, opens windows and hangs is shown in two pages', ['/usr/bin/python3', unruly], async (inspected) => {
  const other = await inspected.open();
  const page = await inspected.open();
  await inspected.choose('onerror');
  assert.match(await inspected.chosen().innerText(), /<img src=x onerror=alert\(1\)>/);
  await inspected.search('[31m');
  await page.getByText('1 found').waitFor();
  await inspected.choose("text:Open twenty");
  const place = await inspected.middleOf();
  const chosen = await elementOf(page);
  await inspected.act(true);
  await page.mouse.click(...place);
  for (const one of [page, other]) {
    await one.getByRole('group', { name: 'Windows' }).getByRole('button').nth(20).waitFor();
  }
  // Far below what is chosen, which stays so.
  await inspected.row('Window 19').waitFor();
  assert.equal(await elementOf(page), chosen);
  await inspected.act(false);

  const pid = await inspected.pid();
  process.kill(pid, 'SIGSTOP');
  await page.getByText('is busy').waitFor();
  await inspected.search('Window 7');
  await page.getByText(/^[1-9]\d* found/).waitFor();
  process.kill(pid, 'SIGCONT');
  await page.getByText('running', { exact: true }).waitFor();
  await other.getByText('running', { exact: true }).waitFor();
});

inspecting('falkon shows its page below the web view', ['falkon', '--no-remote', '--private-browsing', shop], async (inspected) => {
  const page = await inspected.open();
  await inspected.choose("//BUTTON[contains(@text, 'Buy')]");
  const inPage = await inspected.chosen().getAttribute('aria-level');
  await inspected.choose('class:WebView');
  assert.ok(Number(inPage) > Number(await inspected.chosen().getAttribute('aria-level')));
  await page.locator('.mark-found').first().waitFor();
  const place = await inspected.choose("//BUTTON[contains(@text, 'Buy')]");
  await page.locator('.locator').first().getByText('1 match', { exact: true }).waitFor();
  await inspected.act(true);
  await page.mouse.click(...place);
  await inspected.search('Sold');
  await page.getByText(/^[1-9]\d* found/).waitFor();
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

inspecting('nobody else gets in', [process.env.QUICK], async (inspected) => {
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
