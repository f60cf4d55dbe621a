import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { Browser, line } from './browser.mjs';

let browser;
before(async () => { browser = await Browser.start(); });
after(() => browser.close());

// Plays steps by their paths on a fresh page.
async function replay(steps, name) {
  const { page, agent } = await browser.open(name);
  for (const step of steps) {
    const [object, data] = step.arguments;
    const path = object['xpath:position'];
    const found = await agent.find(object.className, 'xpath', path);
    assert.equal(found.length, 1, `${path} names one element`);
    if (step.action === 'TypeTextOnEditBox') await agent.type(found[0], data.data);
    else await agent.click(found[0]);
  }
  return { page, agent };
}

test('a form is recorded step by step and played back', async () => {
  const { page, agent } = await browser.open('form.html');
  await page.click('[name=customer]');
  await page.keyboard.type('Ada "Countess" \\ O\u2019Neil \u{1F600}');
  await page.click('text=A gift');
  await page.click('[value=bill]');
  await page.focus('[name=colour]');
  await page.keyboard.press('B');
  await page.click('text=Ribbon');
  await page.click('text=Box', { modifiers: ['Control'] });
  await page.click('[name=remarks]');
  await page.keyboard.type('two\nlines');
  await page.click('[contenteditable]');
  await page.keyboard.type('Hello');
  await page.click('img');
  await page.click('text=Send');
  const steps = await agent.steps(13);
  assert.deepEqual(steps.map(line), [
    'Click INPUT "Customer" ""',
    'TypeTextOnEditBox INPUT "Customer" "Ada \\"Countess\\" \\\\ O\u2019Neil \u{1F600}"',
    'Mobile_SelectSwitch INPUT "A gift" ""',
    'Click INPUT "By bill" ""',
    'Click OPTION "Blue" ""',
    'Click OPTION "Ribbon" ""',
    'Click OPTION "Box" ""',
    'Click TEXTAREA "Remarks" ""',
    'TypeTextOnEditBox TEXTAREA "Remarks" "two\\nlines"',
    'Click DIV "" ""',
    'TypeTextOnEditBox DIV "" "Hello"',
    'ClickImage IMG "Logo" ""',
    'ClickButton BUTTON "Send order" ""',
  ]);
  const { parent, ...own } = steps[12].arguments[0];
  const texts = (o) => Object.values(o).every((value) => typeof value === 'string');
  assert.ok(texts(own) && texts(parent));
  assert.deepEqual(Object.keys(own).sort(), [
    ...['ObjectImage', 'X', 'Y', 'className', 'height', 'id', 'index', 'label', 'logicalname'],
    ...['mode', 'name', 'sahiText', 'width', 'xpath:position'],
  ]);
  assert.deepEqual(Object.keys(parent).sort(), [
    ...['X', 'Y', 'classname', 'height', 'id', 'label', 'title', 'width'],
  ]);
  assert.equal(own.mode, 'web');
  assert.equal(own.ObjectImage, 'TARNI_OBJECT_IMAGE');
  assert.equal(parent.title, 'FORM');
  const state = () => {
    const form = document.forms.order.elements;
    const extras = [...form.extras.selectedOptions].map((option) => option.text).join();
    const texts = [form.customer.value, form.colour.value, form.remarks.value, extras];
    return [...texts, form.gift.checked, form.pay.value, document.all.said.textContent].join('|') +
      document.querySelector('[contenteditable]').innerText;
  };
  const played = await replay(steps, 'form.html');
  await played.page.waitForFunction(() => document.all.said.textContent.startsWith('sent by Ada'));
  assert.equal(await played.page.evaluate(state), await page.evaluate(state));
});

test('frames of the same origin and open shadow trees belong to the page', async () => {
  const { page, agent } = await browser.open('form.html');
  const frame = page.frame('inner');
  await frame.click('input');
  await page.keyboard.type('42');
  await frame.click('button');
  await page.click('x-stepper button');
  await page.click('x-stepper input');
  await page.keyboard.type('kg');
  await page.click('h1, body', { position: { x: 2, y: 2 } });
  const steps = await agent.steps(7);
  assert.deepEqual(steps.map(line).slice(0, 6), [
    'Click INPUT "Code" ""',
    'TypeTextOnEditBox INPUT "Code" "42"',
    'ClickButton BUTTON "Check" ""',
    'ClickButton BUTTON "More" ""',
    'Click INPUT "Unit" ""',
    'TypeTextOnEditBox INPUT "Unit" "kg"',
  ]);
  const paths = steps.map((step) => step.arguments[0]['xpath:position']);
  assert.equal(paths[1], "//iframe[@name='inner'] >> //input[@name='code']");
  assert.match(paths[3], /^\S*x-stepper.* >> \/\/button/);
  const played = await replay(steps.slice(0, 6), 'form.html');
  await played.page.waitForFunction(() => document.all.said.textContent === 'code 42');
  assert.equal(await played.page.textContent('x-stepper span'), '1');
  assert.equal(await played.page.inputValue('x-stepper input'), 'kg');
});

