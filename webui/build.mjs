// Builds the page of the inspector into one C++ source:  node build.mjs FILE.cpp
// With --folder the files themselves, to look at.
import { mkdir, readFile, writeFile } from 'node:fs/promises';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { build } from 'esbuild';

const here = dirname(fileURLToPath(import.meta.url));
const types = { html: 'text/html', css: 'text/css', js: 'text/javascript', svg: 'image/svg+xml' };

async function bundle() {
  const { outputFiles } = await build({
    absWorkingDir: here,
    entryPoints: [join(here, 'src/inspector.tsx'), join(here, 'src/style/inspector.css')],
    outdir: here,
    outbase: here,
    entryNames: '[name]',
    bundle: true,
    minify: true,
    write: false,
    format: 'iife',
    jsx: 'automatic',
    jsxImportSource: 'preact',
    target: ['chrome90', 'firefox90', 'safari15'],
  });
  const files = { 'index.html': await readFile(join(here, 'src/index.html')) };
  files['icon.svg'] = await readFile(join(here, 'src/icon.svg'));
  for (const { path, contents } of outputFiles) files[path.split('/').pop()] = Buffer.from(contents);
  return files;
}

// Octal, since the digits behind a hexadecimal escape would belong to it.
function literal(bytes) {
  let text = '';
  for (const byte of bytes) {
    const isPlain = byte >= 0x20 && byte < 0x7f && byte !== 0x22 && byte !== 0x5c && byte !== 0x3f;
    text += isPlain ? String.fromCharCode(byte) : `\\${byte.toString(8).padStart(3, '0')}`;
  }
  return `"${text}"`;
}

function asSource(files) {
  const rows = Object.entries(files).map(([name, bytes]) => {
    const type = `${types[name.split('.').pop()]}; charset=utf-8`;
    return `    {"${name}", "${type}", {${literal(bytes)}, ${bytes.length}}},\n`;
  });
  return `// Made by webui/build.mjs.
#include "host/inspector/PageFiles.h"

namespace tarni::host {

namespace {

constexpr PageFile kFiles[] = {
${rows.join('')}};

}  // namespace

std::span<const PageFile> pageFiles() {
  return kFiles;
}

}  // namespace tarni::host
`;
}

const [first, second] = process.argv.slice(2);
const files = await bundle();
if (first === '--folder') {
  await mkdir(second, { recursive: true });
  for (const [name, bytes] of Object.entries(files)) await writeFile(join(second, name), bytes);
} else {
  await writeFile(first, asSource(files));
}
