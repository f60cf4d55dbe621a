// Selenium's client for JavaScript on keepassxc, and on a page in falkon.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import webdriver from 'selenium-webdriver';
import { capabilities, pageCapabilities, startServer } from './Server.mjs';

const { Builder, By, Select, until } = webdriver;
const patience = 30_000;

async function begin(test, wanted) {
  const server = await startServer(test);
  const driver = await new Builder()
    .usingServer(server.origin)
    .withCapabilities({ browserName: '', ...wanted })
    .build();
  const clickable = async (by) => {
    const element = await driver.wait(until.elementLocated(by), patience);
    await driver.wait(until.elementIsVisible(element), patience);
    return driver.wait(until.elementIsEnabled(element), patience);
  };
  return { driver, clickable };
}

test('a database is made step by step', { timeout: 150_000 }, async (test) => {
  const { driver, clickable } = await begin(test, capabilities);
  try {
    await (await clickable(By.partialLinkText('Create new database'))).click();
    const name = await clickable(By.id('databaseName'));
    await name.clear();
    await name.sendKeys('Grace’s');
    assert.equal(await name.getAttribute('value'), 'Grace’s');
    assert.match(await driver.takeScreenshot(), /^iVBORw0KGgo/);
    await driver.findElement(By.xpath("//UIButton[@text='Continue']")).click();

    const slider = await clickable(By.css('#decryptionTimeSlider'));
    const handle = await slider.findElement(By.name('Handle'));
    await driver.actions().dragAndDrop(handle, { x: 120, y: 0 }).perform();
    await driver.wait(async () => Number(await slider.getAttribute('value')) > 10, patience);

    const format = await clickable(By.id('compatibilitySelection'));
    await format.click();
    await (await clickable(By.xpath("//*[starts-with(@text, 'KDBX 3')]"))).click();
    await driver.wait(async () => (await format.getText()).startsWith('KDBX 3'), patience);
    await driver.findElement(By.linkText('Continue')).click();

    await (await clickable(By.linkText('Done'))).click();
    const alert = await driver.wait(until.alertIsPresent(), patience);
    await driver.wait(async () => (await alert.getText()).includes('without a password?'), patience);
    await alert.dismiss();
    await driver.findElement(By.xpath("(//*[@text='Cancel' and @visible='true'])[last()]")).click();
    await driver.wait(until.stalenessOf(name), patience);
  } finally {
    await driver.quit();
  }
});

test('a page is filled in', { timeout: 150_000 }, async (test) => {
  const { driver, clickable } = await begin(test, { ...pageCapabilities, 'appium:autoWebview': true });
  try {
    await (await clickable(By.name('customer'))).sendKeys('Grace');
    const colour = driver.findElement(By.name('colour'));
    await new Select(colour).selectByVisibleText('Blue');
    assert.equal(await driver.executeScript('return arguments[0].value', colour), 'Blue');
    await driver.findElement(By.xpath("//button[text()='Ask']")).click();
    const alert = await driver.switchTo().alert();
    assert.equal(await alert.getText(), 'Really?');
    await alert.accept();
    assert.equal(await driver.findElement(By.id('said')).getText(), 'alert closed');
  } finally {
    await driver.quit();
  }
});
