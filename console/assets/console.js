// SPDX-License-Identifier: MIT
// What makes pages lively: refresh, filter as you type, columns, theme, keys. All of them can be read without it.
import { draw, redraw } from './charts.js';

const root = document.documentElement;
root.classList.add('script');
const one = (selector, within = document) => within.querySelector(selector);
const all = (selector, within = document) => [...within.querySelectorAll(selector)];

function remembered(name) {
  try { return localStorage.getItem(name); } catch { return null; }
}
function remember(name, value) {
  try { localStorage.setItem(name, value); } catch { /* a browser that keeps nothing */ }
}

// ---- Times: how long ago, with the time of day on the pointer ----
function ago(seconds) {
  const s = Math.round(seconds);
  if (s < 0) return 'in the future';
  if (s < 60) return `${s} s ago`;
  if (s < 3600) return `${Math.floor(s / 60)} min ago`;
  if (s < 86400) return `${Math.floor(s / 3600)} h ${Math.floor(s % 3600 / 60)} min ago`;
  return `${Math.floor(s / 86400)} d ${Math.floor(s % 86400 / 3600)} h ago`;
}
let absolute = remembered('times') === 'absolute';
function showTimes(within = document) {
  for (const time of all('time[datetime]', within)) {
    const at = new Date(time.dateTime);
    time.textContent = absolute ? at.toLocaleString() : ago((Date.now() - at) / 1000);
  }
}

// ---- One part of the page taken from an answer, in place of the one that is there ----
function morph(old, html) {
  const holder = document.createElement('template');
  holder.innerHTML = html;
  const fresh = holder.content.firstElementChild;
  if (!fresh || fresh.outerHTML === old.dataset.seen) return old;
  const seen = fresh.outerHTML;
  const focus = document.activeElement?.id;
  const typed = old.contains(document.activeElement) && document.activeElement.matches('input') ? document.activeElement : null;
  const open = all('details', old).map((details) => details.open);
  const scroll = one('.wide', old)?.scrollLeft ?? 0;
  // A canvas stays: its chart gets new numbers, and nothing jumps.
  const canvas = one('canvas[data-chart]', old);
  const next = one('canvas[data-chart]', fresh);
  if (canvas && next) {
    canvas.dataset.chart = next.dataset.chart;
    next.replaceWith(canvas);
  }
  old.style.minHeight = `${old.offsetHeight}px`;
  old.replaceWith(fresh);
  all('details', fresh).forEach((details, place) => { details.open = open[place] ?? details.open; });
  if (one('.wide', fresh)) one('.wide', fresh).scrollLeft = scroll;
  const again = focus && document.getElementById(focus);
  if (again) {
    if (typed) {
      again.value = typed.value;
      again.focus();
      again.setSelectionRange(typed.selectionStart, typed.selectionEnd);
    } else {
      again.focus();
    }
  }
  fresh.dataset.seen = seen;
  prepare(fresh);
  return fresh;
}

async function load(part, address) {
  const url = new URL(address, location.href);
  url.searchParams.set('part', part.id);
  const answer = await fetch(url, { headers: { Accept: 'text/html' }, redirect: 'error' });
  const text = await answer.text();
  if (!answer.ok) throw new Error(`${answer.status}`);
  return morph(part, text);
}

async function show(part, address, push = true) {
  part.classList.add('busy');
  try {
    const fresh = await load(part, address);
    history[push ? 'pushState' : 'replaceState']({ part: fresh.id }, '', address);
    return fresh;
  } catch {
    location.assign(address);
    return part;
  }
}

// ---- Refresh ----
const age = one('[data-age]');
const choice = one('[data-refresh]');
let refreshed = Date.now();
let refreshing = false;
let failedSince = 0;
async function refresh() {
  if (refreshing) return;
  refreshing = true;
  try {
    for (const part of all('[data-live-part]')) {
      if (part.parentElement.closest('[data-live-part]') || one('details.choose[open]', part)) continue;
      await load(part, location.href);
    }
    refreshed = Date.now();
    failedSince = 0;
  } catch {
    failedSince = failedSince || Date.now();
  } finally {
    refreshing = false;
  }
}
function tick() {
  showTimes();
  if (!choice) return;
  const seconds = Number(choice.value);
  const since = (Date.now() - refreshed) / 1000;
  age.classList.toggle('stale', failedSince > 0);
  age.textContent = failedSince > 0 ? `stale: ${ago(since)}` : (seconds > 0 ? '' : 'paused, ') + ago(since);
  const wait = one('[data-soon]') ? Math.min(2, seconds) : seconds;
  if (seconds > 0 && since >= wait && !document.hidden) refresh();
}
if (choice) {
  choice.value = remembered('refresh') ?? '5';
  if (choice.selectedIndex < 0) choice.value = '5';
  choice.addEventListener('change', () => remember('refresh', choice.value));
  setInterval(tick, 1000);
}

