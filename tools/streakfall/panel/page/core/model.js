// What the page knows: the parameters, their values at the frame shown, the keys, the frame.
//
// Values by kind: sliders and angles (degrees) a number, checkboxes a boolean, colours "#rrggbb",
// points [x, y] in pixels of the full layer. All tables go by the parameter's index in the host.
import { Signal } from './signal.js';

export const model = {
  about: null, // as the program tells it: texts, size, frames, rate, output
  params: [], // in the host's order, group starts and ends included
  values: {}, // at the frame shown
  keys: {}, // index: {frame: {value, way}}
  disabled: new Set(), // the indices that the effect greys
  frame: 0,
  first: 0, // in and out point, both included
  last: 0,
};

export const stateChanged = new Signal(); // values, keys or greying
export const frameChanged = new Signal(); // the frame shown, in point or out point

/** Fixed ids of the parameters that the page treats in a way of their own. */
export const ids = { startPoint: 2, endPoint: 3, clearBackground: 22, randomSeed: 24 };

export const paramById = (id) => model.params.find((param) => param.id === id);

export const paramAt = (index) => model.params.find((param) => param.index === Number(index));

export const valueById = (id) => model.values[paramById(id).index];

export const keysOf = (index) => model.keys[index] ?? {};

export const isKeyed = (index) => Object.keys(keysOf(index)).length > 0;

/** All that a project would store: values without keys, and keys. */
export function snapshot() {
  const values = Object.entries(model.values).filter(([index]) => !isKeyed(index));
  return structuredClone({ values: Object.fromEntries(values), keys: model.keys });
}
