// The frame slider, its number, in and out point, play and stop.
import { find } from '../core/dom.js';
import { languageChanged, text } from '../core/language.js';
import { frameChanged, model } from '../core/model.js';
import { numberField } from '../controls/number.js';
import { setPlaying } from '../stage/pictures.js';
import { setFrame, setRange } from './frame.js';

let started = null; // {time, frame} while it plays

function place(at, key, get, set) {
  const field = numberField({ range: model.about.frames, step: 1, whole: true, get,
    drag: set, set, settle: () => {} });
  const name = () => {
    field.ariaLabel = text(key);
  };
  name();
  languageChanged.on(name);
  find(at).append(field);
  frameChanged.on(field.show);
  field.show();
}

function showRange() {
  const [first, last] = model.about.frames;
  const slider = find('#frame-slider');
  slider.valueAsNumber = model.frame;
  slider.style.setProperty('--from', `${(100 * (model.first - first)) / Math.max(1, last - first)}%`);
  slider.style.setProperty('--to', `${(100 * (model.last - first)) / Math.max(1, last - first)}%`);
}

function showPlay() {
  const button = find('#play');
  button.ariaLabel = text(started ? 'stop' : 'play');
  button.title = button.ariaLabel;
  button.classList.toggle('playing', started !== null);
}

// Frames that cannot be drawn in time are passed over, so that the time is right.
function tick(time) {
  if (!started) return;
  const count = model.last - model.first + 1;
  const seconds = Math.max(0, time - started.time) / 1000; // the first frame began before the press
  const gone = Math.floor(seconds * model.about.rate.fps);
  setFrame(model.first + ((started.frame - model.first + gone) % count));
  requestAnimationFrame(tick);
}

export function togglePlay() {
  if (started) {
    started = null;
  } else {
    const inside = model.frame >= model.first && model.frame <= model.last;
    started = { time: performance.now(), frame: inside ? model.frame : model.first };
    requestAnimationFrame(tick);
  }
  setPlaying(started !== null);
  showPlay();
}

export function stop() {
  if (started) togglePlay();
}

export function beginTransport() {
  const [first, last] = model.about.frames;
  const slider = find('#frame-slider');
  Object.assign(slider, { min: first, max: last, step: 1 });
  slider.addEventListener('input', () => {
    stop();
    setFrame(slider.valueAsNumber);
  });
  find('#play').addEventListener('click', togglePlay);
  place('#frame-field', 'frame', () => model.frame, (frame) => {
    stop();
    setFrame(frame);
  });
  place('#in-field', 'inPoint', () => model.first,
    (frame) => setRange(frame, Math.max(frame, model.last)));
  place('#out-field', 'outPoint', () => model.last,
    (frame) => setRange(Math.min(frame, model.first), frame));
  frameChanged.on(showRange);
  languageChanged.on(showPlay);
  showRange();
  showPlay();
}
