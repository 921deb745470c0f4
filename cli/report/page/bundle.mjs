// bundle.mjs OUT.cpp: the report page without its contents, as C++ source. Its script and style are allowed by their
// hashes in the content policy, everything else is forbidden.
import {createHash} from 'node:crypto';
import {readFileSync, readdirSync, writeFileSync} from 'node:fs';
import {build} from 'esbuild';

const result = await build({entryPoints: ['page.js'], bundle: true, minify: true, format: 'iife', write: false,
  legalComments: 'none', target: 'es2020', logLevel: 'error', charset: 'ascii', metafile: true});
// Nothing in the script may end or hide the element that holds it.
const script = result.outputFiles[0].text.replace(/<(?=\/script|script|!--)/gi, '\\x3c');
const style = readFileSync('page.css', 'utf8');

/** The licences of the packages that the script is made of, each text once. */
function licences() {
  const packages = new Set();
  for (const input of Object.keys(result.metafile.inputs)) {
    const found = /^node_modules\/((?:@[^/]+\/)?[^/]+)/.exec(input);
    if (found)
      packages.add(found[1]);
  }
  const byText = new Map();
  for (const name of [...packages].sort()) {
    const folder = `node_modules/${name}`;
    const file = readdirSync(folder).find((entry) => /^licen[sc]e/i.test(entry));
    const text = file ? readFileSync(`${folder}/${file}`, 'utf8').trim()
      : `Licence: ${JSON.parse(readFileSync(`${folder}/package.json`, 'utf8')).license}`;
    byText.set(text, [...(byText.get(text) ?? []), name]);
  }
  return [...byText].map(([text, names]) => `${names.join(', ')}\n\n${text}\n`).join('\n----\n\n');
}

const escaped = (text) => text.replace(/&/g, '&amp;').replace(/</g, '&lt;').replace(/>/g, '&gt;');
const hash = (text) => `'sha256-${createHash('sha256').update(text).digest('base64')}'`;
const policy = `default-src 'none'; script-src ${hash(script)}; style-src ${hash(style)}; base-uri 'none'; `
  + `form-action 'none'`;
const pieces = {
  beforeContents: `<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta http-equiv="Content-Security-Policy" content="${policy}">
<meta name="viewport" content="width=device-width">
<title>ROC analysis</title>
<style>${style}</style>
</head>
<body>
<noscript><p>The curves need JavaScript; the tables do not.</p></noscript>
`,
  beforeData: `<div id="tip" hidden></div>
<details><summary>Licences of the parts of this page</summary><pre>${escaped(licences())}</pre></details>
<script type="application/json" id="data">`,
  afterData: `</script>
<script>${script}</script>
</body>
</html>
`,
};

/** A raw string literal; in parts, because compilers limit the length of one. */
function literal(text) {
  const parts = text.match(/[^]{1,60000}/g) ?? [''];
  return parts.map((part) => `R"~page~(${part})~page~"`).join('\n');
}
writeFileSync(process.argv[2], `#include "cli/picture/pagePieces.h"

namespace vexroc {

const PagePieces pagePieces{
${Object.entries(pieces).map(([name, text]) => `.${name} = ${literal(text)},`).join('\n')}
};

} // namespace vexroc
`);
