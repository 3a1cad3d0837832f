// An angle: a dial, whole turns, and degrees within a turn.
import { arrow, followPointer, make } from '../core/dom.js';
import { numberField, stepped } from './number.js';

const turn = 360;
const farthest = 32768; // degrees that the host's fixed-point numbers hold
const range = [-farthest, farthest];

const turnsOf = (angle) => Math.trunc(angle / turn);

// Degrees clockwise from the top, of a pointer about the dial's middle.
function pointing(dial, event) {
  const box = dial.getBoundingClientRect();
  const dx = event.clientX - (box.left + box.width / 2);
  const dy = event.clientY - (box.top + box.height / 2);
  return (Math.atan2(dx, -dy) * 180) / Math.PI;
}

function dialOf(control) {
  const dial = make('span', { className: 'dial', role: 'slider', tabIndex: 0 });
  [dial.ariaValueMin, dial.ariaValueMax] = range.map(String);
  const isOff = () => dial.ariaDisabled === 'true';
  dial.show = () => {
    dial.ariaValueNow = String(control.get());
    dial.style.setProperty('--angle', `${control.get()}deg`);
  };
  dial.addEventListener('pointerdown', (press) => {
    if (press.button !== 0 || isOff()) return;
    let last = pointing(dial, press);
    let angle = control.get();
    followPointer(dial, press, (event) => {
      const now = pointing(dial, event);
      angle += ((now - last + turn * 1.5) % turn) - turn / 2; // the short way round
      last = now;
      control.drag(event.shiftKey ? Math.round(angle / 15) * 15 : Math.round(angle), event);
    }, control.settle);
  });
  dial.addEventListener('keydown', (event) => {
    if (!arrow(event) || isOff()) return;
    event.preventDefault();
    control.drag(stepped(control.get(), event, { step: 1, range }), event);
  });
  dial.addEventListener('keyup', (event) => event.key.startsWith('Arrow') && control.settle(event));
  return dial;
}

export function angleFields(param, control) {
  const dial = dialOf(control);
  const part = (label, get, put, options) => {
    const field = numberField({
      ...options,
      get,
      drag: (value, event) => control.drag(put(value), event),
      set: (value, event) => control.set(put(value), event),
      settle: control.settle,
    });
    control.label(field, label);
    return field;
  };
  const rest = () => control.get() - turnsOf(control.get()) * turn;
  const turns = part('turns', () => turnsOf(control.get()), (value) => value * turn + rest(),
    { step: 1, whole: true, range: [-turnsOf(farthest), turnsOf(farthest)] });
  const degrees = part('degrees', rest, (value) => value + turnsOf(control.get()) * turn,
    { step: 1, range });
  turns.classList.add('turns');
  control.label(dial, 'dial');
  return [dial, turns, make('span', { className: 'unit', textContent: '×' }), degrees,
    make('span', { className: 'unit', textContent: '°' })];
}
