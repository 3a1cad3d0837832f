// Where the frame lies on the stage: fitted, zoomed and panned.
import { clamp, find } from '../core/dom.js';
import { model } from '../core/model.js';
import { Signal } from '../core/signal.js';

const margin = 0.06; // of the stage, around a fitted frame: room for handles off the frame
const least = 0.02;
const most = 32;

/** Stage pixels a layer pixel, and the stage position of the frame's corner. */
export const view = { zoom: 1, x: 0, y: 0, fitted: true };

export const viewChanged = new Signal();

const stage = () => find('#stage');
const size = () => ({ width: model.about.width, height: model.about.height });

export const toStage = ([x, y]) => [view.x + x * view.zoom, view.y + y * view.zoom];

function show() {
  const frame = find('#frame');
  const { width, height } = size();
  frame.style.width = `${width * view.zoom}px`;
  frame.style.height = `${height * view.zoom}px`;
  frame.style.transform = `translate(${view.x}px, ${view.y}px)`;
  frame.classList.toggle('close', view.zoom >= 2);
  viewChanged.emit();
}

function centre() {
  const { width, height } = size();
  view.x = Math.round((stage().clientWidth - width * view.zoom) / 2);
  view.y = Math.round((stage().clientHeight - height * view.zoom) / 2);
}

/** The whole frame, with some room around it. */
export function fit() {
  const { width, height } = size();
  const room = 1 - 2 * margin;
  view.zoom = Math.min((stage().clientWidth * room) / width, (stage().clientHeight * room) / height);
  view.zoom = clamp(view.zoom, least, most);
  view.fitted = true;
  centre();
  show();
}

/** Zooms to a factor, about a point of the stage (its middle, when none is given). */
export function zoomTo(zoom, at = [stage().clientWidth / 2, stage().clientHeight / 2]) {
  const next = clamp(zoom, least, most);
  const grow = next / view.zoom;
  view.x = at[0] - (at[0] - view.x) * grow;
  view.y = at[1] - (at[1] - view.y) * grow;
  view.zoom = next;
  view.fitted = false;
  show();
}

export function pan(dx, dy) {
  view.x += dx;
  view.y += dy;
  view.fitted = false;
  show();
}

/** Keeps a fitted frame fitted when the stage takes another size. */
export function watchSize() {
  new ResizeObserver(() => (view.fitted ? fit() : show())).observe(stage());
}
