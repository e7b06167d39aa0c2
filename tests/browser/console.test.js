// SPDX-License-Identifier: MIT
// Every page of the console in Chromium. The pages are those of the console's own list: a new one is walked too.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { mkdirSync, rmSync } from 'node:fs';
import { join } from 'node:path';
import * as world from './world.js';
import { endless, markup } from './hostile.js';

const sizes = { phone: [390, 844], laptop: [1280, 800], wide: [1920, 1080] };
const schemes = ['light', 'dark'];
const pictures = join(world.build, 'browser/pictures');
const crowd = 50000; // hosts on each of two interfaces

let demo; let live; let known; let open; let guarded; let crowded; let mortal; let chromium;
const ports = {};

before(async () => {
  rmSync(pictures, { recursive: true, force: true });
  const files = world.demoFiles();
  known = files.known;
  [demo, live, mortal, crowded] = await Promise.all([world.demoAgent(files), world.demoAgent(files, true), world.agent({}), world.crowdedAgent(crowd)]);
  Object.assign(ports, {
    demo: demo.port,
    live: live.port,
    crowded: crowded.port,
    mortal: mortal.port,
    dead: await world.deadPort(),
    silent: (await world.silentAgent()).port,
    markup: (await world.hostileAgent(demo.port, markup)).port,
    endless: (await world.hostileAgent(demo.port, endless)).port,
  });
  open = await world.consoleFor(ports);
  guarded = await world.consoleFor({ demo: demo.port }, { anna: ['all of it', 'operator'], ben: ['a look', 'read-only'] });
  chromium = await world.browser();
  // A sample of five seconds is the least that charts of the past need.
  await world.until('the first samples', () => world.ask(demo.port, 'rows', 'etherHistoryTable').length > 2);
});
after(world.end);

/** A browser of its own that notes all that goes wrong; refresh is off unless it is what is tested. */
async function visitor({ scheme = 'light', size = 'laptop', refresh = '0', tolerated = null, console = open } = {}) {
  const [width, height] = sizes[size];
  const context = await chromium.newContext({ colorScheme: scheme, viewport: { width, height }, baseURL: console.address });
  await context.addInitScript((seconds) => localStorage.setItem('refresh', seconds), refresh);
  const page = await context.newPage();
  const wrong = [];
  page.on('console', (said) => {
    if (['error', 'warning'].includes(said.type()) && !tolerated?.test(said.text())) wrong.push(`${page.url()}: ${said.text()}`);
  });
  page.on('pageerror', (error) => wrong.push(`${page.url()}: ${error}`));
  page.on('dialog', (dialog) => { wrong.push(`${page.url()} asks: ${dialog.message()}`); dialog.dismiss(); });
  page.on('request', (request) => {
    if (!request.url().startsWith(console.address) && !request.url().startsWith('data:')) wrong.push(`${page.url()} asks for ${request.url()}`);
  });
  return { context, page, wrong, fine: () => assert.deepEqual(wrong, []) };
}

/** Opens a page, and waits until its charts are drawn. */
async function show(page, address) {
  const answer = await page.goto(address);
  await drawn(page);
  return answer;
}
const drawn = (page) => page.waitForFunction(() =>
  [...document.querySelectorAll('canvas[data-chart]')].every((canvas) => window.Chart?.getChart(canvas)));