test('Enter in a field stands for the button that it presses', async () => {
  const { page, agent } = await browser.open('form.html');
  await page.fill('[name=customer]', '');
  await page.click('[name=customer]');
  await page.keyboard.type('Ada\n');
  await page.click('text=Send');
  const steps = await agent.steps(3);
  assert.deepEqual(steps.map(line), [
    'Click INPUT "Customer" ""',
    'TypeTextOnEditBox INPUT "Customer" "Ada\\n"',
    'ClickButton BUTTON "Send order" ""',
  ]);
  const played = await replay(steps.slice(0, 2), 'form.html');
  await played.page.waitForFunction(() => document.all.said.textContent === 'sent by Ada');
});

test('a click that leads away keeps its step, also on a page that allows no scripts', async () => {
  const { page, agent } = await browser.open('form.html');
  await page.click('[name=customer]');
  await page.keyboard.type('Ada');
  await page.click('text=Terms');
  await page.waitForURL(/next/);
  assert.deepEqual((await agent.steps(3)).map(line), [
    'Click INPUT "Customer" ""',
    'TypeTextOnEditBox INPUT "Customer" "Ada"',
    'Click A "Terms" ""',
  ]);
  browser.pages['away.html headers'] = { 'content-security-policy': "default-src 'none'" };
  const away = `<a href="${browser.otherOrigin}/next.html">Away</a>`;
  const other = await browser.open('away.html', away);
  await other.page.click('text=Away');
  assert.deepEqual((await other.agent.steps(1)).map(line), ['Click A "Away" ""']);
  await other.page.waitForURL(`${browser.otherOrigin}/next.html`);
  const unasked = await browser.open('away.html', away);
  await unasked.page.click('text=Away');
  await unasked.page.waitForURL(`${browser.otherOrigin}/next.html`);
});

test('scripts that came in halves or twice do no harm', async () => {
  const page = await browser.openBare('form.html');
  const agent = browser.agentFor(page);
  const { 'hybridrecorder.js': whole, ...others } = agent.scripts;
  agent.scripts = { ...others, 'hybridrecorder.js': whole.slice(0, whole.length / 2) };
  await agent.inject();
  assert.equal(await agent.call('IsInjectionDone()'), '');
  agent.scripts = { ...others, 'hybridrecorder.js': whole };
  await agent.inject();
  for (const script of Object.values(agent.scripts)) await agent.call(script);
  await page.click('img');
  assert.equal((await agent.steps(1)).length, 1);
  assert.equal(await page.evaluate('typeof jQuery.fn.jquery + typeof window.$'), 'stringundefined');
  const own = await browser.open('own.html', '<script>window.jQuery = function own() {};</script>');
  assert.equal(await own.page.evaluate('jQuery.name'), 'own');
});

test('each spied touch is an answer of its own, also on the next page', async () => {
  const { page, agent } = await browser.open('form.html');
  await page.click('img');
  await agent.call('switchtospymode()');
  await page.click('img');
  await page.click('text=Send');
  await agent.call('switchtorecordermode()');
  await page.click('img');
  await page.reload();
  const answers = [];
  const times = [];
  await page.waitForTimeout(200);
  while (answers.length < 4) {
    const text = await agent.poll();
    if (text) {
      answers.push(JSON.parse(text));
      times.push(Date.now());
    }
    await page.waitForTimeout(50);
  }
  const pauses = times.slice(1).map((time, i) => time - times[i]);
  assert.ok(pauses.every((pause) => pause > 1000), `longer than the sender sleeps: ${pauses}`);
  const firsts = answers.map((answer) => answer[0].action ?? answer.map((of) => of.tagName).join());
  assert.deepEqual(firsts, ['ClickImage', 'IMG,FORM,BODY', 'BUTTON,FORM,BODY', 'ClickImage']);
});
