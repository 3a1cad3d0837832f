// The slider beside a number. It spans the slider range; a value beyond it rests at its end.
import { arrow, clamp, make } from '../core/dom.js';
import { stepped } from './number.js';

const coarse = 10; // steps that a page key takes

// How much of the track is filled: from zero, or the end nearest to it, to the value.
function fill(slider, value, [least, most]) {
  const share = (at) => clamp((at - least) / (most - least), 0, 1);
  const [a, b] = [share(clamp(0, least, most)), share(value)];
  slider.style.setProperty('--from', `${Math.min(a, b) * 100}%`);
  slider.style.setProperty('--to', `${Math.max(a, b) * 100}%`);
}

/** Options as those of a number field, and `sliderRange`. */
export function sliderField(options) {
  const [least, most] = options.sliderRange;
  const slider = make('input', { type: 'range', min: least, max: most,
    step: options.whole ? 1 : 'any' });
  const onSlider = () => {
    const value = slider.valueAsNumber;
    const grain = options.step / 10;
    return options.whole ? value : Number((Math.round(value / grain) * grain).toFixed(6));
  };
  slider.show = () => {
    const value = options.get();
    slider.valueAsNumber = value;
    slider.ariaValueText = String(value);
    fill(slider, value, options.sliderRange);
    slider.classList.toggle('beyond', value < least || value > most);
  };
  slider.addEventListener('input', (event) => options.drag(onSlider(), event));
  // A drag that comes back to where it began is no change to the browser, but over all the same.
  for (const end of ['change', 'pointerup', 'pointercancel']) {
    slider.addEventListener(end, (event) => slider.disabled || options.settle(event));
  }
  slider.addEventListener('keydown', (event) => {
    const value = options.get();
    const page = { PageUp: coarse, PageDown: -coarse }[event.key];
    let next;
    if (arrow(event)) next = stepped(value, event, options);
    else if (page) next = clamp(value + page * options.step, ...options.range);
    else if (event.key === 'Home') next = least;
    else if (event.key === 'End') next = most;
    else return;
    event.preventDefault();
    options.drag(next, event);
  });
  slider.addEventListener('keyup', (event) => {
    if (/^(Arrow|Page|Home|End)/.test(event.key)) options.settle(event);
  });
  return slider;
}
