// Start Point and End Point as handles on the picture, and the axis between them. A handle that
// lies off the stage waits at the stage's edge.
import { clamp, find, followPointer, pace } from '../core/dom.js';
import { drag, settle } from '../core/edit.js';
import { languageChanged, text } from '../core/language.js';
import { ids, model, paramById, stateChanged, valueById } from '../core/model.js';
import { showHint } from '../controls/hint.js';
import { toStage, view, viewChanged } from './view.js';

const edge = 10; // stage pixels between a waiting handle and the edge
const handles = [
  { element: '#start-handle', id: ids.startPoint },
  { element: '#end-handle', id: ids.endPoint },
];
const ways = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

const rounded = (point) => point.map((value) => Math.round(value * 100) / 100);

function place({ element, id }) {
  const handle = find(element);
  const stage = find('#stage');
  const [x, y] = toStage(valueById(id));
  const shownX = clamp(x, edge, stage.clientWidth - edge);
  const shownY = clamp(y, edge, stage.clientHeight - edge);
  handle.classList.toggle('away', shownX !== x || shownY !== y);
  handle.style.transform = `translate(${shownX}px, ${shownY}px)`;
  const [px, py] = valueById(id).map((value) => Math.round(value * 10) / 10);
  handle.ariaLabel = text('handle', { name: paramById(id).name, x: px, y: py });
  return [x, y];
}

function show() {
  const [[x1, y1], [x2, y2]] = handles.map(place);
  for (const line of document.querySelectorAll('#axis line')) {
    line.setAttribute('x1', x1);
    line.setAttribute('y1', y1);
    line.setAttribute('x2', x2);
    line.setAttribute('y2', y2);
  }
}

function byPointer(press, id) {
  const from = valueById(id);
  const { index } = paramById(id);
  followPointer(press.currentTarget, press, (event) => {
    const slow = event.altKey ? 10 : 1;
    const by = [event.clientX - press.clientX, event.clientY - press.clientY];
    drag(index, rounded(from.map((value, axis) => value + by[axis] / view.zoom / slow)), event);
  }, settle);
}

function byKey(event, id) {
  const way = ways[event.key];
  if (!way || event.ctrlKey || event.metaKey) return;
  event.preventDefault();
  const by = pace(event);
  const moved = valueById(id).map((value, axis) => value + way[axis] * by);
  drag(paramById(id).index, rounded(moved), event);
}

export function beginHandles() {
  for (const { element, id } of handles) {
    const handle = find(element);
    handle.addEventListener('pointerdown', (event) => {
      if (event.button !== 0 || model.disabled.has(paramById(id).index)) return;
      event.stopPropagation();
      byPointer(event, id);
    });
    handle.addEventListener('keydown', (event) => byKey(event, id));
    handle.addEventListener('keyup', (event) => ways[event.key] && settle(event));
    handle.addEventListener('focus', () => showHint(paramById(id)));
  }
  stateChanged.on(show);
  viewChanged.on(show);
  languageChanged.on(show);
  show();
}