/** The pages that links lead to from an address on, one address for each page of the list. */
async function reached(from, console = open) {
  const pages = world.ask('pages').map((page) => ({ ...page, parts: page.path.split('/') }));
  const found = new Map();
  const waiting = [from];
  const seen = new Set(waiting);
  for (let address; (address = waiting.shift()) !== undefined;) {
    const parts = address.split('?')[0].split('/');
    const fits = pages
      .filter((page) => page.parts.length === parts.length && page.parts.every((part, at) => part.startsWith('{') ? parts[at] !== '' : part === parts[at]))
      .sort((one, other) => one.parts.filter((part) => part.startsWith('{')).length - other.parts.filter((part) => part.startsWith('{')).length);
    if (!fits.length || found.has(fits[0].name)) continue;
    found.set(fits[0].name, address);
    const html = await (await fetch(console.address + address)).text();
    for (const [, link] of html.matchAll(/<a [^>]*href="(\/[^"#]*)"/g)) {
      const plain = link.replaceAll('&amp;', '&');
      if (!seen.has(plain) && !plain.includes('format=')) {
        seen.add(plain);
        waiting.push(plain);
      }
    }
  }
  return { found, links: seen, missing: pages.filter((page) => !page.everybody && !found.has(page.name)).map((page) => page.name) };
}

test('links lead to every page', async () => {
  const { missing } = await reached('/probe/demo');
  assert.deepEqual(missing.filter((name) => name !== 'Probes'), []);
});

for (const scheme of schemes) {
  test(`every page: nothing goes wrong, nothing is hard to read or too wide, ${scheme}`, async (t) => {
    const { found } = await reached('/probe/live');
    found.set('Probes', '/');
    const { page, context, fine } = await visitor({ scheme });
    for (const [name, address] of found) {
      await t.test(name, async () => {
        const answer = await show(page, address);
        assert.equal(answer.status(), 200);
        for (const [size, [width, height]] of Object.entries(sizes)) {
          await page.setViewportSize({ width, height });
          const over = await page.evaluate(() => document.documentElement.scrollWidth - innerWidth);
          mkdirSync(join(pictures, `${scheme}-${size}`), { recursive: true });
          await page.screenshot({ path: join(pictures, `${scheme}-${size}`, `${name}.png`), fullPage: true });
          assert.ok(over <= 0, `${size}: ${over} pixels too wide`);
        }
        await page.setViewportSize({ width: sizes.laptop[0], height: sizes.laptop[1] });
        await page.evaluate(world.axeSource);
        // Only the colours differ from scheme to scheme.
        const rules = scheme === schemes[0] ? {} : { runOnly: ['color-contrast'] };
        const { violations } = await page.evaluate((chosen) => axe.run(chosen), rules);
        assert.deepEqual(violations.map((one) => `${one.id}: ${one.nodes.map((node) => `${node.html.slice(0, 120)} ${node.failureSummary}`).slice(0, 3).join(' | ')}`), []);
        fine();
      });
    }
    await context.close();
  });
}

test('tables of the library are the same in the console, all of them', async () => {
  const clocks = /Time$|TimeRemaining$|Duration$|^sysUpTime$|LastChange$|RptStartTime$/;
  for (const table of world.ask('tables')) {
    const rows = world.ask(demo.port, 'rows', table);
    const answer = await fetch(`${open.address}/probe/demo/table/${table}?all=1&format=json`);
    assert.equal(answer.status, 200, table);
    const shown = (await answer.text()).trim();
    const moving = /history|alarm|log|ndeLearned|buffer|voice|Call|Phone|Top|Learning/i.test(table);
    if (!moving) assert.equal((shown === '[]' ? [] : JSON.parse(shown)).length, rows.length, table);
    if (moving || !rows.length) continue;
    const first = JSON.parse(shown)[0];
    const expected = rows.find((row) => Object.keys(first).every((name) => clocks.test(name) || JSON.stringify(row[name]) === JSON.stringify(first[name])));
    assert.ok(expected, `${table}: no row is ${JSON.stringify(first)}`);
  }
});

/** A table of a page: cells by the names in its headings' links. */
const cells = (page, part) => page.evaluate((id) => {
  const block = id ? document.getElementById(id) : document.querySelector('main');
  const rows = [...block.querySelectorAll('tbody tr')];
  return rows.map((row) => [...row.querySelectorAll('td')].map((cell) => cell.title || cell.textContent.trim()));
}, part);

test('hosts: numbers, order, filter, columns, paging, downloads', async () => {
  const { page, context, fine } = await visitor();
  const hosts = known.office.hosts;
  await show(page, '/probe/demo/office/hosts?rows=100');
  const exact = (text) => Number(text.replace(/[^\d]/g, ''));
  let rows = await cells(page);
  assert.equal(rows.length, Object.keys(hosts).length);
  for (const [address, out, inside, sent, received] of rows) {
    const host = hosts[address];
    assert.deepEqual([exact(out), exact(inside), exact(sent), exact(received)], [host.outoctets, host.inoctets, host.outpkts, host.inpkts], address);
  }
  const octets = rows.map((row) => exact(row[1]));
  assert.deepEqual(octets, [...octets].sort((one, other) => other - one), 'most octets first');

  await page.locator('thead a', { hasText: 'Packets received' }).first().click();
  await page.waitForURL(/sort=/);
  const sort = new URL(page.url()).searchParams.get('sort');
  assert.match(sort, /InPkts$/);
  await page.waitForFunction(() => document.querySelector('th[aria-sort]'));

  await page.goto('/probe/demo/office/hosts');
  await page.locator('input[type=search]').first().fill('10.20.0.');
  await page.waitForURL(/filter=/);
  await page.waitForFunction(() => document.querySelectorAll('tbody tr').length === 3);
  fine();

  const csv = await (await fetch(`${open.address}/probe/demo/office/hosts?filter=10.20.0.&format=csv`)).text();
  assert.equal(csv.trim().split('\n').length, 4);
  const json = await (await fetch(`${open.address}/probe/demo/office/hosts?filter=10.20.0.11&format=json`)).json();
  assert.equal(json[0].nlHostOutOctets, hosts['10.20.0.11'].outoctets);

  await page.goto('/probe/demo/office/hosts?columns=nlHostAddress,nlHostInPkts&rows=25');
  assert.equal((await cells(page))[0].length, 2);
  const first = (await cells(page))[0][0];
  await page.locator('.paging a[rel=next]').click();
  await page.waitForFunction((before) => document.querySelector('tbody td').textContent.trim() !== before, first);
  assert.equal((await cells(page)).length, 25);
  await page.goBack();
  await page.waitForFunction((before) => document.querySelector('tbody td').textContent.trim() === before, first);
  fine();
  await context.close();
});

test('what the capture holds, by protocol, conversation, VLAN, priority and class', async () => {
  const rows = async (address) => (await fetch(`${open.address}/probe/demo/office/${address}&format=json&all=1`)).json();
  const table = (list, key, ...values) => Object.fromEntries(list.map((row) => [key(row), values.map((name) => row[name])]));
  const expected = (name, key = (text) => text) => Object.fromEntries(Object.entries(known.office[name]).map(([text, row]) => [key(text), [row.octets, row.pkts]]));
  assert.deepEqual(table(await rows('protocols?part=tree'), (row) => row.protocol, 'octets', 'packets'), expected('protocols'));
  assert.deepEqual(table(await rows('conversations?part=conversations'), (row) => `${row.nlMatrixSDSourceAddress} ${row.nlMatrixSDDestAddress}`, 'nlMatrixSDOctets', 'nlMatrixSDPkts'), expected('conversations'));
  assert.deepEqual(table(await rows('vlans?part=vlans'), (row) => row.smonVlanIdStatsId, 'smonVlanIdStatsTotalOctets', 'smonVlanIdStatsTotalPkts'), expected('vlans'));
  const priorities = (await rows('vlans?part=priorities')).filter((row) => row.smonPrioStatsPkts > 0);
  assert.deepEqual(table(priorities, (row) => row.smonPrioStatsId, 'smonPrioStatsOctets', 'smonPrioStatsPkts'), expected('priorities'));
  const html = await (await fetch(`${open.address}/probe/demo/office/services`)).text();
  const profile = /href="[^"]*profile=(\d+)[^"]*"[^>]*>(?:<bdi>)?each DSCP/.exec(html)[1];
  const classes = await rows(`services?part=classes&profile=${profile}`);
  assert.deepEqual(table(classes, (row) => /DSCP (\d+)/.exec(row.class)[1], 'octets', 'packets'), expected('dscps'));
  const addresses = await rows('addresses?part=addresses');
  const own = addresses.find((row) => row.addressMapNetworkAddress === '10.0.10.23');
  assert.match(own.addressMapPhysicalAddress, /^02:00:5e:0a:00:/i);
});

test('links of pages lead somewhere', async () => {
  const { found, links } = await reached('/probe/live');
  // Views of a page differ by what their links say besides: one of each kind is enough.
  const kinds = new Map();
  for (const link of links) {
    const [path, query = ''] = link.split('?');
    const page = path.split('/').slice(0, 5).map((part, at) => (at === 2 ? 'probe' : part)).join('/');
    const words = query.replaceAll(/(behind|from|filter|columns|rows|buffer|frames|download)=[^&]*/g, '$1').split('&').sort().join('&');
    if (path.startsWith('/probe/live') || path === '/') kinds.set(`${page}?${words}`, link);
  }
  assert.ok(kinds.size > found.size, `${kinds.size} kinds of links`);
  const bad = [];
  for (const link of kinds.values()) {
    const answer = await fetch(open.address + link);
    if (answer.status !== 200) bad.push(`${answer.status} ${link}`);
    await answer.arrayBuffer();
  }
  assert.deepEqual(bad, []);
});

test('a capture: a filter in usual words, frames that come, a file that has them', async () => {
  const { page, context, fine } = await visitor({ refresh: '2' });
  await page.goto('/probe/live/office/capture');
  await page.locator('form.inputs input[name=filter]').fill('udp or icmp');
  await page.locator('form.inputs button[type=submit]').first().click();
  assert.match(await page.locator('main').textContent(), /udp or icmp/, 'what will change is shown');
  await page.locator('form.sure button[type=submit]').click();
  await page.waitForURL(/capture$/);
  const frames = () => world.ask(live.port, 'rows', 'bufferControlTable')[0]?.bufferControlCapturedPackets ?? 0;
  await world.until('frames', () => frames() > 20);
  await page.waitForFunction(() => [...document.querySelectorAll('#captures tbody td.number')].some((cell) => Number(cell.textContent) > 20), null, { timeout: 15000 });
  const file = await context.request.get(await page.locator('#captures a', { hasText: 'download' }).first().getAttribute('href'));
  const bytes = await file.body();
  assert.equal(bytes.readUInt32LE(0) === 0xa1b2c3d4 || bytes.readUInt32LE(0) === 0xa1b23c4d, true, 'a capture file');
  let count = 0;
  for (let at = 24; at < bytes.length; count++) {
    const length = bytes.readUInt32LE(at + 8);
    const frame = bytes.subarray(at + 16, at + 16 + length);
    const type = frame.readUInt16BE(12) === 0x8100 ? 16 : 12;
    const protocol = frame.readUInt16BE(type) === 0x0800 ? frame[type + 11] : frame[type + 8];
    assert.ok([1, 17, 58].includes(protocol), `frame ${count} is of protocol ${protocol}`);
    at += 16 + length;
  }
  assert.ok(count > 20, `${count} frames`);
  await page.goto('/probe/live/office/capture?frames=1');
  assert.ok((await page.locator('#frames tbody tr').count()) > 20);
  await page.evaluate(() => document.querySelectorAll('details').forEach((details) => { details.open = true; }));
  await page.locator('form.inputs', { has: page.locator('select[name=buffer]') }).locator('button[type=submit]').click();
  await page.locator('form.sure button[type=submit]').click();
  await world.until('its rows to be gone', () => world.ask(live.port, 'rows', 'channelTable').length === 0);
  assert.deepEqual(world.ask(live.port, 'rows', 'filterTable'), []);
  fine();
  await context.close();
});

test('charts have the points that the library has', async () => {
  const { page, context, fine } = await visitor();
  await show(page, '/probe/demo/office/history');
  const charts = await page.evaluate(() => [...document.querySelectorAll('canvas[data-chart]')].map((canvas) => {
    const chart = window.Chart.getChart(canvas);
    return { told: JSON.parse(canvas.dataset.chart), drawn: chart.data.datasets.map((set) => ({ name: set.label, values: set.data.map((point) => point?.y ?? point) })) };
  }));
  assert.ok(charts.length > 0, 'there are charts');
  for (const { told, drawn: sets } of charts) {
    assert.deepEqual(sets.map((set) => set.name), told.series.map((series) => series.name));
    for (const [place, set] of sets.entries()) assert.deepEqual(set.values, told.series[place].values);
  }
  fine();
  await context.close();
});

test('works without script: reading, sorting, paging', async () => {
  const context = await chromium.newContext({ javaScriptEnabled: false, baseURL: open.address });
  const page = await context.newPage();
  await page.goto('/probe/demo/office/hosts?rows=25');
  await page.locator('thead a').first().click();
  assert.match(page.url(), /sort=/);
  await page.locator('.paging a[rel=next]').click();
  assert.ok(await page.locator('tbody tr').count() > 0);
  await context.close();
});

test('a hundred thousand hosts: a page is one page, wherever it is', async () => {
  const { page, context, fine } = await visitor();
  const begun = Date.now();
  await show(page, '/probe/crowded/table/nlHostTable?rows=100');
  assert.equal((await cells(page)).length, 100);
  assert.ok(Date.now() - begun < 20000, `${Date.now() - begun} ms`);
  const first = (await cells(page)).map((row) => row.join(' '));
  const before = await page.locator('tbody tr').first().textContent();
  await page.locator('.paging a[rel=next]').click();
  await page.waitForFunction((text) => document.querySelector('tbody tr')?.textContent !== text, before);
  assert.equal((await cells(page)).filter((row) => first.includes(row.join(' '))).length, 0);
  for (const name of ['east', 'west']) {
    await show(page, `/probe/crowded/${name}/hosts?rows=100&sort=nlHostAddress`);
    assert.equal((await cells(page)).length, 100, name);
  }
  fine();
  await context.close();
});

test('texts of an agent stay texts, whatever they hold', async (t) => {
  // What the agent breaks is told with a status of its own, which Chromium notes.
  const { page, context, fine } = await visitor({ tolerated: /status of 50[023]|status of 404/ });
  const { found } = await reached('/probe/demo');
  for (const probe of ['markup', 'endless']) {
    for (const [name, usual] of found) {
      const address = usual.replace('/probe/demo', `/probe/${probe}`).replace('/office', '/1');
      await t.test(`${probe}: ${name}`, async () => {
        const answer = await page.goto(address);
        assert.notEqual(answer.status(), 500, address);
        const harm = await page.evaluate(() => ({
          hacked: window.hacked ?? null,
          planted: document.querySelectorAll('img[src=x], svg[onload], [onmouseover], [onerror], main script').length,
          wide: document.documentElement.scrollWidth - innerWidth,
          empty: document.querySelector('main').textContent.trim() === '',
        }));
        assert.deepEqual({ ...harm, wide: harm.wide <= 0 }, { hacked: null, planted: 0, wide: true, empty: false });
        assert.ok((await page.content()).length < 4e6, 'no endless page');
        fine();
      });
    }
  }
  const csv = await (await fetch(`${open.address}/probe/markup/table/eventTable?format=csv`)).text();
  for (const line of csv.split('\n').slice(1)) assert.doesNotMatch(line, /(^|,)"?[=+@]/, 'a formula');
  await context.close();
});

test('a probe that does not answer holds up no other, and says so', async () => {
  const { page, context, wrong } = await visitor({ tolerated: /status of 50[0-9]/ });
  await page.goto('/');
  const text = await page.locator('main').textContent();
  for (const name of Object.keys(ports)) assert.ok(text.includes(name), name);
  for (const name of ['dead', 'silent']) {
    const answer = await page.goto(`/probe/${name}`);
    assert.ok([502, 503, 504].includes(answer.status()), `${name}: ${answer.status()}`);
    assert.notEqual((await page.locator('main').textContent()).trim(), '');
  }
  assert.deepEqual(wrong, []);
  await context.close();
});

test('an agent that dies while a page is open: the page says how old it is, and goes on', async () => {
  const { page, context, fine } = await visitor({ refresh: '2', tolerated: /status of 50[0-9]/ });
  await show(page, '/probe/mortal');
  await mortal.stop('SIGKILL');
  await page.waitForFunction(() => /stale|answer|not reach|can't/i.test(document.querySelector('[data-age]')?.textContent + document.querySelector('main').textContent), null, { timeout: 30000 });
  await page.goto('/');
  assert.ok((await page.locator('main').textContent()).includes('demo'));
  fine();
  await context.close();
});

async function signIn(page, name, password) {
  await page.goto('/sign-in');
  await page.locator('input[name=user], input[name=name]').first().fill(name);
  await page.locator('input[type=password]').fill(password);
  await page.locator('main form button[type=submit]').click();
}

test('changes take an operator, and the token of a page', async () => {
  const operator = await visitor({ console: guarded, tolerated: /status of 40[0-9]/ });
  const reader = await visitor({ console: guarded, tolerated: /status of 40[0-9]/ });
  await operator.page.goto('/probe/demo');
  assert.match(operator.page.url(), /sign-in/);
  await signIn(operator.page, 'anna', 'wrong');
  assert.match(operator.page.url(), /sign-in/);
  await signIn(operator.page, 'anna', 'all of it');
  await signIn(reader.page, 'ben', 'a look');
  assert.doesNotMatch(reader.page.url(), /sign-in/);
  const cookies = await operator.context.cookies();
  assert.ok(cookies.every((cookie) => cookie.httpOnly && cookie.sameSite !== 'None'));

  // Two operators' pages at once, one's changes seen by the other.
  const settings = '/probe/demo/settings';
  await Promise.all([operator.page.goto(settings), reader.page.goto(settings)]);
  assert.equal(await reader.page.locator('main form[method=post]').count(), 0, 'a reader has no forms');
  await operator.page.evaluate(() => document.querySelectorAll('details').forEach((details) => { details.open = true; }));
  const field = operator.page.locator('main input[name=sysLocation]');
  await field.fill('a cellar');
  await field.press('Enter');
  await operator.page.locator('form.sure button[type=submit]').click();
  await operator.page.waitForFunction(() => document.querySelector('main').textContent.includes('a cellar') || document.querySelector('input[name=sysLocation]')?.value === 'a cellar');
  await reader.page.goto('/probe/demo/table/system').catch(() => {});
  await reader.page.goto(settings);
  assert.ok((await reader.page.locator('main').innerHTML()).includes('a cellar'));

  const send = (context, form) => context.request.post(settings, { form, maxRedirects: 0 });
  const change = { do: 'system', sysLocation: 'elsewhere', sure: '1' };
  assert.equal((await send(operator.context, change)).status(), 403, 'without a token');
  assert.equal((await send(operator.context, { ...change, token: 'f'.repeat(64) })).status(), 403, 'with another token');
  const token = await reader.page.locator('input[name=token]').first().getAttribute('value');
  assert.equal((await send(reader.context, { ...change, token })).status(), 403, 'a reader with a token');
  assert.equal(world.ask(demo.port, 'rows', 'system')[0].sysLocation, 'a cellar');
  operator.fine();
  reader.fine();
  await operator.context.close();
  await reader.context.close();
});

test('the console found nothing wrong with itself', () => {
  assert.deepEqual([...open.problems(), ...guarded.problems()].filter((line) => !/\] PHP Warning: .*(refused|timed out)/.test(line)), []);
});
