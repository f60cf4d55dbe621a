// webdriverio, which takes the program for a phone's, on keepassxc, and on a page in falkon.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { remote } from 'webdriverio';
import { capabilities, pageCapabilities, startServer } from './Server.mjs';

const timeout = 30_000;

async function begin(test, wanted) {
  const { hostname, port } = await startServer(test);
  const options = { hostname, port: Number(port), path: '/', logLevel: 'error', waitforTimeout: timeout };
  return remote({ ...options, capabilities: wanted });
}

test('a database is made step by step', { timeout: 150_000 }, async (test) => {
  const browser = await begin(test, capabilities);
  try {
    assert.ok(browser.isMobile);
    const create = browser.$('=Create new database');
    await create.waitForDisplayed();
    await create.waitForEnabled();
    await create.tap();
    const name = browser.$('~databaseName');
    await name.waitForDisplayed();
    await name.setValue('Grace’s');
    assert.equal(await name.getText(), 'Grace’s');
    assert.match(await browser.takeScreenshot(), /^iVBORw0KGgo/);
    await browser.$("//UIButton[@text='Continue']").click();

    const slider = browser.$('#decryptionTimeSlider');
    await slider.waitForDisplayed();
    await slider.$('[name="Handle"]').dragAndDrop({ x: 120, y: 0 });
    await browser.waitUntil(async () => Number(await slider.getAttribute('value')) > 10, { timeout });

    const format = browser.$('id=compatibilitySelection');
    await format.click();
    await browser.$("//*[starts-with(@text, 'KDBX 3')]").click();
    await browser.waitUntil(async () => (await format.getText()).startsWith('KDBX 3'), { timeout });
    await browser.$('=Continue').click();

    await browser.$('=Done').click();
    await browser.waitUntil(async () => (await browser.getAlertText()).includes('without a password?'), { timeout });
    await browser.dismissAlert();
    await browser.$("(//*[@text='Cancel' and @visible='true'])[last()]").click();
    await name.waitForExist({ reverse: true });
  } finally {
    await browser.deleteSession();
  }
});

test('a page is filled in', { timeout: 150_000 }, async (test) => {
  const browser = await begin(test, pageCapabilities);
  try {
    await browser.waitUntil(async () => (await browser.getContexts()).length > 1, { timeout });
    await browser.switchContext((await browser.getContexts()).at(-1));
    await browser.$('[name=customer]').setValue('Grace');
    const colour = browser.$('[name=colour]');
    await colour.selectByVisibleText('Blue');
    assert.equal(await browser.execute((element) => element.value, await colour), 'Blue');
    await browser.$('button=Ask').click();
    assert.equal(await browser.getAlertText(), 'Really?');
    await browser.acceptAlert();
    assert.equal(await browser.$('#said').getText(), 'alert closed');
  } finally {
    await browser.deleteSession();
  }
});
