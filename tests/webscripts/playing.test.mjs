import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Browser } from './browser.mjs';

let browser;
before(async () => { browser = await Browser.start(); });
after(() => browser.close());

test('a click makes all events of a click', async () => {
  const { page, agent } = await browser.open('events.html', `<body style="margin:0">
    <div style="height:3000px"></div><button>Press <b>me</b></button><script>
    const seen = [];
    for (const type of ['pointerdown', 'mousedown', 'focus', 'pointerup', 'mouseup', 'click']) {
      document.querySelector('button').addEventListener(type, (event) => seen.push(type));
    }
    document.querySelector('button').addEventListener('click', (event) => {
      seen.push(document.elementFromPoint(event.clientX, event.clientY).closest('button').localName);
    });</script>`);
  const [button] = await agent.find('button');
  await agent.click(button);
  await page.waitForFunction(() => seen.includes('click'));
  assert.equal(
    await page.evaluate(() => seen.join()),
    'pointerdown,mousedown,focus,pointerup,mouseup,click,button',
  );
});

test('React notices what is typed, chosen and clicked', async () => {
  const { page, agent } = await browser.open('tasks.html');
  const only = async (...search) => {
    const found = await agent.find(...search);
    assert.equal(found.length, 1, search.join());
    return found[0];
  };
  await agent.type(await only('input', 'text', 'New task'), 'Write \u{1F600}');
  await page.waitForFunction(() => document.all.typed.textContent === 'Write \u{1F600}');
  await agent.click(await only('option', 'text', 'Large'));
  await agent.click(await only('input', 'text', 'Urgent'));
  await agent.click(await only('button', 'text', 'Add'));
  await agent.type(await only('input', 'text', 'New task'), 'Rest\n');
  await page.waitForFunction(() => document.querySelectorAll('li').length === 2);
  assert.deepEqual(await page.locator('li').allTextContents(), [
    'Write \u{1F600}, large, urgent',
    'Rest, large, urgent',
  ]);
});

test('typing replaces, keeps to limits and reaches every kind of field', async () => {
  const { page, agent } = await browser.open('fields.html', `<input value="old" maxlength="3">
    <input type="number"><input type="date"><input type="range"><input readonly value="fixed">
    <textarea>old</textarea><div contenteditable>old</div><select><option>A<option>B</select>
    <input id="long"><script>const changes = [];
    addEventListener('change', (e) => changes.push(e.target.value));</script>`);
  const values = [
    ...[['input', 'abcdef', 'abc'], ['input', '12.5', '12.5'], ['input', '2024-02-29', '2024-02-29']],
    ...[['input', '75', '75'], ['input', 'new', 'fixed'], ['textarea', 'a\nb', 'a\nb']],
    ...[['div', 'c', 'c'], ['select', 'B', 'B']],
  ];
  let inputs = 0;
  for (const [tag, typed, expected] of values) {
    const elements = await agent.find(tag);
    const element = elements[tag === 'input' ? inputs++ : 0];
    await agent.type(element, typed);
    assert.equal(await agent.text(element), expected, `${tag} ${inputs}`);
  }
  const [long] = await agent.find('', 'xpath', "//*[@id='long']");
  await agent.type(long, 'x'.repeat(100000));
  assert.equal((await agent.text(long)).length, 100000);
  await agent.type(long, '');
  assert.equal(await agent.text(long), '');
  const changes = new Set(await page.evaluate('changes'));
  for (const value of ['abc', '12.5', '2024-02-29', '75', 'a\nb', 'B']) assert.ok(changes.has(value));
});

test('paths are unique and survive small changes of a page', async () => {
  const rows = Array.from({ length: 30 }, (_, i) => `<tr><td>Row ${i}<td><button>Edit</button>`);
  const { page, agent } = await browser.open('rows.html', `<div id="main"><table>${rows.join('')}
    </table><p>one</p><p>two</p><svg width="9" height="9"><circle r="4"/></svg>
    <a href="#x" title="it's &quot;quoted&quot;">x</a><input id="field-8213"></div>`);
  const paths = await page.evaluate(() =>
    [...document.querySelectorAll('body *')].map((element) => {
      const path = TARNI.xpath.of(element);
      const found = TARNI.xpath.findAll(path, document);
      return found.length === 1 && found[0] === element ? '' : path;
    }).join(''));
  assert.equal(paths, '');
  const path = await page.evaluate(() => TARNI.xpath.of(document.querySelector('a')));
  await page.evaluate(() => document.querySelector('#main').prepend(document.createElement('a')));
  assert.equal((await agent.find('a', 'xpath', path)).length, 1, path);
  const isFound = await page.evaluate(() => {
    const host = document.body.appendChild(document.createElement('div'));
    host.attachShadow({ mode: 'open' }).innerHTML = '<svg></svg><svg><g></g></svg>';
    const inner = host.shadowRoot.querySelector('g');
    const found = TARNI.xpath.findAll(TARNI.xpath.of(inner), document);
    return found.length === 1 && found[0] === inner;
  });
  assert.ok(isFound);
});
