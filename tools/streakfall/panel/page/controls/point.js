// A point as two numbers, in pixels of the layer.
import { make } from '../core/dom.js';
import { numberField } from './number.js';

const farthest = 32768; // what the host's fixed-point numbers hold

export function pointFields(param, control) {
  const fields = ['pointX', 'pointY'].map((label, axis) => {
    const moved = (value) => control.get().with(axis, value);
    const field = numberField({
      range: [-farthest, farthest],
      step: 1,
      digits: 2,
      get: () => control.get()[axis],
      drag: (value, event) => control.drag(moved(value), event),
      set: (value, event) => control.set(moved(value), event),
      settle: control.settle,
    });
    control.label(field, label);
    return field;
  });
  return [make('span', { className: 'axis-name', textContent: 'X', ariaHidden: 'true' }), fields[0],
    make('span', { className: 'axis-name', textContent: 'Y', ariaHidden: 'true' }), fields[1]];
}
