// What can be done to keys. Each call is one step of the history.
import { replaceKeys } from '../core/history.js';
import { keysOf, model, paramAt } from '../core/model.js';

export const ways = ['line', 'hold', 'ease'];

function replaceLane(index, lane) {
  const keys = { ...model.keys, [index]: lane };
  if (Object.keys(lane).length === 0) delete keys[index];
  return replaceKeys(keys);
}

export function removeKey(index, frame) {
  const lane = { ...keysOf(index) };
  delete lane[frame];
  return replaceLane(index, lane);
}

/** Sets a key of the frame shown, or takes it away where there is one. */
export function toggleKey(index) {
  const { frame } = model;
  if (keysOf(index)[frame]) return removeKey(index, frame);
  const way = paramAt(index).interpolates ? 'line' : 'hold';
  return replaceLane(index, { ...keysOf(index), [frame]: { value: model.values[index], way } });
}

/** A key that is already at the new frame gives way. */
export function moveKey(index, from, to) {
  const { [from]: key, ...lane } = keysOf(index);
  return replaceLane(index, { ...lane, [to]: key });
}

export function setWay(index, frame, way) {
  const lane = keysOf(index);
  return replaceLane(index, { ...lane, [frame]: { ...lane[frame], way } });
}
