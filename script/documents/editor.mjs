// SPDX-License-Identifier: MIT
// What an editor's language server makes of the stub: it completes a row's keys inside a getnext loop, and finds nothing
// undefined in a program that names every function and constant.
//
// usage: editor.mjs FOLDER-OF-THE-STUB SERVER [ARGUMENT...]
//   SERVER speaks the Language Server Protocol on its standard input and output.
import { spawn } from 'node:child_process';
import { cpSync, mkdtempSync, readFileSync, realpathSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { pathToFileURL } from 'node:url';

const [stub, ...command] = process.argv.slice(2);
const patience = 60_000; // milliseconds, of a busy machine too
const workspace = realpathSync(mkdtempSync(join(tmpdir(), 'rmon-editor-')));
const folder = join(workspace, 'stubs');
cpSync(stub, folder, { recursive: true });

const server = spawn(command[0], command.slice(1), { stdio: ['pipe', 'pipe', 'inherit'] });
const answers = new Map(); // by the number of the request
const complaints = new Map(); // by the document
let wake = () => {};
let arrived = Buffer.alloc(0);
let number = 0;
let indexed = false;

function end(text) {
  server.kill();
  rmSync(workspace, { recursive: true, force: true });
  console.log(text ?? 'keys are completed, and nothing is undefined');
  process.exit(text === undefined ? 0 : 1);
}

function send(message) {
  const body = Buffer.from(JSON.stringify({ jsonrpc: '2.0', ...message }));
  server.stdin.write(`Content-Length: ${body.length}\r\n\r\n`);
  server.stdin.write(body);
}

/** Settings are asked for by their names; the others are the server's own. */
function settings({ section }) {
  const mine = { environment: { includePaths: [folder] }, telemetry: { enabled: false }, files: { maxSize: 5_000_000 } };
  return section === 'intelephense' ? mine : null;
}

function receive(message) {
  if (message.method === 'workspace/configuration') send({ id: message.id, result: message.params.items.map(settings) });
  else if (message.method && message.id !== undefined) send({ id: message.id, result: null });
  else if (message.method === 'indexingEnded') indexed = true;
  else if (message.method === 'textDocument/publishDiagnostics') complaints.set(message.params.uri, message.params.diagnostics);
  else if (message.id !== undefined) answers.set(message.id, message);
  wake();
}

server.on('error', (error) => end(`${command[0]}: ${error.message}`));
server.on('exit', (code) => end(`${command[0]} ended with ${code}`));
server.stdout.on('data', (bytes) => {
  arrived = Buffer.concat([arrived, bytes]);
  for (;;) {
    const begin = arrived.indexOf('\r\n\r\n') + 4;
    const length = Number(/Content-Length: (\d+)/i.exec(arrived.subarray(0, Math.max(0, begin)).toString())?.[1]);
    if (begin < 4 || arrived.length < begin + length) return;
    const message = JSON.parse(arrived.subarray(begin, begin + length).toString());
    arrived = arrived.subarray(begin + length);
    receive(message);
  }
});

async function until(what, state) {
  const limit = setTimeout(() => end(`${command[0]} is waited for: ${what}`), patience);
  while (!state()) await new Promise((resolve) => { wake = resolve; });
  clearTimeout(limit);
}

async function ask(method, params) {
  number += 1;
  const mine = number;
  send({ id: mine, method, params });
  await until(method, () => answers.has(mine));
  const { result, error } = answers.get(mine);
  if (error) end(`${method}: ${error.message}`);
  return result;
}

function open(name, text) {
  const uri = pathToFileURL(join(workspace, name)).href;
  writeFileSync(join(workspace, name), text);
  send({ method: 'textDocument/didOpen', params: { textDocument: { uri, languageId: 'php', version: 1, text } } });
  return uri;
}

/** What is offered where the text has a bar. */
async function offered(name, text) {
  const [before, behind] = text.split('|');
  const uri = open(name, before + behind);
  const lines = before.split('\n');
  const position = { line: lines.length - 1, character: lines.at(-1).length };
  const found = await ask('textDocument/completion', { textDocument: { uri }, position });
  return (found?.items ?? found ?? []).map((item) => item.label.replace(/^['"]|['"]$/g, ''));
}

await ask('initialize', {
  processId: process.pid,
  rootUri: pathToFileURL(workspace).href,
  workspaceFolders: [{ uri: pathToFileURL(workspace).href, name: 'rmon' }],
  capabilities: { workspace: { configuration: true, workspaceFolders: true }, textDocument: { publishDiagnostics: {} } },
  initializationOptions: { storagePath: join(workspace, 'storage'), globalStoragePath: join(workspace, 'storage'), clearCache: true },
});
send({ method: 'initialized', params: {} });
await until('the index', () => indexed);

// A key of each kind of page: one row, rows of a getbulk, a row within a list of a shape.
const loops = {
  etherStatsOctets: `<?php
$link = rmon_connect('127.0.0.1');
$index = 0;
while (is_array($row = rmon_etherstats_getnext($link, $index))) {
    echo $row['|'];
    $index = $row['etherStatsIndex'];
}
`,
  nlHostOutOctets: `<?php
$link = rmon_connect('127.0.0.1');
foreach (rmon_nlhost_getbulk($link, 1, 0, 0, [], 10) ?: [] as $row) {
    echo $row['|'];
}
`,
};
for (const [key, text] of Object.entries(loops)) {
  const labels = await offered(`${key}.php`, text);
  if (!labels.includes(key)) end(`${key} is not among ${labels.length} words: ${labels.slice(0, 20).join(' ')}\n${text}`);
}

const source = readFileSync(join(folder, 'rmon.php'), 'utf8');
const functions = [...source.matchAll(/^function (\w+)\(/gm)].map(([, name]) => `var_dump('${name}', ${name}(...));`);
const constants = [...source.matchAll(/^const (\w+)/gm)].map(([, name]) => `var_dump(${name});`);
if (functions.length < 290 || constants.length < 18) end(`${functions.length} functions, ${constants.length} constants`);
const program = open('all.php', ['<?php', ...functions, ...constants, 'var_dump(rmon_no_such_function());', ''].join('\n'));
// The last line is the proof that it looks: nothing else may be said.
await until('what is wrong', () => complaints.get(program)?.length > 0);
const said = complaints.get(program).map(({ message }) => message);
if (said.length !== 1 || !said[0].includes('rmon_no_such_function')) end(`in a program that names everything:\n${said.join('\n')}`);
end();
