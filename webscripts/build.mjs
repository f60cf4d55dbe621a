// Builds the page scripts, one file a script:  node build.mjs FOLDER
// With --page a page's own program instead:   node build.mjs --page PROGRAM.jsx FOLDER
//
// Each file stands alone: the agent evaluates it in the page as it is, once for every page. jQuery
// comes from its own package and leaves `$` to the page.
import { readFile } from 'node:fs/promises';
import { createRequire } from 'node:module';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

const here = dirname(fileURLToPath(import.meta.url));
const scripts = ['preCheck', 'TARNI_bililiteRange', 'TARNI_sendkeys', 'xpathbuilder'];
scripts.push('hybridrecorder', 'hybridplayer', 'session', 'webdriver');

const options = {
  bundle: true,
  minifySyntax: true,
  minifyWhitespace: true,
  charset: 'ascii',
  format: 'iife',
  legalComments: 'eof',
  target: ['chrome87', 'safari14.1'],
  absWorkingDir: here,
};

async function buildScripts(outdir) {
  const entryPoints = scripts.map((name) => join(here, 'src', `${name}.js`));
  await build({ ...options, entryPoints, inject: [join(here, 'src/lib/set.js')], outdir });

  const jquery = createRequire(import.meta.url).resolve('jquery/dist/jquery.min.js');
  const library = await readFile(jquery, 'utf8');
  // In a function: evaluated as it is, it would hand itself to the engine as a result.
  const contents = `void function () {\n${library}\nwindow.jQuery.noConflict();\n}();\n`;
  const outfile = join(outdir, 'jquery.js');
  await build({ ...options, bundle: false, format: undefined, stdin: { contents }, outfile });
}

async function buildPage(program, outdir) {
  await build({
    ...options,
    entryPoints: [resolve(program)],
    outdir,
    jsx: 'automatic',
    define: { 'process.env.NODE_ENV': '"production"' },
    // The page stands elsewhere; its libraries are the ones here.
    nodePaths: [join(here, 'node_modules')],
  });
}

const [first, ...rest] = process.argv.slice(2);
await (first === '--page' ? buildPage(...rest) : buildScripts(first));
