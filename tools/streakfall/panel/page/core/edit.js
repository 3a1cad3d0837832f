// The one door for changes that a person makes to a value.
import { commit } from './history.js';
import { change } from './session.js';
import { Signal } from './signal.js';

let active = false;

export const dragChanged = new Signal();
export const isDragging = () => active;

function setActive(on, event) {
  if (active === on) return;
  active = on;
  dragChanged.emit(event);
}

/** While something is dragged, turned or held down: quick pictures, no step in the history. */
export function drag(index, value, event) {
  setActive(true, event);
  change(index, value, event.timeStamp);
}

/** The drag is over, at the value it has by now. */
export function settle(event) {
  setActive(false, event);
  return commit();
}

/** A change all at once. */
export function set(index, value, event) {
  setActive(false);
  change(index, value, event?.timeStamp);
  return commit();
}
