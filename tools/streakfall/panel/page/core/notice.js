// One line that tells what happened, and goes away by itself or when the next one comes.
import { find } from './dom.js';

const shownMs = 6000;
let timer = 0;

export function tell(text) {
  const line = find('#notice');
  line.textContent = text;
  line.hidden = false;
  clearTimeout(timer);
  timer = setTimeout(() => {
    line.hidden = true;
  }, shownMs);
}
