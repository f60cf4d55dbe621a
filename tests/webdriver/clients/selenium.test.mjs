// Selenium's client for JavaScript on keepassxc.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import webdriver from 'selenium-webdriver';
import { capabilities, startServer } from './Server.mjs';

const { Builder, By, until } = webdriver;
const patience = 30_000;

test('a database is made step by step', { timeout: 150_000 }, async (test) => {
  const server = await startServer(test);
  const driver = await new Builder()
    .usingServer(server.origin)
    .withCapabilities({ browserName: '', ...capabilities })
    .build();
  const visible = async (by) => {
    const element = await driver.wait(until.elementLocated(by), patience);
    return driver.wait(until.elementIsVisible(element), patience);
  };
  try {
    await (await visible(By.partialLinkText('Create new database'))).click();
    const name = await visible(By.id('databaseName'));
    await name.clear();
    await name.sendKeys('Grace’s');
    assert.equal(await name.getAttribute('value'), 'Grace’s');
    assert.match(await driver.takeScreenshot(), /^iVBORw0KGgo/);
    await driver.findElement(By.xpath("//UIButton[@text='Continue']")).click();

    const slider = await visible(By.css('#decryptionTimeSlider'));
    const handle = await slider.findElement(By.name('Handle'));
    await driver.actions().dragAndDrop(handle, { x: 120, y: 0 }).perform();
    await driver.wait(async () => Number(await slider.getAttribute('value')) > 10, patience);

    const format = await visible(By.id('compatibilitySelection'));
    await format.click();
    await (await visible(By.xpath("//*[starts-with(@text, 'KDBX 3')]"))).click();
    await driver.wait(async () => (await format.getText()).startsWith('KDBX 3'), patience);

    await driver.findElement(By.xpath("//*[@text='Cancel' and @visible='true']")).click();
    await driver.wait(until.stalenessOf(name), patience);
  } finally {
    await driver.quit();
  }
});
