// Undo and redo of every change, and the two slots to compare.
import { model, snapshot } from './model.js';
import { Signal } from './signal.js';
import { replace, settled } from './session.js';

const longest = 500; // states kept
const past = [];
let now = -1; // place in `past` of the state shown
const slots = { A: null, B: null };
let slot = 'A';

export const historyChanged = new Signal();
export const canUndo = () => now > 0;
export const canRedo = () => now < past.length - 1;
export const activeSlot = () => slot;

const same = (a, b) => JSON.stringify(a) === JSON.stringify(b);

/** Makes the state as it is now one to come back to; a state that is no other is passed over. */
export async function commit() {
  await settled();
  const entry = { slot, ...snapshot() };
  if (now >= 0 && same(past[now], entry)) return;
  past.splice(now + 1, past.length, entry);
  if (past.length > longest) past.shift();
  now = past.length - 1;
  historyChanged.emit();
}

async function go(to) {
  if (to < 0 || to >= past.length) return;
  now = to;
  const entry = past[now];
  if (entry.slot !== slot) slots[slot] = snapshot();
  slot = entry.slot;
  await replace(entry);
  historyChanged.emit();
}

// What was dragged last may still be on its way.
export const undo = () => commit().then(() => go(now - 1));
export const redo = () => commit().then(() => go(now + 1));

/** Shows the other slot; one that was never used begins as a copy. */
export async function choose(name) {
  if (name === slot) return;
  await commit();
  slots[slot] = snapshot();
  slot = name;
  if (slots[name]) await replace(slots[name]);
  await commit();
}

/** Replaces the keys, as one step. */
export async function replaceKeys(keys) {
  await settled();
  await replace({ values: model.values, keys });
  await commit();
}
