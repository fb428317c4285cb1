// The cursor of the curves: one moment, shown in all of them. "#t=SECONDS" in the address sets it.
'use strict';

const charts = [...document.querySelectorAll('.chart')].map(figure => ({
  figure,
  drawing: figure.querySelector('svg'),
  begin: Number(figure.dataset.begin),
  end: Number(figure.dataset.end),
  unit: figure.dataset.unit,
  steps: stepsOf(figure.querySelector('path').getAttribute('d')),
  output: figure.querySelector('output'),
  cursor: null,
}));

/** A path of M, H and V as moments and the values that hold from them on, null in a gap. */
function stepsOf(path) {
  const steps = [];
  let seconds = 0;
  for (const [, command, numbers] of path.matchAll(/([MHV])([^MHV]*)/g)) {
    const [first, second] = numbers.trim().split(/\s+/).map(Number);
    if (command === 'M' && steps.length > 0)
      steps.push({seconds, value: null});
    if (command !== 'V')
      seconds = first;
    if (command !== 'H')
      steps.push({seconds, value: command === 'M' ? second : first});
  }
  steps.push({seconds: seconds + 0.001, value: null});
  return steps;
}

function valueAt(steps, seconds) {
  let value = null;
  for (const step of steps) {
    if (step.seconds > seconds)
      break;
    value = step.value;
  }
  return value;
}

function timeText(seconds) {
  const tenths = Math.round(seconds * 10);
  const rest = (tenths % 600 / 10).toFixed(1).padStart(4, '0');
  return `${Math.floor(tenths / 600)}:${rest}`;
}

function showCursor(chart, seconds) {
  const {begin, end, steps, unit} = chart;
  if (!chart.cursor) {
    chart.cursor = document.createElementNS('http://www.w3.org/2000/svg', 'line');
    chart.cursor.setAttribute('class', 'cursor');
    chart.cursor.setAttribute('y1', 0);
    chart.cursor.setAttribute('y2', 120);
    chart.drawing.append(chart.cursor);
  }
  const x = `${100 * (seconds - begin) / (end - begin)}%`;
  chart.cursor.setAttribute('x1', x);
  chart.cursor.setAttribute('x2', x);
  const value = valueAt(steps, seconds);
  const shown = value === null ? 'unknown' : `${Number(value.toPrecision(4))} ${unit}`.trim();
  chart.output.textContent = `${shown} at ${timeText(seconds)}`;
}

function showMoment(seconds) {
  for (const chart of charts)
    showCursor(chart, Math.min(Math.max(seconds, chart.begin), chart.end));
}

function followPointer(chart, event) {
  const place = chart.drawing.getBoundingClientRect();
  const share = (event.clientX - place.left) / place.width;
  showMoment(chart.begin + share * (chart.end - chart.begin));
}

function followAddress() {
  const moment = location.hash.match(/^#t=(\d+(?:\.\d+)?)$/);
  if (!moment || charts.length === 0)
    return;
  showMoment(Number(moment[1]));
  document.getElementById('curves').scrollIntoView();
}

for (const chart of charts) {
  for (const kind of ['pointermove', 'pointerdown'])
    chart.drawing.addEventListener(kind, event => followPointer(chart, event));
}
addEventListener('hashchange', followAddress);
addEventListener('beforeprint', () => {
  for (const details of document.querySelectorAll('details'))
    details.open = true;
});
followAddress();
