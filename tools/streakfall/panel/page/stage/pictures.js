// Asks for the picture of the state shown: one request under way and one waiting, the latest wins.
// While something is dragged or plays a reduced size, then the full one.
import { dragChanged, isDragging } from '../core/edit.js';
import { find } from '../core/dom.js';
import { frameChanged, model, stateChanged } from '../core/model.js';
import { tell } from '../core/notice.js';
import { busyChanged, isBusy, picture } from '../core/session.js';
import { Signal } from '../core/signal.js';
import { inputAt } from './input.js';
import { paint } from './paint.js';
import { view } from './view.js';

const restMs = 150; // a drag that pauses this long gets its full picture
const slowMs = 40; // above it the reduced size goes down a step
const quickMs = 14; // below it up
const leastWidth = 480; // pixels that a reduced picture keeps

let wanted = null; // {draft}
let running = null; // {draft, abort}
let shownDraft = true;
let playing = false;
let divisor = 2;
let backdrop = 'input';
let restTimer = 0;
let covered = []; // times of the input events that the next picture answers

/** {frame, width, height, milliseconds, divisor} of each picture drawn. */
export const pictureDrawn = new Signal();

// Nothing that is drawn smaller than this on the screen is asked for larger while dragging.
const leastDivisor = () => Math.max(2, Math.floor(1 / view.zoom));

function adapt(milliseconds) {
  if (milliseconds > slowMs) divisor += 1;
  else if (milliseconds < quickMs) divisor -= 1;
  const largest = Math.max(2, Math.floor(model.about.width / leastWidth));
  divisor = Math.min(Math.max(divisor, leastDivisor()), largest);
}

function showBusy() {
  const busy = isBusy() || running !== null || wanted !== null || isDragging() || shownDraft;
  find('#stage').ariaBusy = String(busy);
}

function measure(events, made) {
  for (const stamp of events) {
    performance.measure('event to drawn', { start: stamp, detail: made });
  }
  performance.mark('picture drawn', { detail: made });
}

async function make(job, signal) {
  const began = performance.now();
  const { frame } = model;
  const by = job.draft ? divisor : 1;
  const events = covered;
  covered = [];
  const input = await inputAt(frame, by, signal);
  const request = { frame, divisor: by, backdrop, slot: 'main' };
  const effect = await picture(request, signal).catch((error) => {
    covered = [...events, ...covered];
    throw error;
  });
  paint(effect, input);
  shownDraft = job.draft;
  const milliseconds = performance.now() - began;
  const { width, height } = effect;
  const made = { frame, width, height, divisor: by, milliseconds, draft: job.draft };
  measure(events, made);
  if (job.draft) adapt(milliseconds);
  pictureDrawn.emit(made);
}

async function run() {
  while (wanted) {
    const abort = new AbortController();
    running = { ...wanted, abort };
    wanted = null;
    try {
      await make(running, abort.signal);
    } catch (error) {
      if (error.name === 'AbortError') continue;
      if (error.status === 409) { // an older request that came late took this one's place
        wanted ??= { draft: running.draft };
        continue;
      }
      tell(error.message);
      shownDraft = false; // nothing better comes
    }
  }
  running = null;
  showBusy();
}

/** Asks for a picture of the state as it is by now. */
export function want(draft = isDragging() || playing) {
  wanted = { draft };
  clearTimeout(restTimer);
  if (isDragging()) restTimer = setTimeout(() => want(false), restMs);
  if (!running) run();
  else if (!running.draft) running.abort.abort();
  showBusy();
}

/** What the effect gets as its layer: "input", "checker" or "black". */
export function setBackdrop(next) {
  backdrop = next;
  want();
}

/** While the sequence plays all pictures are quick ones. */
export function setPlaying(on) {
  playing = on;
  if (!on) want();
}

stateChanged.on((events, redraw) => {
  covered.push(...events);
  if (redraw) want();
});
frameChanged.on(() => want());
dragChanged.on((event) => {
  if (isDragging()) return;
  if (event) covered.push(event.timeStamp);
  want(false);
});
busyChanged.on(showBusy);
