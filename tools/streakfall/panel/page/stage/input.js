// The input's pictures, kept as far as they fit into a bound.
import { model } from '../core/model.js';
import { picture } from '../core/session.js';

const mostBytes = 96 * 1024 * 1024;
const kept = new Map(); // "frame/divisor": picture, the longest unused first
let shown = '';

function forget() {
  let bytes = 0;
  for (const { pixels } of kept.values()) bytes += pixels.length;
  for (const [key, { pixels }] of kept) {
    if (bytes <= mostBytes || kept.size === 1) return;
    kept.delete(key);
    bytes -= pixels.length;
  }
}

// A still is the same at every frame, and is asked for once, in full.
function keyOf(frame, divisor) {
  return model.about.input.sequence ? `${frame}/${divisor}` : 'still';
}

/** The input at a frame; null where there is none, or where it is what is shown already. */
export async function inputAt(frame, divisor, signal) {
  if (!model.about.input) return null;
  const key = keyOf(frame, divisor);
  if (key === shown || shown === `${frame}/1`) return null;
  let found = kept.get(key);
  if (!found) {
    const by = key === 'still' ? 1 : divisor;
    found = await picture({ frame, divisor: by, bare: true, slot: 'main' }, signal);
  }
  kept.delete(key);
  kept.set(key, found);
  forget();
  shown = key;
  return found;
}
