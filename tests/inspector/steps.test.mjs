// Steps: made of what is done in the picture and by a real hand, edited, healed, played, kept.
//   TARNI: the tool; QUICK, WIDGETS: programs of Qt Quick and of Qt's widgets
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { after } from 'node:test';
import { closeBrowser, inspecting } from './inspected.mjs';

after(closeBrowser);

inspecting('what is done becomes steps, which are edited and played', [process.env.QUICK], async (inspected) => {
  const page = await inspected.open();
  const field = await inspected.choose("//*[@placeholder='User name']");
  const button = await inspected.choose("//*[@text='Log in']");
  await page.locator('#tree').press('r');
  await page.getByRole('button', { name: 'Stop recording' }).waitFor();
  await inspected.act(true);
  await page.mouse.click(...field);
  await page.keyboard.type('Ada');
  await page.mouse.click(...button);
  const steps = inspected.steps();
  await steps.nth(2).getByText('click').waitFor();
  await inspected.act(false);
  await inspected.record(false);

  const typed = page.getByLabel('text of step 2');
  await typed.fill(' and Grace');
  await typed.press('Enter');
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.getByText('3 of 3 passed').waitFor();
  assert.equal(await page.locator('.step-said').count(), 0);
  await inspected.search('Hello, Ada and Grace');
  await page.getByText(/^[1-9]\d* found/).waitFor();

  await page.getByRole('button', { name: 'Undo' }).click();
  assert.equal(await typed.inputValue(), 'Ada');
  await inspected.choose("//*[@text='Log in']");
  await page.getByRole('button', { name: 'is enabled' }).click();
  assert.match(await steps.nth(3).innerText(), /check/);
  const [saved] = await Promise.all([
    page.waitForEvent('download'),
    page.getByRole('button', { name: 'Save' }).click(),
  ]);
  const { agent, recorded, steps: inFile } = JSON.parse(readFileSync(await saved.path(), 'utf8'));
  assert.match(agent, /^\d/);
  assert.equal(recorded, new Date(inFile[0].time).toISOString().replace(/\.\d+/, ''));
  const [exported] = await Promise.all([
    page.waitForEvent('download'),
    page.getByRole('combobox', { name: 'Export' }).selectOption('python'),
  ]);
  const code = readFileSync(await exported.path(), 'utf8');
  assert.match(code, /def test_[^]*Ada[^]*click/);
  await page.getByRole('button', { name: 'Delete step 4' }).click();
  await page.reload();
  await inspected.isThere();
  assert.equal(await steps.count(), 3, 'a reload keeps them');
  await page.locator('input[type=file]').setInputFiles(await saved.path());
  await steps.nth(3).waitFor();
  for (const [text, said] of [
    ['{"tarniSession":2,"steps":[\n{"act":', 'old.json:2: the file is cut short here'],
    ['{"tarniSession":9,"steps":[\n]}', 'of another version, 9'],
    ['{"tarniSession":2,"steps":[\n{"act":"tpye"}\n]}', 'old.json:2: the act "tpye" is not known'],
  ]) {
    await inspected.openFile(text);
    await page.getByRole('alert').getByText(said).waitFor();
  }
  assert.equal(await steps.count(), 4, 'a broken file leaves them');
  assert.deepEqual(await inspected.accessibilityProblems(), []);
});

inspecting('every act in the picture is recorded, and no secret is shown', [process.env.WIDGETS], async (inspected) => {
  const page = await inspected.open();
  const password = await inspected.choose('id:password');
  const remember = await inspected.choose('id:remember');
  const first = await inspected.choose('text:Row 1');
  const third = await inspected.choose('text:Row 3');
  const menu = await inspected.choose("//*[@text='File']");
  await inspected.record(true);
  await inspected.act(true);
  await page.mouse.click(...password);
  await page.keyboard.type('s3cret');
  await page.mouse.click(...remember);
  await page.mouse.move(...first);
  await page.mouse.down();
  await page.mouse.move(...third, { steps: 5 });
  await page.mouse.up();
  await page.mouse.wheel(0, 300);
  await page.mouse.click(...menu);
  await inspected.row('About').waitFor();
  await page.keyboard.press('Escape');
  const acts = ['click', 'type', 'switch on', 'drag', 'turn the wheel over', 'menu', 'key'];
  await inspected.steps().nth(acts.length - 1).waitFor();
  const said = await inspected.steps().locator('b').allInnerTexts();
  assert.deepEqual(said, acts);
  await inspected.act(false);
  await inspected.record(false);

  assert.doesNotMatch(await page.content(), /s3cret/);
  const kept = await page.evaluate(() => JSON.stringify(sessionStorage) + location.hash);
  assert.doesNotMatch(kept, /s3cret/);
  const second = inspected.steps().nth(1);
  await page.getByRole('button', { name: 'Play step 2' }).click();
  await second.getByText('is not known').waitFor();
  await second.getByLabel('Value of the secret').fill('s3cret');
  await page.getByRole('button', { name: 'Play step 2' }).click();
  await page.locator('.step-passed').waitFor();
  assert.doesNotMatch(await page.content(), /s3cret/);
});

inspecting('a step that finds its element no more is healed by a click', [process.env.WIDGETS], async (inspected) => {
  const page = await inspected.open();
  const step = (...locators) => ({ act: 'click', element: { class: 'UIButton', text: 'Log in', locators } });
  await inspected.openSteps([
    step({ find: { identifier: 'signin' } }, { find: { text: 'Log in' } }),
    step({ find: { identifier: 'gone', text: 'Gone' } }),
  ]);
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.getByRole('button', { name: 'Take what is better' }).click();
  const failed = inspected.steps().nth(1);
  await failed.getByText('failed').waitFor({ state: 'attached' });
  await inspected.choose('id:login');
  await failed.getByRole('button', { name: 'Take' }).first().click();
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.locator('.step-passed').nth(1).waitFor();
  assert.equal(await page.locator('.step-said').count(), 0, 'by the first locators');
});

// The program's own window, as its hand finds it.
function xdotool(pid, ...words) {
  const environment = readFileSync(`/proc/${pid}/environ`, 'utf8').split('\0');
  const ofDisplay = environment.filter((one) => /^(DISPLAY|XAUTHORITY)=/.test(one));
  return execFileSync('env', [...ofDisplay, 'xdotool', ...words], { encoding: 'utf8' });
}

inspecting('a real hand on keepassxc is recorded in the page', ['keepassxc'], async (inspected) => {
  const page = await inspected.open();
  await inspected.choose("//UIButton[@text='Create new database']");
  const button = (await inspected.call('element.find', { text: 'Create new database' })).elements[0];
  const { description } = await inspected.call('element.describe', { element: button.element });
  const { x, y, width, height } = description.screenRect;
  await inspected.record(true);
  const pid = await inspected.pid();
  const middle = [x + width / 2, y + height / 2].map((one) => String(Math.round(one)));
  xdotool(pid, 'mousemove', ...middle, 'click', '1');
  await inspected.steps().nth(0).getByText('Create new database').waitFor();
  await inspected.search('id:databaseName');
  await page.getByText('2 found').waitFor();
  xdotool(pid, 'type', 'Ada');
  xdotool(pid, 'key', 'Escape');
  await inspected.steps().nth(2).getByText('key').waitFor();
  assert.match(await page.getByLabel('text of step 2').inputValue(), /Ada$/);
  await inspected.record(false);
  await page.getByRole('button', { name: 'Play', exact: true }).click();
  await page.locator('.step-passed').nth(2).waitFor();
});
