// The keys of all keyed controls, a lane each, under the frame slider.
import { clamp, find, followPointer, make } from '../core/dom.js';
import { language, languageChanged, text } from '../core/language.js';
import { frameChanged, keysOf, model, paramAt, stateChanged } from '../core/model.js';
import { moveKey, removeKey, setWay, ways } from './keys.js';
import { setFrame } from './frame.js';

const wayKeys = { l: 'line', h: 'hold', e: 'ease' };
const wayTexts = { line: 'line', hold: 'hold_', ease: 'ease' };
let chosen = null; // {index, frame}
let built = ''; // what the lanes were built from

const shareOf = (frame) => {
  const [first, last] = model.about.frames;
  return (frame - first) / Math.max(1, last - first);
};

const isChosen = (index, frame) => chosen?.index === index && chosen.frame === frame;

function choose(index, frame) {
  chosen = { index, frame };
  setFrame(frame);
  show();
}

async function move(index, from, to) {
  const [first, last] = model.about.frames;
  const frame = clamp(to, first, last);
  if (frame === from) return;
  chosen = { index, frame };
  await moveKey(index, from, frame);
  setFrame(frame);
  find('#strip .key.chosen')?.focus();
}

async function remove(index, frame) {
  const next = find('#strip .key.chosen ~ .key') ?? find('#frame-slider');
  chosen = null;
  next.focus();
  await removeKey(index, frame);
}

function byKey(event, index, frame) {
  if (event.ctrlKey || event.metaKey) return;
  const by = { ArrowLeft: -1, ArrowRight: 1 }[event.key];
  const way = wayKeys[event.key.toLowerCase()];
  if (by) move(index, frame, frame + by * (event.shiftKey ? 10 : 1));
  else if (event.key === 'Delete' || event.key === 'Backspace') remove(index, frame);
  else if (way) setWay(index, frame, way);
  else return;
  event.preventDefault();
}

function byPointer(press, index, frame) {
  if (press.button !== 0) return;
  const key = press.currentTarget;
  const track = key.parentElement.getBoundingClientRect();
  const [first, last] = model.about.frames;
  const at = (event) => {
    const share = clamp((event.clientX - track.left) / track.width, 0, 1);
    return Math.round(first + share * (last - first));
  };
  let to = frame;
  followPointer(key, press, (event) => {
    to = Math.abs(event.clientX - press.clientX) < 3 && to === frame ? frame : at(event);
    key.style.left = `${shareOf(to) * 100}%`;
  }, () => (to === frame ? choose(index, frame) : move(index, frame, to)));
}

function keyButton(param, frame, { way }) {
  const { index, name } = param;
  const label = text('keyAt', { name, frame, way: text(wayTexts[way]) });
  const key = make('button', { type: 'button', className: `key ${way}`, ariaLabel: label,
    title: label });
  key.dataset.key = `${index}@${frame}`;
  key.classList.toggle('chosen', isChosen(index, frame));
  key.style.left = `${shareOf(frame) * 100}%`;
  key.addEventListener('pointerdown', (event) => byPointer(event, index, frame));
  key.addEventListener('click', (event) => event.detail === 0 && choose(index, frame));
  key.addEventListener('keydown', (event) => byKey(event, index, frame));
  return key;
}

function lane(index) {
  const param = paramAt(index);
  const track = make('span', { className: 'track' });
  for (const [frame, key] of Object.entries(keysOf(index))) {
    track.append(keyButton(param, Number(frame), key));
  }
  return make('div', { className: 'lane', role: 'group', ariaLabel: param.name },
    make('span', { className: 'lane-name', textContent: param.name }), track);
}

function showChosen() {
  const key = chosen && keysOf(chosen.index)[chosen.frame];
  find('#key-tools').hidden = !key;
  if (key) {
    find('#way').value = key.way;
    find('#way').disabled = !paramAt(chosen.index).interpolates;
  }
}

// Keeps the focus on its key, although all of them are built anew.
function build() {
  const focused = document.activeElement?.dataset?.key;
  const indices = Object.keys(model.keys).map(Number).sort((a, b) => a - b);
  find('#keys').hidden = indices.length === 0;
  find('#strip').replaceChildren(...indices.map(lane));
  if (focused) find(`#strip [data-key="${focused}"]`)?.focus();
}

function show() {
  const now = JSON.stringify([model.keys, chosen, language]);
  if (now !== built) build();
  built = now;
  find('#strip').style.setProperty('--now', shareOf(model.frame));
  showChosen();
}

export function beginStrip() {
  for (const way of ways) {
    find('#way').append(make('option', { value: way }));
  }
  const name = () => {
    for (const option of find('#way').options) option.textContent = text(wayTexts[option.value]);
    show();
  };
  name();
  languageChanged.on(name);
  stateChanged.on(show);
  frameChanged.on(show);
  find('#way').addEventListener('change', (event) => {
    setWay(chosen.index, chosen.frame, event.target.value);
  });
  find('#remove-key').addEventListener('click', () => remove(chosen.index, chosen.frame));
}
