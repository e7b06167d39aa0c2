// SPDX-License-Identifier: MIT
// Draws what the page holds with Chart.js, in the colours of the style sheet.
const library = new URL("chart.js", import.meta.url).href;
let loading = null;
function charts() {
  loading ??= new Promise((done, failed) => {
    const script = document.createElement('script');
    script.src = library;
    script.onload = () => done(window.Chart);
    script.onerror = failed;
    document.head.append(script);
  });
  return loading;
}

const colour = (name) => getComputedStyle(document.documentElement).getPropertyValue(name).trim();
const steps = ['', 'k', 'M', 'G', 'T', 'P', 'E'];
export function scaled(value, unit) {
  let step = 0;
  let size = value;
  if (unit !== '%' && unit !== 's' && unit !== 'ms') {
    while (Math.abs(size) >= 999.5 && step < steps.length - 1) { size /= 1000; step++; }
  }
  const digits = step === 0 && Number.isInteger(size) ? 0 : Math.abs(size) >= 99.95 ? 0 : 1;
  return `${size.toFixed(digits)} ${steps[step]}${unit}`.trim();
}
const clock = (seconds) => new Date(seconds * 1000).toLocaleTimeString([], { hour: '2-digit', minute: '2-digit', second: '2-digit', hour12: false });
const day = (seconds) => new Date(seconds * 1000).toLocaleDateString([], { month: 'short', day: 'numeric' });

// Times that a clock shows as round ones, as many as there is room for.
const rounds = [1, 2, 5, 10, 15, 30, 60, 120, 300, 600, 900, 1800, 3600, 7200, 10800, 21600, 43200, 86400, 172800, 604800];
function roundTimes(axis) {
  const room = Math.max(2, Math.floor(axis.width / 75));
  const step = rounds.find((seconds) => (axis.max - axis.min) / seconds <= room) ?? rounds[rounds.length - 1];
  const zone = new Date(axis.min * 1000).getTimezoneOffset() * 60;
  axis.ticks = [];
  for (let at = Math.ceil((axis.min - zone) / step) * step + zone; at <= axis.max; at += step) axis.ticks.push({ value: at });
}
const atRound = (seconds, _, ticks) => ticks.length > 1 && ticks[1].value - ticks[0].value >= 86400 ? day(seconds)
  : ticks.length > 1 && ticks[1].value - ticks[0].value < 60 ? clock(seconds) : clock(seconds).slice(0, 5);

function settings(data) {
  const stacked = data.kind === 'area' || data.kind === 'stacked';
  const round = data.kind === 'doughnut';
  const type = { area: 'line', stacked: 'bar' }[data.kind] ?? data.kind;
  const palette = [1, 2, 3, 4, 5, 6, 7, 8].map((number) => colour(`--chart-${number}`));
  const ink = colour('--quiet');
  const line = colour('--line');
  const datasets = data.series.map((series, place) => {
    const shade = palette[place % palette.length];
    return {
      label: series.name,
      data: data.time ? series.values.map((y, at) => ({ x: data.x[at], y })) : series.values,
      borderColor: round ? colour('--card') : shade,
      backgroundColor: round ? data.x.map((_, at) => palette[at % palette.length]) : type === 'line' ? `${shade}33` : shade,
      borderWidth: type === 'line' ? 1.5 : round ? 1 : 0,
      pointRadius: 0,
      pointHitRadius: 8,
      fill: data.kind === 'area' ? (place === 0 ? 'origin' : '-1') : false,
      spanGaps: false,
    };
  });
  const tip = (item) => `${item.dataset.label}: ${scaled(round ? item.parsed : item.parsed.y, data.unit)}`;
  return {
    type,
    data: { labels: data.time ? undefined : data.x, datasets },
    options: {
      responsive: true,
      maintainAspectRatio: false,
      animation: false,
      parsing: true,
      interaction: { mode: round ? 'nearest' : 'index', intersect: false },
      scales: round ? {} : {
        x: {
          type: data.time ? 'linear' : 'category',
          stacked,
          ...(data.time ? { min: data.x[0], max: data.x[data.x.length - 1] } : {}),
          afterBuildTicks: data.time ? roundTimes : undefined,
          ticks: { color: ink, ...(data.time ? { callback: atRound, maxRotation: 0, autoSkip: false } : { maxRotation: 45, autoSkip: data.x.length > 12 }) },
          grid: { color: line, display: data.time },
        },
        y: {
          beginAtZero: true,
          stacked,
          title: { display: true, text: data.unit, color: ink },
          ticks: { color: ink, maxTicksLimit: 6, callback: (value) => scaled(value, data.unit.length > 5 ? '' : data.unit) },
          grid: { color: line },
        },
      },
      plugins: {
        legend: { display: round || data.legend, position: round ? 'right' : 'top', labels: { color: ink, boxWidth: 10, boxHeight: 10 } },
        tooltip: { callbacks: { label: tip, ...(data.time ? { title: (items) => `${day(items[0].parsed.x)} ${clock(items[0].parsed.x)}` } : {}) } },
      },
    },
  };
}

export async function draw(within = document, anew = false) {
  const canvases = [...within.querySelectorAll('canvas[data-chart]')];
  if (canvases.length === 0) return;
  const Chart = await charts();
  for (const canvas of canvases) {
    if (!canvas.isConnected) continue;
    const text = canvas.dataset.chart;
    const drawn = Chart.getChart(canvas);
    if (drawn && !anew && canvas.dataset.drawn === text) continue;
    canvas.dataset.drawn = text;
    const wanted = settings(JSON.parse(text));
    if (drawn && drawn.config.type === wanted.type) {
      drawn.data = wanted.data;
      drawn.options = wanted.options;
      drawn.update('none');
    } else {
      drawn?.destroy();
      new Chart(canvas, wanted);
    }
  }
}

// A time that is drawn over becomes what the page shows. Links do the same for who has no pointer.
document.addEventListener('pointerdown', (event) => {
  const around = event.target.closest('.canvas[data-zoom]');
  const chart = around && window.Chart?.getChart(around.querySelector('canvas'));
  if (!chart || event.button !== 0) return;
  const { left, right } = chart.chartArea;
  const at = (moved) => Math.min(right, Math.max(left, moved.clientX - around.getBoundingClientRect().left));
  const start = at(event);
  const box = document.createElement('div');
  box.className = 'zoom';
  around.append(box);
  const listening = new AbortController();
  const drag = (moved) => {
    box.style.left = `${Math.min(start, at(moved))}px`;
    box.style.width = `${Math.abs(at(moved) - start)}px`;
  };
  const over = (moved) => {
    listening.abort();
    box.remove();
    const [from, to] = [start, at(moved)].sort((one, other) => one - other).map((x) => chart.scales.x.getValueForPixel(x));
    if (moved.type !== 'pointerup' || Math.abs(at(moved) - start) < 8) return;
    const address = new URL(location.href);
    address.searchParams.delete('last');
    address.searchParams.set('from', Math.floor(from));
    address.searchParams.set('to', Math.ceil(to));
    location.assign(address);
  };
  document.addEventListener('pointermove', drag, { signal: listening.signal });
  for (const end of ['pointerup', 'pointercancel']) document.addEventListener(end, over, { signal: listening.signal });
});
export const redraw = () => draw(document, true);