// ---- Tables ----
function addressOf(form) {
  const url = new URL(location.href);
  const chosen = all('[data-column]', form);
  const hidden = one('[data-columns]', form);
  const now = chosen.filter((box) => box.checked).map((box) => box.value).join(',');
  url.search = '';
  for (const [name, value] of new FormData(form)) {
    if (value !== '' && !chosen.some((box) => box.name === name)) url.searchParams.set(name, value);
  }
  const before = new URL(location.href).searchParams.get(hidden.name);
  if (now !== hidden.value) url.searchParams.set(hidden.name, now);
  else if (before) url.searchParams.set(hidden.name, before);
  for (const select of all('select', form)) {
    if (select.value === select.options[0].value) url.searchParams.delete(select.name);
  }
  return url.href;
}
document.addEventListener('click', (event) => {
  const link = event.target.closest('a[data-in]');
  if (link && !event.ctrlKey && !event.metaKey && !event.shiftKey && event.button === 0) {
    event.preventDefault();
    show(document.getElementById(link.dataset.in), link.href);
    return;
  }
  for (const details of all('details.choose[open]')) {
    if (!details.contains(event.target)) details.open = false;
  }
  if (event.target.closest('[data-copy]')) navigator.clipboard?.writeText(location.href);
});
document.addEventListener('submit', (event) => {
  const form = event.target.closest('[data-filter]');
  if (form) {
    event.preventDefault();
    for (const details of all('details.choose[open]', form)) details.open = false;
    show(form.closest('[data-part]'), addressOf(form));
  }
});
document.addEventListener('change', (event) => {
  const form = event.target.closest('[data-filter]');
  if (form && event.target.matches('[data-column], select')) show(form.closest('[data-part]'), addressOf(form));
});
let typing = 0;
document.addEventListener('input', (event) => {
  const form = event.target.closest('[data-filter]');
  if (form && event.target.type === 'search') {
    clearTimeout(typing);
    typing = setTimeout(() => show(form.closest('[data-part]'), addressOf(form), false), 250);
  }
});
addEventListener('popstate', () => location.reload());

// ---- Light and dark ----
document.addEventListener('click', (event) => {
  if (event.target.closest('[data-theme-switch]')) {
    const dark = root.dataset.theme ? root.dataset.theme === 'dark' : matchMedia('(prefers-color-scheme: dark)').matches;
    root.dataset.theme = dark ? 'light' : 'dark';
    document.cookie = `theme=${root.dataset.theme}; path=/; max-age=31536000; samesite=lax`;
    redraw();
  }
  if (event.target.closest('[data-help]')) one('#help').showModal();
  const menu = event.target.closest('[data-menu]');
  if (menu) {
    const open = one('#side').classList.toggle('open');
    menu.setAttribute('aria-expanded', String(open));
  }
});
matchMedia('(prefers-color-scheme: dark)').addEventListener('change', redraw);

// ---- Keys ----
let before = '';
document.addEventListener('keydown', (event) => {
  if (event.ctrlKey || event.metaKey || event.altKey) return;
  if (event.key === 'Escape') {
    for (const details of all('details.choose[open]')) { details.open = false; one('summary', details).focus(); }
    if (event.target.matches('input')) event.target.blur();
    return;
  }
  if (event.target.matches('input, select, textarea')) return;
  const act = {
    '?': () => one('#help').showModal(),
    '/': () => one('input[type="search"]')?.focus(),
    r: () => refresh(),
    p: () => { if (choice) { choice.value = choice.value === '0' ? '5' : '0'; choice.dispatchEvent(new Event('change')); } },
    n: () => one('a[rel="next"]')?.click(),
    b: () => one('a[rel="prev"]')?.click(),
    'g h': () => location.assign('/'),
    'g o': () => { const link = one('.place > a'); if (link) location.assign(link.href); },
  }[before === 'g' ? `g ${event.key}` : event.key];
  before = event.key;
  if (act) { event.preventDefault(); act(); }
});

function prepare(within) {
  showTimes(within);
  draw(within);
}
prepare(document);
