// Twelve throws of one control: seeds far apart, or any number from low to high.
import { find, make } from '../core/dom.js';
import { commit } from '../core/history.js';
import { inLanguage, languageChanged, text } from '../core/language.js';
import { ids, model, paramAt, paramById } from '../core/model.js';
import { ask } from '../core/server.js';
import { change } from '../core/session.js';
import { numberField, shortNumber } from '../controls/number.js';
import { drawTiles, openSheet, tile } from './sheet.js';

const count = 12;
let tiles = [];
let values = [];
let thrown = 0; // seeds thrown so far
const ends = [0, 0]; // low and high of a control that is no seed

const chosen = () => paramAt(find('#roll-of').value);
const valueText = (value) => `${chosen().name.trim()} ${shortNumber(value, 2)}`;

async function takeTile(place) {
  await change(chosen().index, values[place]);
  await commit();
}

function build() {
  tiles = Array.from({ length: count }, (_, place) => tile(() => takeTile(place)));
  find('#roll-sheet .tiles').replaceChildren(...tiles.map(({ button }) => button));
  const rollable = model.params.filter(({ kind }) => /slider|angle/.test(kind));
  find('#roll-of').append(...rollable.map(({ index, name }) =>
    make('option', { value: index, textContent: name })));
  find('#roll-of').value = paramById(ids.randomSeed).index;
}

function spread(param) {
  const [low, high] = ends;
  const step = (high - low) / (count - 1);
  const at = (place) => low + step * place;
  const grain = param.kind === 'slider' ? 1 : 100;
  return Array.from({ length: count }, (_, place) => Math.round(at(place) * grain) / grain);
}

async function throwSeeds(param) {
  const answer = await ask('GET', `throws?param=${param.index}&count=${count}&from=${thrown}`);
  thrown += count;
  return answer.values;
}

const allAlike = (pictures) => pictures.every(({ pixels }) =>
  pixels.every((value, at) => value === pictures[0].pixels[at]));

async function draw() {
  const param = chosen();
  find('#roll-note').textContent = '';
  for (const [place, { caption, button }] of tiles.entries()) {
    caption.textContent = shortNumber(values[place], 2);
    button.ariaLabel = valueText(values[place]);
    button.classList.toggle('taken', values[place] === model.values[param.index]);
  }
  const drawn = await drawTiles(find('#roll-sheet'), tiles,
    (place) => ({ with: { [param.index]: values[place] } }));
  if (drawn && allAlike(drawn)) {
    find('#roll-note').textContent = text('allAlike', { with: inLanguage(param.words).with });
  }
}

async function again() {
  const param = chosen();
  values = param.seed ? await throwSeeds(param) : spread(param);
  await draw();
}

function chooseParam() {
  const param = chosen();
  find('#throw-again').hidden = !param.seed;
  find('#roll-ends').hidden = Boolean(param.seed);
  [ends[0], ends[1]] = param.slider ?? [0, 360];
  const fields = ['from', 'to'].map((key, end) => {
    const field = numberField({ range: param.valid ?? null, step: 1, get: () => ends[end],
      set: (value) => {
        ends[end] = value;
        field.show();
        again();
      },
      drag: (value) => {
        ends[end] = value;
        field.show();
      },
      settle: again });
    field.ariaLabel = text(key);
    field.show();
    return make('label', {}, make('span', { textContent: text(key) }), field);
  });
  find('#roll-ends').replaceChildren(...fields);
}

async function open(event) {
  if (!openSheet('#roll-sheet', event.currentTarget)) return;
  const fresh = tiles.length === 0;
  if (fresh) {
    build();
    chooseParam();
  }
  find('#throw-again').hidden ? find('#roll-of').focus() : find('#throw-again').focus();
  await (fresh ? again() : draw());
}

export function beginRoll() {
  find('#roll').addEventListener('click', open);
  find('#throw-again').addEventListener('click', again);
  find('#roll-of').addEventListener('change', () => {
    chooseParam();
    again();
  });
  languageChanged.on(() => tiles.length > 0 && chooseParam());
}
