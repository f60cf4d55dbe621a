// `tarni webdriver` on a port of its own, which ends with the test.
//   TARNI: the tool
import { spawn } from 'node:child_process';
import { once } from 'node:events';
import { createInterface } from 'node:readline';
import { fileURLToPath } from 'node:url';

export async function startServer(test, ...options) {
  const words = ['webdriver', '--port', '0', ...options];
  const server = spawn(process.env.TARNI, words, { stdio: ['ignore', 'pipe', 'inherit'] });
  test.after(async () => {
    server.kill();
    await once(server, 'exit');
  });
  const [line] = await once(createInterface(server.stdout), 'line');
  return new URL(line);
}

export const capabilities = {
  platformName: 'linux',
  'appium:automationName': 'Tarni',
  'appium:app': 'keepassxc',
};

// A page in a browser.
export const pageCapabilities = {
  ...capabilities,
  'appium:app': 'falkon',
  'appium:arguments': [
    '--no-remote',
    '--private-browsing',
    fileURLToPath(new URL('../../../samples/web/pages/form.html', import.meta.url)),
  ],
  'appium:environment': { QTWEBENGINE_DISABLE_SANDBOX: '1', QT_QUICK_BACKEND: 'software' },
};
