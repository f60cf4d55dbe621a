// webdriverio, which takes the program for a phone's, on keepassxc.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { remote } from 'webdriverio';
import { capabilities, startServer } from './Server.mjs';

const timeout = 30_000;

test('a database is made step by step', { timeout: 150_000 }, async (test) => {
  const { hostname, port } = await startServer(test);
  const options = { hostname, port: Number(port), path: '/', logLevel: 'error', waitforTimeout: timeout };
  const browser = await remote({ ...options, capabilities });
  try {
    assert.ok(browser.isMobile);
    const create = browser.$('=Create new database');
    await create.waitForDisplayed();
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

    await browser.$("//*[@text='Cancel' and @visible='true']").click();
    await name.waitForExist({ reverse: true });
  } finally {
    await browser.deleteSession();
  }
});
