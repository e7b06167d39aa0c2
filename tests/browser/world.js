// SPDX-License-Identifier: MIT
// What the tests in a browser run against: agents with known content, agents that misbehave, and consoles that know them.
import { spawn, execFileSync } from 'node:child_process';
import { createRequire } from 'node:module';
import { mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { createServer } from 'node:net';
import { tmpdir } from 'node:os';
import { dirname, join, resolve } from 'node:path';
import { fileURLToPath } from 'node:url';
import { hostileProxy } from './hostile.js';

const here = dirname(fileURLToPath(import.meta.url));
export const root = resolve(here, '../..');
export const build = join(root, '.build');
const binaries = process.env.RMON_BINARIES ?? join(build, 'plain');
const php = process.env.RMON_PHP ?? 'php';
const withModule = ['-d', `extension=${join(binaries, 'modules/rmon.so')}`];

// The packages are installed beside what is built, so that the tree stays as it is.
const require = createRequire(join(build, 'browser/package.json'));
export const { chromium } = require('playwright-core');
export const axeSource = readFileSync(require.resolve('axe-core/axe.min.js'), 'utf8');

const folder = mkdtempSync(join(tmpdir(), 'rmon-browser-'));
const ends = [() => rmSync(folder, { recursive: true, force: true })];

/** Ends all that was started. */
export async function end() {
  for (const one of ends.splice(0).reverse()) await one();
}

/** Waits until it is so. */
export async function until(what, isSo, seconds = 30) {
  const limit = Date.now() + 1000 * seconds;
  for (;;) {
    const value = await isSo();
    if (value) return value;
    if (Date.now() > limit) throw new Error(`still waiting for ${what}`);
    await new Promise((go) => setTimeout(go, 50));
  }
}

/** What the library says: ask.php tells what can be asked. */
export function ask(...words) {
  const options = { encoding: 'utf8', maxBuffer: 1 << 28 };
  return JSON.parse(execFileSync(php, [...withModule, join(here, 'ask.php'), ...words.map(String)], options));
}

/** A process that goes on until the end. */
function started(command, options, ready) {
  const child = spawn(command[0], command.slice(1), { stdio: ['ignore', 'pipe', 'pipe'], ...options });
  const said = { text: '' };
  child.stdout.on('data', (bytes) => { said.text += bytes; });
  child.stderr.on('data', (bytes) => { said.text += bytes; });
  const gone = new Promise((done) => child.on('exit', done));
  const stop = async (signal = 'SIGTERM') => {
    if (child.exitCode !== null || child.signalCode !== null) return;
    if (options?.detached) process.kill(-child.pid, signal);
    else child.kill(signal);
    await gone;
  };
  ends.push(stop);
  return until(`${command[0]} to be ready: ${said.text}`, () => {
    if (child.exitCode !== null) throw new Error(`${command.join(' ')} ended: ${said.text}`);
    return ready(said.text);
  }).then((found) => ({ child, said, stop, found }));
}

/** An agent that has read these files of a folder, or goes on playing them; rows are set before. */
export async function agent({ files = [], directory = folder, options = [], rows = () => {}, plays = false }) {
  const reads = files.flatMap((file) => ['--read', file]);
  const command = [join(binaries, 'rmon-agent'), '--port', '0', ...reads, ...(files.length ? ['--hold'] : []), ...options];
  const it = await started(command, { cwd: directory }, (text) => /listening on 127\.0\.0\.1:(\d+)/.exec(text)?.[1]);
  it.port = Number(it.found);
  rows(it.port);
  if (files.length && plays) it.child.kill('SIGUSR1');
  else if (files.length) {
    it.child.kill('SIGUSR1');
    await until('the files to be read', () => it.said.text.split(' ended: ').length > files.length, 60);
  }
  return it;
}

/** The capture of the demo, and what it holds. */
export function demoFiles() {
  const directory = join(folder, 'demo');
  mkdirSync(directory);
  execFileSync(php, ['-n', join(root, 'script/demo/make_capture.php'), directory]);
  return { directory, known: JSON.parse(readFileSync(join(directory, 'known.json'), 'utf8')) };
}

export async function demoAgent({ directory }, plays = false) {
  return agent({
    plays,
    files: ['office', 'wan'],
    directory,
    options: ['--voice', join(root, 'agent/voice.ini'), '--netflow', '0', ...(plays ? ['--speed', 'recorded', '--loop'] : [])],
    rows: (port) => execFileSync(php, [...withModule, join(root, 'script/demo/rows.php'), String(port)]),
  });
}

/** An agent of two interfaces that saw so many hosts on each, every one of them once. */
export async function crowdedAgent(hosts) {
  for (const [place, name] of ['east', 'west'].entries()) {
    const header = Buffer.alloc(24);
    [0xa1b2c3d4, 0x00040002, 0, 0, 65535, 1].forEach((value, at) => header.writeUInt32LE(value, 4 * at));
    const frames = [header];
    for (let host = 0; host < hosts; host += 2) {
      const frame = Buffer.alloc(76);
      [1770000000, host, 60, 60].forEach((value, at) => frame.writeUInt32LE(value, 4 * at));
      frame.writeUIntBE(0x020000000000 + host, 16, 6);
      frame.writeUIntBE(0x020000000001 + host, 22, 6);
      frame.writeUInt16BE(0x0800, 28);
      frame.writeUInt32BE(0x4500002e, 30);
      frame.writeUInt32BE(0x40110000, 38);
      frame.writeUInt32BE(0x0a000000 + (place << 20) + host, 42);
      frame.writeUInt32BE(0x0a000001 + (place << 20) + host, 46);
      frame.writeUInt32BE(0x30393039, 50);
      frame.writeUInt16BE(26, 54);
      frames.push(frame);
    }
    writeFileSync(join(folder, name), Buffer.concat(frames));
  }
  return agent({
    files: ['east', 'west'],
    rows: (port) => {
      for (const name of ['east', 'west']) {
        ask(port, 'create', 'hlHostControlTable', `hlHostControlIndex=${name === 'east' ? 1 : 2}`,
          `hlHostControlDataSource=${name}`, 'hlHostControlNlMaxDesiredEntries=65536',
          'hlHostControlAlMaxDesiredEntries=65536', 'hlHostControlOwner=test');
      }
    },
  });
}

/** An agent's like that takes connections and never says anything. */
export async function silentAgent() {
  const server = createServer(() => {}).listen(0, '127.0.0.1');
  await new Promise((done) => server.on('listening', done));
  ends.push(() => server.close());
  return { port: server.address().port };
}

/** A port where nobody listens. */
export async function deadPort() {
  const server = createServer().listen(0, '127.0.0.1');
  await new Promise((done) => server.on('listening', done));
  const { port } = server.address();
  await new Promise((done) => server.close(done));
  return port;
}

export async function hostileAgent(port, texts) {
  const proxy = await hostileProxy(port, texts);
  ends.push(proxy.close);
  return proxy;
}

/** A console with these probes, name => port. With users people sign in: name => [password, role]. */
export async function consoleFor(probes, users = {}) {
  const name = Object.keys(users).length ? 'guarded' : 'open';
  let text = `[console]\nstate = "${join(folder, `state-${name}`)}"\nsign_in = ${Object.keys(users).length ? 'on' : 'off'}\n`;
  for (const [probe, port] of Object.entries(probes)) text += `[probe ${probe}]\nhost = 127.0.0.1\nport = ${port}\n`;
  for (const [user, [password, role]] of Object.entries(users)) {
    const hash = execFileSync(php, ['-n', '-r', 'echo password_hash($argv[1], PASSWORD_BCRYPT, ["cost" => 4]);', password]);
    text += `[user ${user}]\npassword_hash = "${hash}"\nrole = ${role}\n`;
  }
  const file = join(folder, `${name}.ini`);
  writeFileSync(file, text);
  const port = await deadPort();
  const command = [php, ...withModule, '-d', 'opcache.enable_cli=1', '-S', `127.0.0.1:${port}`, join(root, 'console/public/index.php')];
  const environment = { ...process.env, RMON_CONSOLE: file, PHP_CLI_SERVER_WORKERS: '4' };
  const it = await started(command, { env: environment, detached: true }, (said) => /Development Server .* started/.test(said));
  it.address = `http://127.0.0.1:${port}`;
  /** What it logged besides requests. */
  it.problems = () => it.said.text.split('\n').filter((line) => line && !/Accepted|Closing|Closed without|Development Server|\]: [A-Z]+ /.test(line));
  return it;
}

/** Chromium, as Debian has it. */
export async function browser() {
  const it = await chromium.launch({
    executablePath: process.env.RMON_CHROMIUM ?? '/usr/bin/chromium',
    args: process.getuid?.() === 0 ? ['--no-sandbox'] : [],
  });
  ends.push(() => it.close());
  return it;
}
