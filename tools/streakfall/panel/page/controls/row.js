// One control: the diamond of its keys, its name, and the fields that its kind has.
import { make } from '../core/dom.js';
import { drag, set, settle } from '../core/edit.js';
import { languageChanged, text } from '../core/language.js';
import { frameChanged, isKeyed, keysOf, model, stateChanged } from '../core/model.js';
import { toggleKey } from '../time/keys.js';
import { angleFields } from './angle.js';
import { colorFields } from './color.js';
import { showHint } from './hint.js';
import { numberField } from './number.js';
import { pointFields } from './point.js';
import { sliderField } from './slider.js';
import { switchFields } from './switch.js';

/** How far an arrow key goes: a hundredth of the slider, as a power of ten. */
function stepOf(param) {
  if (param.kind === 'slider') return 1;
  const [least, most] = param.slider;
  return 10 ** Math.floor(Math.log10((most - least) / 50));
}

function sliderFields(param, control) {
  const options = { ...control, range: param.valid, sliderRange: param.slider,
    step: stepOf(param), whole: param.kind === 'slider' };
  const slider = sliderField(options);
  const number = numberField(options);
  control.label(slider, 'slider');
  number.ariaLabel = param.name;
  return [slider, number, make('span', { className: 'unit', textContent: param.percent ? '%' : '' })];
}

const fieldsByKind = {
  'float slider': sliderFields,
  slider: sliderFields,
  angle: angleFields,
  checkbox: switchFields,
  color: colorFields,
  point: pointFields,
};

/** What the fields of a control read and call. */
function controlOf(param) {
  const { index, name } = param;
  const control = {
    get: () => model.values[index],
    drag: (value, event) => drag(index, value, event),
    set: (value, event) => set(index, value, event),
    settle,
    label(element, key) {
      const apply = () => {
        element.ariaLabel = text(key, { name });
      };
      apply();
      languageChanged.on(apply);
    },
  };
  return control;
}

function diamondOf(param) {
  const diamond = make('button', { type: 'button', className: 'diamond', tabIndex: -1,
    disabled: !param.keyable });
  diamond.addEventListener('click', () => toggleKey(param.index));
  const show = () => {
    const here = keysOf(param.index)[model.frame] !== undefined;
    diamond.ariaPressed = String(here);
    diamond.classList.toggle('keyed', isKeyed(param.index));
    diamond.ariaLabel = text('keyHere', { name: param.name, frame: model.frame });
    diamond.title = diamond.ariaLabel;
  };
  stateChanged.on(show);
  frameChanged.on(show);
  languageChanged.on(show);
  return diamond;
}

function byKey(event, param, control) {
  const plain = !event.ctrlKey && !event.metaKey && !event.altKey;
  const key = event.key.toLowerCase();
  if (!plain || (key !== 'r' && key !== 'k')) return;
  if (event.target.matches('.hex')) return; // there it is typed
  event.preventDefault();
  if (key === 'k') param.keyable && toggleKey(param.index);
  else control.set(param.default, event);
}

// Only a row whose value or greying is another one is touched: most are not, in a drag.
function followState(row, param) {
  const fields = [...row.querySelectorAll('*')].filter((element) => element.show);
  let shown = '';
  stateChanged.on(() => {
    const off = model.disabled.has(param.index);
    const now = `${off} ${model.values[param.index]}`;
    if (now === shown) return;
    shown = now;
    row.classList.toggle('off', off);
    for (const field of fields) {
      if (field.matches('input')) field.disabled = off;
      else field.ariaDisabled = String(off);
      field.show();
    }
  });
}

/** The row of a parameter that has a value. */
export function controlRow(param) {
  const control = controlOf(param);
  const fields = fieldsByKind[param.kind](param, control);
  const name = make('span', { className: 'name', textContent: param.name, title: param.name });
  const row = make('div', { className: `row kind-${param.kind.replace(' ', '-')}`, role: 'group',
    ariaLabel: param.name }, diamondOf(param), name, ...fields);
  row.dataset.index = param.index;
  name.addEventListener('dblclick', (event) => {
    if (!model.disabled.has(param.index)) control.set(param.default, event);
  });
  row.addEventListener('keydown', (event) => byKey(event, param, control));
  row.addEventListener('focusin', () => showHint(param));
  row.addEventListener('pointerenter', () => showHint(param));
  followState(row, param);
  return row;
}
