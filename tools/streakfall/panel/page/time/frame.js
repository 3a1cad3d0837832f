// The frame shown, and the range that plays.
import { clamp } from '../core/dom.js';
import { frameChanged, model } from '../core/model.js';

export function setFrame(frame) {
  const [first, last] = model.about.frames;
  const next = clamp(Math.round(frame), first, last);
  if (next === model.frame) return;
  model.frame = next;
  frameChanged.emit();
}

/** In or out point; the other one gives way. */
export function setRange(first, last) {
  const [least, most] = model.about.frames;
  model.first = clamp(Math.round(first), least, most);
  model.last = clamp(Math.round(last), least, most);
  frameChanged.emit();
}
