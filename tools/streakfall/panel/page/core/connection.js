// Tells that the program does not answer, and waits until it does again.
import { find } from './dom.js';
import { Gone, ask } from './server.js';

const pauseMs = 700;
let waiting = null;

async function poll() {
  const banner = find('#gone');
  banner.hidden = false;
  for (;;) {
    await new Promise((resume) => setTimeout(resume, pauseMs));
    try {
      await ask('GET', 'about');
      break;
    } catch (error) {
      if (!(error instanceof Gone)) break; // it answers, if only to refuse
    }
  }
  banner.hidden = true;
  waiting = null;
}

/** Resolves when the program answers again. */
export function back() {
  waiting ??= poll();
  return waiting;
}

/** Finds out early that the program is gone, also while nobody touches the page. */
export function watch() {
  setInterval(async () => {
    if (waiting || document.hidden) return;
    try {
      await ask('GET', 'about');
    } catch (error) {
      if (error instanceof Gone) await back();
    }
  }, 3000);
}
